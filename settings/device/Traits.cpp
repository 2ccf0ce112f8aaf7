#include "settings/device/Traits.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/uikit/drawing/UIColor.h"

namespace settings {
namespace {

using platform::DeviceTraits;

bool parseNumber(std::string_view text, double& result) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
  return error == std::errc() && end == text.data() + text.size() && std::isfinite(result);
}

bool setIdiom(DeviceTraits& traits, std::string_view value) {
  if (value != "phone" && value != "pad") return false;
  traits.idiom =
      value == "pad" ? platform::UserInterfaceIdiom::pad : platform::UserInterfaceIdiom::phone;
  return true;
}

bool setAppearance(DeviceTraits& traits, std::string_view value) {
  if (value != "light" && value != "dark") return false;
  traits.appearance =
      value == "dark" ? platform::UserInterfaceStyle::dark : platform::UserInterfaceStyle::light;
  return true;
}

bool setSystem(DeviceTraits& traits, std::string_view value) {
  int parts[3] = {0, 0, 0};
  for (int count = 0;; ++count) {
    if (count == 3) return false;
    const auto [end, error] =
        std::from_chars(value.data(), value.data() + value.size(), parts[count]);
    if (error != std::errc() || parts[count] < 0) return false;
    value.remove_prefix(static_cast<std::size_t>(end - value.data()));
    if (value.empty()) break;
    if (value.front() != '.') return false;
    value.remove_prefix(1);
  }
  traits.systemVersion = {parts[0], parts[1], parts[2]};
  return true;
}

// "390x844@3"; without "@3" the scale stays.
bool setScreen(DeviceTraits& traits, std::string_view value) {
  constexpr double smallest = 100;
  constexpr double largest = 10000;
  const auto cross = value.find('x');
  if (cross == std::string_view::npos) return false;
  const auto at = std::min(value.find('@'), value.size());
  if (at < cross) return false;
  double width = 0;
  double height = 0;
  double scale = traits.screenScale;
  if (!parseNumber(value.substr(0, cross), width)) return false;
  if (!parseNumber(value.substr(cross + 1, at - cross - 1), height)) return false;
  if (at < value.size() && !parseNumber(value.substr(at + 1), scale)) return false;
  if (std::min(width, height) < smallest || std::max(width, height) > largest) return false;
  if (scale < 1 || scale > 4) return false;
  traits.screenWidth = width;
  traits.screenHeight = height;
  traits.screenScale = scale;
  return true;
}

bool setTint(DeviceTraits& traits, std::string_view value) {
  if (!platform::colorComponentsFromHex(value)) return false;
  traits.tint = value;
  return true;
}

bool setTextScale(DeviceTraits& traits, std::string_view value) {
  double scale = 0;
  if (!parseNumber(value, scale) || scale < 0.5 || scale > 4) return false;
  traits.textScale = scale;
  return true;
}

struct Trait {
  std::string name;
  std::string values;  // what is accepted, with an example
  bool (*set)(DeviceTraits&, std::string_view);
};

const std::vector<Trait>& traitTable() {
  static const std::vector<Trait> table = {
      {"idiom", "phone or pad", &setIdiom},
      {"system", "a version, as 15.4", &setSystem},
      {"screen", "points and pixels per point, as 390x844@3", &setScreen},
      {"appearance", "light or dark", &setAppearance},
      {"tint", "RRGGBBAA, as FF0000FF", &setTint},
      {"text", "the text size, 0.5 to 4; 1 is the standard one", &setTextScale},
  };
  return table;
}

}  // namespace

std::optional<std::string> changeTrait(DeviceTraits& traits, std::string_view name,
                                       std::string_view value) {
  std::string names;
  for (const Trait& trait : traitTable()) {
    if (trait.name == name) {
      if (trait.set(traits, value)) return std::nullopt;
      return "\"" + std::string(value) + "\" is no value of the trait " + trait.name +
             "; allowed is " + trait.values;
    }
    names += (names.empty() ? "" : ", ") + trait.name;
  }
  return "there is no trait \"" + std::string(name) + "\"; there are " + names +
         ", controlCenterRow and neighbour CLASS on|off";
}

}  // namespace settings

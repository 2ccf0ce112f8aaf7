#include "settings/device/Traits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "platform/foundation/text/NumberText.h"
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

// "390x844@3"; without "@3" the scale is unchanged.
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

std::string idiomText(const DeviceTraits& traits) {
  return traits.idiom == platform::UserInterfaceIdiom::pad ? "pad" : "phone";
}

std::string screenText(const DeviceTraits& traits) {
  using platform::number_text::formatShortest;
  return formatShortest(traits.screenWidth) + "x" + formatShortest(traits.screenHeight) + "@" +
         formatShortest(traits.screenScale);
}

std::string systemText(const DeviceTraits& traits) {
  return traits.systemVersion.text();
}

std::string appearanceText(const DeviceTraits& traits) {
  return traits.appearance == platform::UserInterfaceStyle::dark ? "dark" : "light";
}

std::string textScaleText(const DeviceTraits& traits) {
  return platform::number_text::formatShortest(traits.textScale);
}

std::string tintText(const DeviceTraits& traits) {
  return traits.tint;
}

}  // namespace

const std::vector<Trait>& traitTable() {
  static const std::vector<Trait> table = {
      {.name = "idiom",
       .values = "phone or pad",
       .option = "--idiom",
       .help = "phone or pad",
       .label = "Device",
       .place = 1,
       .choices = {{"phone", "Phone"}, {"pad", "Tablet"}},
       .set = &setIdiom,
       .text = &idiomText},
      {.name = "system",
       .values = "a version such as 15.4",
       .option = "--system",
       .help = "System version such as 15.4",
       .label = "System",
       .place = 3,
       .choices = {{"13.7", "13.7"}, {"14.0", "14.0"}, {"15.4", "15.4"}, {"16.5", "16.5"}},
       .set = &setSystem,
       .text = &systemText},
      {.name = "screen",
       .values = "points and pixels per point, such as 390x844@3",
       .option = "--screen",
       .help = "Points and scale, such as 390x844@3",
       .label = "Screen",
       .place = 2,
       .choices = {{"390x844@3", "Phone, 390 × 844"},
                   {"375x667@2", "Small phone, 375 × 667"},
                   {"430x932@3", "Large phone, 430 × 932"},
                   {"820x1180@2", "Tablet, 820 × 1180"},
                   {"1180x820@2", "Tablet on its side, 1180 × 820"}},
       .set = &setScreen,
       .text = &screenText},
      {.name = "appearance",
       .values = "light or dark",
       .option = "--appearance",
       .help = "light or dark",
       .label = "Appearance",
       .place = 4,
       .choices = {{"light", "Light"}, {"dark", "Dark"}},
       .set = &setAppearance,
       .text = &appearanceText},
      {.name = "text",
       .values = "a text size from 0.5 to 4; 1 is standard",
       .option = "--text-scale",
       .help = "Text size; 1 is standard",
       .label = "Text size",
       .place = 5,
       .choices = {{"0.82", "Small"},
                   {"1", "Standard"},
                   {"1.24", "Large"},
                   {"1.65", "Very large"},
                   {"2.35", "Largest"}},
       .set = &setTextScale,
       .text = &textScaleText},
      {.name = "tint",
       .values = "RRGGBBAA, such as FF0000FF",
       .option = "--tint",
       .help = "Tint colour, such as 007AFFFF",
       .label = "Tint",
       .place = 6,
       .choices = {},
       .set = &setTint,
       .text = &tintText},
  };
  return table;
}

std::string traitNames() {
  std::string names;
  for (const Trait& trait : traitTable()) names += (names.empty() ? "" : ", ") + trait.name;
  return names;
}

std::optional<std::string> changeTrait(DeviceTraits& traits, std::string_view name,
                                       std::string_view value) {
  const auto trait = std::ranges::find(traitTable(), name, &Trait::name);
  if (trait == traitTable().end()) {
    return "unknown trait: \"" + std::string(name) + "\" (expected " + traitNames() +
           ", controlCenterRow or neighbour CLASS on|off)";
  }
  if (trait->set(traits, value)) return std::nullopt;
  return "invalid value for the trait " + trait->name + ": \"" + std::string(value) +
         "\" (expected " + trait->values + ")";
}

nlohmann::json jsonFromTraits(const DeviceTraits& traits) {
  std::vector<Trait> shown = traitTable();
  std::ranges::sort(shown, {}, &Trait::place);
  nlohmann::json all = nlohmann::json::array();
  for (const Trait& trait : shown) {
    nlohmann::json choices = nlohmann::json::array();
    for (const TraitChoice& choice : trait.choices) choices.push_back({choice.value, choice.title});
    all.push_back({{"name", trait.name},
                   {"label", trait.label},
                   {"value", trait.text(traits)},
                   {"choices", std::move(choices)}});
  }
  return all;
}

}  // namespace settings

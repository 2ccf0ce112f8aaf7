#include "platform/uikit/drawing/UIColor.h"

#include <charconv>

#include "platform/foundation/values/Value.h"
#include "platform/uikit/drawing/SystemColors.h"
#include "platform/uikit/drawing/UITraits.h"

namespace platform {

UIColor::Pointer UIColor::colorWithRed(double red, double green, double blue, double alpha) {
  return std::make_shared<UIColor>(ColorComponents{red, green, blue, alpha});
}

UIColor::Pointer UIColor::colorWithWhite(double white, double alpha) {
  return colorWithRed(white, white, white, alpha);
}

UIColor::Pointer UIColor::systemColorNamed(std::string_view name) {
  const SystemColor* found = findSystemColor(name);
  if (found == nullptr) return nullptr;
  auto color = std::make_shared<UIColor>(found->light);
  color->_dark = found->dark;
  color->_systemName = std::string(name);
  return color;
}

UIColor::Pointer UIColor::blackColor() {
  return colorWithWhite(0, 1);
}
UIColor::Pointer UIColor::whiteColor() {
  return colorWithWhite(1, 1);
}
UIColor::Pointer UIColor::clearColor() {
  return colorWithWhite(0, 0);
}
UIColor::Pointer UIColor::redColor() {
  return colorWithRed(1, 0, 0, 1);
}
UIColor::Pointer UIColor::greenColor() {
  return colorWithRed(0, 1, 0, 1);
}
UIColor::Pointer UIColor::blueColor() {
  return colorWithRed(0, 0, 1, 1);
}
UIColor::Pointer UIColor::grayColor() {
  return colorWithWhite(0.5, 1);
}

ColorComponents UIColor::resolved(UserInterfaceStyle style) const {
  return _systemName && style == UserInterfaceStyle::dark ? _dark : _components;
}

ColorComponents UIColor::components() const {
  return resolved(currentTraits().appearance);
}

bool UIColor::isEqual(const Object& other) const {
  const auto* color = dynamic_cast<const UIColor*>(&other);
  return color != nullptr && color->_systemName == _systemName &&
         (_systemName || color->_components == _components);
}

std::string UIColor::description() const {
  if (_systemName) return "<UIDynamicSystemColor: name = " + *_systemName + ">";
  std::string text = "UIExtendedSRGBColorSpace";
  for (const double component :
       {_components.red, _components.green, _components.blue, _components.alpha}) {
    text += " " + Value(component).description();
  }
  return text;
}

bool sameColor(const std::shared_ptr<UIColor>& a, const std::shared_ptr<UIColor>& b) {
  return a == b || (a && b && a->isEqual(*b));
}

std::optional<ColorComponents> colorComponentsFromHex(std::string_view text) {
  constexpr std::size_t digits = 8;
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
  if (text.size() != digits || error != std::errc() || end != text.data() + text.size()) {
    return std::nullopt;
  }
  const auto component = [value](unsigned shift) { return ((value >> shift) & 0xFFU) / 255.0; };
  return ColorComponents{component(24), component(16), component(8), component(0)};
}

}  // namespace platform

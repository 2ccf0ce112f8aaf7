#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Object.h"
#include "platform/uikit/drawing/ColorComponents.h"

namespace platform {

// A colour: components, or one of the system's names, which is resolved where it is shown.
// Immutable. Threads: any, but components() of a named colour reads the device's traits, which
// belong to the main thread.
class UIColor : public Object {
  PLATFORM_CLASS(UIColor)

 public:
  using Pointer = std::shared_ptr<UIColor>;

  UIColor() = default;  // black
  explicit UIColor(ColorComponents components) : _components(components) {}

  static Pointer colorWithRed(double red, double green, double blue, double alpha);
  static Pointer colorWithWhite(double white, double alpha);
  // The system's colour of that name ("systemRedColor"); empty where there is none.
  static Pointer systemColorNamed(std::string_view name);

  static Pointer blackColor();
  static Pointer whiteColor();
  static Pointer clearColor();
  static Pointer redColor();
  static Pointer greenColor();
  static Pointer blueColor();
  static Pointer grayColor();

  static Pointer systemRedColor() { return systemColorNamed("systemRedColor"); }
  static Pointer systemOrangeColor() { return systemColorNamed("systemOrangeColor"); }
  static Pointer systemYellowColor() { return systemColorNamed("systemYellowColor"); }
  static Pointer systemGreenColor() { return systemColorNamed("systemGreenColor"); }
  static Pointer systemBlueColor() { return systemColorNamed("systemBlueColor"); }
  static Pointer systemTealColor() { return systemColorNamed("systemTealColor"); }
  static Pointer systemIndigoColor() { return systemColorNamed("systemIndigoColor"); }
  static Pointer systemPurpleColor() { return systemColorNamed("systemPurpleColor"); }
  static Pointer systemPinkColor() { return systemColorNamed("systemPinkColor"); }
  static Pointer systemGrayColor() { return systemColorNamed("systemGrayColor"); }
  static Pointer systemGray3Color() { return systemColorNamed("systemGray3Color"); }
  static Pointer labelColor() { return systemColorNamed("labelColor"); }
  static Pointer secondaryLabelColor() { return systemColorNamed("secondaryLabelColor"); }
  static Pointer tertiaryLabelColor() { return systemColorNamed("tertiaryLabelColor"); }
  static Pointer systemBackgroundColor() { return systemColorNamed("systemBackgroundColor"); }
  static Pointer systemGroupedBackgroundColor() {
    return systemColorNamed("systemGroupedBackgroundColor");
  }

  // The system's name, where the colour has one.
  const std::optional<std::string>& systemName() const noexcept { return _systemName; }
  ColorComponents resolved(UserInterfaceStyle style) const;
  // By the traits of the moment.
  ColorComponents components() const;

  // Equal names, or equal components of two colours without a name.
  bool isEqual(const Object& other) const override;
  std::string description() const override;

 private:
  ColorComponents _components;  // light, where the colour is named
  ColorComponents _dark;
  std::optional<std::string> _systemName;
};

// Equal colours, or both empty.
bool sameColor(const std::shared_ptr<UIColor>& a, const std::shared_ptr<UIColor>& b);

// "RRGGBBAA" as components; empty for any other text.
std::optional<ColorComponents> colorComponentsFromHex(std::string_view text);

}  // namespace platform

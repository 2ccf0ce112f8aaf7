#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Object.h"
#include "platform/uikit/drawing/ColorComponents.h"

namespace platform {

// A colour: either components, or the name of a system colour, which is resolved when it is shown.
// Immutable. Threads: any, but components() of a system colour reads the device's traits and must
// be called on the main thread.
class UIColor : public Object {
  PLATFORM_CLASS(UIColor)

 public:
  using Pointer = std::shared_ptr<UIColor>;

  UIColor() = default;  // black
  explicit UIColor(ColorComponents components) : _components(components) {}

  static Pointer colorWithRed(double red, double green, double blue, double alpha);
  static Pointer colorWithWhite(double white, double alpha);
  // Returns the system colour with that name ("systemRedColor"); empty if there is none.
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

  // The name, if it is a system colour.
  const std::optional<std::string>& systemName() const noexcept { return _systemName; }
  ColorComponents resolved(UserInterfaceStyle style) const;
  // Resolved with the current traits.
  ColorComponents components() const;

  // Colours are equal if their names are equal, or their components if both have no name.
  bool isEqual(const Object& other) const override;
  std::string description() const override;

 private:
  ColorComponents _components;  // for light appearance if the colour has a name
  ColorComponents _dark;
  std::optional<std::string> _systemName;
};

// Returns whether the colours are equal or both empty.
bool sameColor(const std::shared_ptr<UIColor>& a, const std::shared_ptr<UIColor>& b);

// Parses "RRGGBBAA"; empty for any other text.
std::optional<ColorComponents> colorComponentsFromHex(std::string_view text);

}  // namespace platform

#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/foundation/objects/Object.h"

namespace platform {

enum class UIFontWeight : std::uint8_t { light, regular, medium, semibold, bold };

// Returns "light", "regular", "medium", "semibold" or "bold".
std::string_view fontWeightName(UIFontWeight weight) noexcept;

// The system font with a size and a weight. Immutable. Threads: any.
class UIFont : public Object {
  PLATFORM_CLASS(UIFont)

 public:
  UIFont() = default;
  UIFont(double pointSize, UIFontWeight weight) : _pointSize(pointSize), _weight(weight) {}

  static std::shared_ptr<UIFont> systemFontOfSize(double pointSize,
                                                  UIFontWeight weight = UIFontWeight::regular);
  static std::shared_ptr<UIFont> boldSystemFontOfSize(double pointSize);

  double pointSize() const noexcept { return _pointSize; }
  UIFontWeight weight() const noexcept { return _weight; }
  double lineHeight() const noexcept;  // in points

  bool isEqual(const Object& other) const override;

  static constexpr double standardPointSize = 17;

 private:
  double _pointSize = standardPointSize;
  UIFontWeight _weight = UIFontWeight::regular;
};

}  // namespace platform

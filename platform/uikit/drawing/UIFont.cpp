#include "platform/uikit/drawing/UIFont.h"

namespace platform {

std::string_view fontWeightName(UIFontWeight weight) noexcept {
  switch (weight) {
    case UIFontWeight::light:
      return "light";
    case UIFontWeight::regular:
      return "regular";
    case UIFontWeight::medium:
      return "medium";
    case UIFontWeight::semibold:
      return "semibold";
    case UIFontWeight::bold:
      return "bold";
  }
  return "regular";
}

std::shared_ptr<UIFont> UIFont::systemFontOfSize(double pointSize, UIFontWeight weight) {
  return std::make_shared<UIFont>(pointSize, weight);
}

std::shared_ptr<UIFont> UIFont::boldSystemFontOfSize(double pointSize) {
  return std::make_shared<UIFont>(pointSize, UIFontWeight::bold);
}

double UIFont::lineHeight() const noexcept {
  constexpr double heightOfOnePoint = 1.2;
  return _pointSize * heightOfOnePoint;
}

bool UIFont::isEqual(const Object& other) const {
  const auto* font = dynamic_cast<const UIFont*>(&other);
  return font != nullptr && font->_pointSize == _pointSize && font->_weight == _weight;
}

}  // namespace platform

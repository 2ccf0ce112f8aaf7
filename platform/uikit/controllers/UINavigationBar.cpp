#include "platform/uikit/controllers/UINavigationBar.h"

#include <algorithm>
#include <cmath>

namespace platform {

void UINavigationBar::setPrefersLargeTitles(bool prefers) {
  assign(_prefersLargeTitles, prefers);
}

void UINavigationBar::setTitleOpacity(double opacity) {
  assign(_titleOpacity, std::isnan(opacity) ? 0 : std::clamp(opacity, 0.0, 1.0));
}

}  // namespace platform

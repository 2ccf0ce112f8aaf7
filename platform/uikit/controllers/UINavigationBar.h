#pragma once

#include "platform/uikit/views/UIView.h"

namespace platform {

// Threads: main.
class UINavigationBar : public UIView {
  PLATFORM_CLASS(UINavigationBar)

 public:
  bool prefersLargeTitles() const noexcept { return _prefersLargeTitles; }
  void setPrefersLargeTitles(bool prefers);
  // From 0 to 1. Set by name with "_setTitleOpacity:".
  double titleOpacity() const noexcept { return _titleOpacity; }
  void setTitleOpacity(double opacity);

  static constexpr double standardHeight = 44;  // points

 private:
  bool _prefersLargeTitles = false;
  double _titleOpacity = 1;
};

}  // namespace platform

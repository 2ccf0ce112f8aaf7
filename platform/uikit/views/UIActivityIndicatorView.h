#pragma once

#include <cstdint>

#include "platform/uikit/views/UIView.h"

namespace platform {

enum class UIActivityIndicatorViewStyle : std::uint8_t { medium = 100, large = 101 };

// By default, hidden while it is not animating. Threads: main.
class UIActivityIndicatorView : public UIView {
  PLATFORM_CLASS(UIActivityIndicatorView)

 public:
  UIActivityIndicatorView() { setHidden(true); }
  bool initWithActivityIndicatorStyle(UIActivityIndicatorViewStyle style);

  UIActivityIndicatorViewStyle style() const noexcept { return _style; }
  bool isAnimating() const noexcept { return _animating; }
  void startAnimating();
  void stopAnimating();
  void setHidesWhenStopped(bool hides);
  Size intrinsicContentSize() const override;

 private:
  UIActivityIndicatorViewStyle _style = UIActivityIndicatorViewStyle::medium;
  bool _animating = false;
  bool _hidesWhenStopped = true;
};

}  // namespace platform

#include "platform/uikit/views/UIActivityIndicatorView.h"

namespace platform {

bool UIActivityIndicatorView::initWithActivityIndicatorStyle(UIActivityIndicatorViewStyle style) {
  _style = style;
  const Size size = intrinsicContentSize();
  return initWithFrame({0, 0, size.width, size.height});
}

Size UIActivityIndicatorView::intrinsicContentSize() const {
  return _style == UIActivityIndicatorViewStyle::large ? Size{37, 37} : Size{20, 20};
}

void UIActivityIndicatorView::startAnimating() {
  assign(_animating, true);
  if (_hidesWhenStopped) setHidden(false);
}

void UIActivityIndicatorView::stopAnimating() {
  assign(_animating, false);
  if (_hidesWhenStopped) setHidden(true);
}

void UIActivityIndicatorView::setHidesWhenStopped(bool hides) {
  assign(_hidesWhenStopped, hides);
  setHidden(hides && !_animating);
}

}  // namespace platform

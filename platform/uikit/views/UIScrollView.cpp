#include "platform/uikit/views/UIScrollView.h"

namespace platform {
namespace {

constexpr double scrollDuration = 0.3;  // in seconds

// Returns the offset nearest to the current one at which an interval of the given length contains
// [start, end).
double offsetShowing(double offset, double length, double start, double end) {
  if (end > offset + length) offset = end - length;
  return start < offset ? start : offset;
}

}  // namespace

void UIScrollView::setContentOffset(Point offset, bool animated) {
  const auto move = [this, offset] {
    setBounds({offset.x, offset.y, frame().width, frame().height});
  };
  if (animated) {
    animateWithDuration(scrollDuration, move);
  } else {
    move();
  }
}

void UIScrollView::boundsOriginDidChange() {
  contentOffsetDidChange();
  if (const auto told = delegate()) told->scrollViewDidScroll(self<UIScrollView>());
}

void UIScrollView::setContentSize(Size size) {
  assign(_contentSize, size);
}

void UIScrollView::scrollRectToVisible(Rect rect, bool animated) {
  const Rect visible = bounds();
  setContentOffset({offsetShowing(visible.x, visible.width, rect.x, rect.maxX()),
                    offsetShowing(visible.y, visible.height, rect.y, rect.maxY())},
                   animated);
}

void UIScrollView::setDelegate(const std::shared_ptr<UIScrollViewDelegate>& delegate) {
  if (_delegate.lock() == delegate) return;
  _delegate = delegate;
  delegateDidChange();
}

void UIScrollView::setDelegateObject(const std::shared_ptr<Object>& delegate) {
  setDelegate(std::dynamic_pointer_cast<UIScrollViewDelegate>(delegate));
}

}  // namespace platform

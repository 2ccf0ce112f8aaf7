#pragma once

#include <memory>

#include "platform/uikit/views/UIView.h"

namespace platform {

class UIScrollView;

class UIScrollViewDelegate {
 public:
  virtual ~UIScrollViewDelegate() = default;
  virtual void scrollViewDidScroll(const std::shared_ptr<UIScrollView>&) {}
};

// A view whose bounds scroll over its content. Threads: main.
class UIScrollView : public UIView {
  PLATFORM_CLASS(UIScrollView)

 public:
  UIScrollView() { setClipsToBounds(true); }

  // May be outside of the content, for example while the page is pulled down past its top.
  Point contentOffset() const noexcept { return bounds().origin(); }
  // Notifies the delegate of each change.
  void setContentOffset(Point offset, bool animated = false);
  const Size& contentSize() const noexcept { return _contentSize; }
  void setContentSize(Size size);
  // Scrolls by the smallest distance that makes the rectangle visible.
  void scrollRectToVisible(Rect rect, bool animated = false);

  // Does not keep the delegate alive.
  void setDelegate(const std::shared_ptr<UIScrollViewDelegate>& delegate);
  std::shared_ptr<UIScrollViewDelegate> delegate() const { return _delegate.lock(); }
  // For callers that have only an object. An object that is not a delegate clears it.
  void setDelegateObject(const std::shared_ptr<Object>& delegate);

 protected:
  // Called after the delegate object changed.
  virtual void delegateDidChange() {}
  virtual void contentOffsetDidChange() {}
  void boundsOriginDidChange() override;

 private:
  Size _contentSize;
  std::weak_ptr<UIScrollViewDelegate> _delegate;
};

}  // namespace platform

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

// A view whose bounds move over its content. Threads: main.
class UIScrollView : public UIView {
  PLATFORM_CLASS(UIScrollView)

 public:
  UIScrollView() { setClipsToBounds(true); }

  // May lie outside of the content, as while the page is pulled down past its top.
  Point contentOffset() const noexcept { return bounds().origin(); }
  // Tells the delegate of each change.
  void setContentOffset(Point offset, bool animated = false);
  const Size& contentSize() const noexcept { return _contentSize; }
  void setContentSize(Size size);
  // Moves the offset by as little as shows the rectangle.
  void scrollRectToVisible(Rect rect, bool animated = false);

  // Not kept alive.
  void setDelegate(const std::shared_ptr<UIScrollViewDelegate>& delegate);
  std::shared_ptr<UIScrollViewDelegate> delegate() const { return _delegate.lock(); }
  // For those who have an object only: one that is no delegate clears it.
  void setDelegateObject(const std::shared_ptr<Object>& delegate);

 protected:
  // After another object has become the delegate.
  virtual void delegateDidChange() {}
  virtual void contentOffsetDidChange() {}
  void boundsOriginDidChange() override;

 private:
  Size _contentSize;
  std::weak_ptr<UIScrollViewDelegate> _delegate;
};

}  // namespace platform

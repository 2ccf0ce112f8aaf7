#pragma once

#include <memory>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/drawing/UIColor.h"

namespace platform {

class UIColorPickerViewController;

// What a colour picker tells. Every operation does nothing unless overridden.
class UIColorPickerViewControllerDelegate {
 public:
  virtual ~UIColorPickerViewControllerDelegate() = default;
  // The user took a colour; the picker stays open.
  virtual void colorPickerViewControllerDidSelectColor(
      const std::shared_ptr<UIColorPickerViewController>&) {}
  // The user closed the picker, which is no longer presented.
  virtual void colorPickerViewControllerDidFinish(
      const std::shared_ptr<UIColorPickerViewController>&) {}
};

// The platform's page for choosing a colour. Threads: main.
class UIColorPickerViewController : public UIViewController {
  PLATFORM_CLASS(UIColorPickerViewController)

 public:
  // The colour that was set or picked last, black at first. Without the alpha control its alpha
  // is 1, whatever was set. Never empty.
  std::shared_ptr<UIColor> selectedColor() const;
  void setSelectedColor(std::shared_ptr<UIColor> color);  // an empty one is passed over
  bool supportsAlpha() const noexcept { return _supportsAlpha; }
  void setSupportsAlpha(bool supports);
  // Not kept alive.
  void setDelegate(const std::shared_ptr<UIColorPickerViewControllerDelegate>& delegate) {
    _delegate = delegate;
  }
  std::shared_ptr<UIColorPickerViewControllerDelegate> delegate() const { return _delegate.lock(); }
  // By name; an object that is no such delegate counts as none.
  void setDelegateObject(const std::shared_ptr<Object>& delegate);

  // The user's hand: takes a colour, each component kept between 0 and 1, and tells the delegate.
  // False, and nothing done, where the picker is not shown or a component is not a number.
  bool userPick(ColorComponents components);
  // Closes the picker and tells the delegate. False where it is not shown.
  bool userClose();

 private:
  std::shared_ptr<UIColor> _selectedColor;
  bool _supportsAlpha = true;
  std::weak_ptr<UIColorPickerViewControllerDelegate> _delegate;
};

}  // namespace platform

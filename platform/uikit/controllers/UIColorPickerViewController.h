#pragma once

#include <memory>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/drawing/UIColor.h"

namespace platform {

class UIColorPickerViewController;

// Receives events of a colour picker. By default, the functions do nothing.
class UIColorPickerViewControllerDelegate {
 public:
  virtual ~UIColorPickerViewControllerDelegate() = default;
  // The user chose a colour. The picker stays open.
  virtual void colorPickerViewControllerDidSelectColor(
      const std::shared_ptr<UIColorPickerViewController>&) {}
  // The user closed the picker. It is no longer presented.
  virtual void colorPickerViewControllerDidFinish(
      const std::shared_ptr<UIColorPickerViewController>&) {}
};

// The platform's page to choose a colour. Threads: main.
class UIColorPickerViewController : public UIViewController {
  PLATFORM_CLASS(UIColorPickerViewController)

 public:
  // Returns the colour that was set or chosen last; black at first. Without the alpha control, its
  // alpha is always 1. Never empty.
  std::shared_ptr<UIColor> selectedColor() const;
  void setSelectedColor(std::shared_ptr<UIColor> color);  // ignores an empty pointer
  bool supportsAlpha() const noexcept { return _supportsAlpha; }
  void setSupportsAlpha(bool supports);
  // Does not keep the delegate alive.
  void setDelegate(const std::shared_ptr<UIColorPickerViewControllerDelegate>& delegate) {
    _delegate = delegate;
  }
  std::shared_ptr<UIColorPickerViewControllerDelegate> delegate() const { return _delegate.lock(); }
  // For callers by name. An object that is not a delegate clears it.
  void setDelegateObject(const std::shared_ptr<Object>& delegate);

  // User input: chooses a colour, clamps each component to 0..1, and notifies the delegate. Does
  // nothing and returns false if the picker is not shown or a component is NaN.
  bool userPick(ColorComponents components);
  // User input: closes the picker and notifies the delegate. Returns false if it is not shown.
  bool userClose();

 private:
  std::shared_ptr<UIColor> _selectedColor;
  bool _supportsAlpha = true;
  std::weak_ptr<UIColorPickerViewControllerDelegate> _delegate;
};

}  // namespace platform

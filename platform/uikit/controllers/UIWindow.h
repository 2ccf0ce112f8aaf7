#pragma once

#include <memory>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/views/UIView.h"

namespace platform {

// The root of what is shown. Has the screen's size and the device's tint unless told otherwise.
// Threads: main.
class UIWindow : public UIView {
  PLATFORM_CLASS(UIWindow)

 public:
  bool init() override;
  std::shared_ptr<UIWindow> window() override { return self<UIWindow>(); }

  // Shows the controller's view in the whole window. The one before leaves.
  void setRootViewController(std::shared_ptr<UIViewController> controller);
  // From here on the root controller is in sight (and told so).
  void makeKeyAndVisible();
  // Takes size and tint from the device's traits again, and tells every view of the window.
  void traitsDidChange();

 private:
  std::shared_ptr<UIViewController> _root;
  bool _visible = false;
};

}  // namespace platform

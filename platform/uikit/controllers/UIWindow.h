#pragma once

#include <memory>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/views/UIView.h"

namespace platform {

// The root of the view tree. By default, it has the screen's size and the device's tint. Threads:
// main.
class UIWindow : public UIView {
  PLATFORM_CLASS(UIWindow)

 public:
  bool init() override;
  std::shared_ptr<UIWindow> window() override { return self<UIWindow>(); }

  // Shows the controller's view in the whole window and removes the previous one.
  void setRootViewController(std::shared_ptr<UIViewController> controller);
  // Makes the root controller visible and notifies it.
  void makeKeyAndVisible();
  // Reads size and tint from the device's traits again and notifies every view of the window.
  void traitsDidChange();

 private:
  std::shared_ptr<UIViewController> _root;
  bool _visible = false;
};

}  // namespace platform

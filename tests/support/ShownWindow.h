#pragma once

#include <memory>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/controllers/UIWindow.h"

namespace test_support {

// Returns a visible window with the controller. It is laid out, so visible rows have their cells.
inline std::shared_ptr<platform::UIWindow> showInWindow(
    const std::shared_ptr<platform::UIViewController>& root) {
  auto window = platform::make<platform::UIWindow>();
  window->setRootViewController(root);
  window->makeKeyAndVisible();
  window->layoutIfNeeded();
  return window;
}

}  // namespace test_support

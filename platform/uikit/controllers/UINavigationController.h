#pragma once

#include <memory>
#include <vector>

#include "platform/uikit/controllers/UINavigationBar.h"
#include "platform/uikit/controllers/UIViewController.h"

namespace platform {

// A stack of pages under a bar. The last page is shown. It may be a page of another navigation
// controller; its navigationController is then the outer one.
//
// The stack and the tree change at once, and the pages are notified in this order: the old one will
// disappear, the new one will appear, the old one did disappear, the new one did appear. The
// presenter shows the transition.
//
// Threads: main.
class UINavigationController : public UIViewController {
  PLATFORM_CLASS(UINavigationController)

 public:
  virtual bool initWithRootViewController(const std::shared_ptr<UIViewController>& root);

  // Ignores an empty pointer. As on the platform, a page that is already on the stack raises
  // NSInvalidArgumentException.
  virtual void pushViewController(const std::shared_ptr<UIViewController>& page, bool animated);
  // Returns the removed page. Does nothing and returns an empty pointer if the stack has fewer than
  // two pages.
  virtual std::shared_ptr<UIViewController> popViewControllerAnimated(bool animated);
  const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const noexcept {
    return _stack;
  }
  // Ignores empty pointers.
  void setViewControllers(std::vector<std::shared_ptr<UIViewController>> pages, bool animated);
  std::shared_ptr<UIViewController> topViewController() const;
  const std::shared_ptr<UINavigationBar>& navigationBar();
  bool isNavigationBarHidden() const noexcept { return _barHidden; }
  void setNavigationBarHidden(bool hidden, bool animated = false);

  void viewDidLoad() override;
  void viewWillLayoutSubviews() override;

 protected:
  void appearanceTransitionDidBegin(bool appearing, bool animated) override;
  void appearanceTransitionDidEnd() override;

 private:
  bool isInSight() const noexcept;
  void show(const std::shared_ptr<UIViewController>& from,
            const std::shared_ptr<UIViewController>& to, bool animated);
  void layoutTop();

  std::vector<std::shared_ptr<UIViewController>> _stack;
  std::shared_ptr<UINavigationBar> _bar;
  bool _barHidden = false;
};

}  // namespace platform

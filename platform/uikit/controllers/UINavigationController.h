#pragma once

#include <memory>
#include <vector>

#include "platform/uikit/controllers/UINavigationBar.h"
#include "platform/uikit/controllers/UIViewController.h"

namespace platform {

// A stack of pages of which the last is shown, under a bar. May itself be a page of another
// navigation controller; its own navigationController is then the outer one.
//
// The stack and the tree change at once, and the pages are told in this order: the old one will
// disappear, the new one will appear, the old one has disappeared, the new one has appeared. The
// way there is the presenter's.
//
// Threads: main.
class UINavigationController : public UIViewController {
  PLATFORM_CLASS(UINavigationController)

 public:
  virtual bool initWithRootViewController(const std::shared_ptr<UIViewController>& root);

  // An empty pointer does nothing; a page that is on the stack already raises
  // NSInvalidArgumentException, as on the platform.
  virtual void pushViewController(const std::shared_ptr<UIViewController>& page, bool animated);
  // Gives the page that left; empty, and nothing done, where the stack has no second page.
  virtual std::shared_ptr<UIViewController> popViewControllerAnimated(bool animated);
  const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const noexcept {
    return _stack;
  }
  // Empty pointers are passed over.
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

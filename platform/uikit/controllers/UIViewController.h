#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/objects/Object.h"
#include "platform/uikit/controllers/UINavigationItem.h"
#include "platform/uikit/views/UIView.h"

namespace platform {

class UINavigationController;

// The duration of a page transition, in seconds. The tree changes at once; completions of animated
// presentations run after this time.
inline constexpr double controllerTransitionDuration = 0.35;

// A page. Owns its view, its children and the controller that it presents. Threads: main.
class UIViewController : public Object {
  PLATFORM_CLASS(UIViewController)

 public:
  UIViewController();
  ~UIViewController() override;

  // The unique identifier of this page, from the same sequence as those of views.
  std::uint64_t nodeIdentifier() const noexcept { return _nodeIdentifier; }

  // Returns the view. The first call makes it (loadView, then viewDidLoad).
  const std::shared_ptr<UIView>& view();
  const std::shared_ptr<UIView>& viewIfLoaded() const noexcept { return _view; }
  bool isViewLoaded() const noexcept { return _view != nullptr; }
  // For loadView and for pages that supply a view.
  void setView(std::shared_ptr<UIView> view);
  // Makes a plain view with the size of the screen that resizes with its superview.
  virtual void loadView();
  virtual void viewDidLoad() {}
  virtual void viewWillAppear(bool /*animated*/) {}
  virtual void viewDidAppear(bool /*animated*/) {}
  virtual void viewWillDisappear(bool /*animated*/) {}
  virtual void viewDidDisappear(bool /*animated*/) {}
  virtual void viewWillLayoutSubviews() {}
  virtual void viewDidLayoutSubviews() {}

  // Setting the title also sets the title of the navigation item.
  const std::optional<std::string>& title() const noexcept { return _title; }
  void setTitle(std::optional<std::string> title);
  const std::shared_ptr<UINavigationItem>& navigationItem();

  // The tree of controllers. Ignores empty pointers and controllers that would create a cycle.
  std::shared_ptr<UIViewController> parentViewController() const { return _parent.lock(); }
  void addChildViewController(const std::shared_ptr<UIViewController>& child);
  void removeFromParentViewController();
  // Returns the nearest navigation controller among the ancestors; empty if there is none.
  std::shared_ptr<UINavigationController> navigationController() const;

  // Presents over the outermost ancestor, as the platform does. If that already presents a
  // controller, or the given one is already presented, only logs a line. The completion runs on the
  // main queue after the transition.
  void presentViewController(const std::shared_ptr<UIViewController>& controller, bool animated,
                             std::function<void()> completion = nullptr);
  // Dismisses the controller that this page or an ancestor presents; if there is none, dismisses
  // this page if it is presented.
  void dismissViewControllerAnimated(bool animated, std::function<void()> completion = nullptr);
  std::shared_ptr<UIViewController> presentedViewController() const;
  std::shared_ptr<UIViewController> presentingViewController() const;

  // Appearance, for containers and the application. Each step calls its pair of functions once.
  // Setting the current state does nothing.
  enum class Appearance : std::uint8_t { disappeared, appearing, appeared, disappearing };
  Appearance appearance() const noexcept { return _appearance; }
  void beginAppearanceTransition(bool appearing, bool animated);
  void endAppearanceTransition();

 protected:
  // Containers forward the steps to the visible child.
  virtual void appearanceTransitionDidBegin(bool /*appearing*/, bool /*animated*/) {}
  virtual void appearanceTransitionDidEnd() {}
  void noteChange();

 private:
  std::shared_ptr<UIViewController> outermost();
  void runAfterTransition(bool animated, std::function<void()> completion);

  std::uint64_t _nodeIdentifier;
  std::shared_ptr<UIView> _view;
  std::optional<std::string> _title;
  std::shared_ptr<UINavigationItem> _navigationItem;
  std::weak_ptr<UIViewController> _parent;
  std::vector<std::shared_ptr<UIViewController>> _children;
  std::shared_ptr<UIViewController> _presented;
  std::weak_ptr<UIViewController> _presenting;
  Appearance _appearance = Appearance::disappeared;
  bool _animated = false;
  bool _loadingView = false;
};

}  // namespace platform

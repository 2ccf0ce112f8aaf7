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

// How long a page takes to slide in, in seconds. The tree changes at once; completions of animated
// presentations run when this has passed.
inline constexpr double controllerTransitionDuration = 0.35;

// A page. Owns its view, its children and what it presents. Threads: main.
class UIViewController : public Object {
  PLATFORM_CLASS(UIViewController)

 public:
  UIViewController();
  ~UIViewController() override;

  // This page's identity, of the same source as the views'.
  std::uint64_t nodeIdentifier() const noexcept { return _nodeIdentifier; }

  // The view; the first call makes it (loadView, then viewDidLoad).
  const std::shared_ptr<UIView>& view();
  const std::shared_ptr<UIView>& viewIfLoaded() const noexcept { return _view; }
  bool isViewLoaded() const noexcept { return _view != nullptr; }
  // For loadView and for pages that bring their own.
  void setView(std::shared_ptr<UIView> view);
  // Makes a plain view of the screen's size that resizes with its superview.
  virtual void loadView();
  virtual void viewDidLoad() {}
  virtual void viewWillAppear(bool /*animated*/) {}
  virtual void viewDidAppear(bool /*animated*/) {}
  virtual void viewWillDisappear(bool /*animated*/) {}
  virtual void viewDidDisappear(bool /*animated*/) {}
  virtual void viewWillLayoutSubviews() {}
  virtual void viewDidLayoutSubviews() {}

  // Setting a title sets the navigation item's too.
  const std::optional<std::string>& title() const noexcept { return _title; }
  void setTitle(std::optional<std::string> title);
  const std::shared_ptr<UINavigationItem>& navigationItem();

  // The tree of controllers. An empty pointer, or one that would make a circle, is passed over.
  std::shared_ptr<UIViewController> parentViewController() const { return _parent.lock(); }
  void addChildViewController(const std::shared_ptr<UIViewController>& child);
  void removeFromParentViewController();
  // The nearest navigation controller around this one, itself not included; empty outside of one.
  std::shared_ptr<UINavigationController> navigationController() const;

  // Presents over the outermost controller around this one, as the platform does. Where something
  // is presented there already, or this page is, nothing happens but a line in the log. The
  // completion runs on the main queue when the transition has passed.
  void presentViewController(const std::shared_ptr<UIViewController>& controller, bool animated,
                             std::function<void()> completion = nullptr);
  // Takes away what this page, or one around it, presents; if there is nothing, this page itself
  // where it is presented.
  void dismissViewControllerAnimated(bool animated, std::function<void()> completion = nullptr);
  std::shared_ptr<UIViewController> presentedViewController() const;
  std::shared_ptr<UIViewController> presentingViewController() const;

  // Appearance, for containers and for the application: each step calls the pair of functions that
  // belongs to it, once; asking for the state that holds already does nothing.
  enum class Appearance : std::uint8_t { disappeared, appearing, appeared, disappearing };
  Appearance appearance() const noexcept { return _appearance; }
  void beginAppearanceTransition(bool appearing, bool animated);
  void endAppearanceTransition();

 protected:
  // A container passes the steps on to the child that is in sight.
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

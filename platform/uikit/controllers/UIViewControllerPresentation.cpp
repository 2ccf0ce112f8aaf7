#include "platform/foundation/objects/NSLog.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/controllers/UIWindow.h"

// Presentation of view controllers.
namespace platform {

std::shared_ptr<UIViewController> UIViewController::outermost() {
  auto controller = self<UIViewController>();
  while (auto parent = controller->_parent.lock()) controller = parent;
  return controller;
}

std::shared_ptr<UIViewController> UIViewController::presentedViewController() const {
  if (_presented) return _presented;
  const auto parent = _parent.lock();
  return parent ? parent->presentedViewController() : nullptr;
}

std::shared_ptr<UIViewController> UIViewController::presentingViewController() const {
  if (auto presenting = _presenting.lock()) return presenting;
  const auto parent = _parent.lock();
  return parent ? parent->presentingViewController() : nullptr;
}

void UIViewController::presentViewController(const std::shared_ptr<UIViewController>& controller,
                                             bool animated, std::function<void()> completion) {
  if (!controller) return;
  const auto presenter = outermost();
  if (presenter->_presented || !controller->_presenting.expired() || controller == presenter) {
    NSLog("Attempt to present %@ on %@ which is already presenting or presented",
          {Value(controller), Value(presenter)});
    return;
  }
  presenter->_presented = controller;
  controller->_presenting = presenter;
  noteChange();
  controller->beginAppearanceTransition(true, animated);
  if (const auto window = presenter->view()->window()) window->addSubview(controller->view());
  controller->endAppearanceTransition();
  runAfterTransition(animated, std::move(completion));
}

void UIViewController::dismissViewControllerAnimated(bool animated,
                                                     std::function<void()> completion) {
  const auto presenter = outermost();
  const auto presenting = presenter->_presenting.lock();
  if (!presenter->_presented && presenting) {
    presenting->dismissViewControllerAnimated(animated, std::move(completion));
    return;
  }
  if (const auto leaving = presenter->_presented) {
    if (leaving->_presented) leaving->dismissViewControllerAnimated(animated);
    presenter->_presented.reset();
    leaving->_presenting.reset();
    noteChange();
    leaving->beginAppearanceTransition(false, animated);
    leaving->view()->removeFromSuperview();
    leaving->endAppearanceTransition();
  }
  runAfterTransition(animated, std::move(completion));
}

void UIViewController::runAfterTransition(bool animated, std::function<void()> completion) {
  if (!completion) return;
  Process::current().service<Scheduler>().mainAfter(animated ? controllerTransitionDuration : 0,
                                                    std::move(completion));
}

}  // namespace platform

#include "platform/uikit/controllers/UINavigationController.h"

#include <algorithm>

#include "platform/foundation/values/Exception.h"

namespace platform {

bool UINavigationController::initWithRootViewController(
    const std::shared_ptr<UIViewController>& root) {
  if (!init()) return false;
  pushViewController(root, false);
  return true;
}

const std::shared_ptr<UINavigationBar>& UINavigationController::navigationBar() {
  if (!_bar) _bar = make<UINavigationBar>();
  return _bar;
}

std::shared_ptr<UIViewController> UINavigationController::topViewController() const {
  return _stack.empty() ? nullptr : _stack.back();
}

bool UINavigationController::isInSight() const noexcept {
  return appearance() == Appearance::appearing || appearance() == Appearance::appeared;
}

void UINavigationController::pushViewController(const std::shared_ptr<UIViewController>& page,
                                                bool animated) {
  if (!page) return;
  if (std::ranges::find(_stack, page) != _stack.end()) {
    raiseInvalidArgument(
        "Pushing the same view controller instance more than once is not "
        "supported (" +
        page->description() + ")");
  }
  const auto from = topViewController();
  addChildViewController(page);
  _stack.push_back(page);
  show(from, page, animated);
}

std::shared_ptr<UIViewController> UINavigationController::popViewControllerAnimated(bool animated) {
  if (_stack.size() < 2) return nullptr;
  auto page = _stack.back();
  _stack.pop_back();
  show(page, _stack.back(), animated);
  page->removeFromParentViewController();
  return page;
}

void UINavigationController::setViewControllers(
    std::vector<std::shared_ptr<UIViewController>> pages, bool animated) {
  std::erase(pages, nullptr);
  const auto from = topViewController();
  const auto before = std::exchange(_stack, std::move(pages));
  for (const auto& page : _stack) {
    if (page->parentViewController().get() != this) addChildViewController(page);
  }
  show(from, topViewController(), animated);
  for (const auto& page : before) {
    if (std::ranges::find(_stack, page) == _stack.end()) page->removeFromParentViewController();
  }
}

void UINavigationController::show(const std::shared_ptr<UIViewController>& from,
                                  const std::shared_ptr<UIViewController>& to, bool animated) {
  noteChange();
  if (from == to) return;
  if (!isInSight()) {
    if (from && from->isViewLoaded()) from->view()->removeFromSuperview();
    return;  // the top page gets its view when the navigation controller appears
  }
  if (to) to->view();
  if (from) from->beginAppearanceTransition(false, animated);
  if (to) to->beginAppearanceTransition(true, animated);
  if (from) from->view()->removeFromSuperview();
  layoutTop();
  if (from) from->endAppearanceTransition();
  if (to) to->endAppearanceTransition();
}

void UINavigationController::layoutTop() {
  const Rect bounds = view()->bounds();
  navigationBar()->setFrame({0, 0, bounds.width, UINavigationBar::standardHeight});
  const auto top = topViewController();
  if (!top) return;
  const double barHeight = _barHidden ? 0 : UINavigationBar::standardHeight;
  top->view()->setFrame({0, barHeight, bounds.width, bounds.height - barHeight});
  if (top->view()->superview() != view()) view()->insertSubview(top->view(), 0);
}

void UINavigationController::setNavigationBarHidden(bool hidden, bool /*animated*/) {
  _barHidden = hidden;
  navigationBar()->setHidden(hidden);
  if (isViewLoaded()) view()->setNeedsLayout();
}

void UINavigationController::viewDidLoad() {
  UIViewController::viewDidLoad();
  view()->addSubview(navigationBar());
}

void UINavigationController::viewWillLayoutSubviews() {
  if (isInSight()) layoutTop();
}

void UINavigationController::appearanceTransitionDidBegin(bool appearing, bool animated) {
  const auto top = topViewController();
  if (!top) return;
  top->beginAppearanceTransition(appearing, animated);
  if (appearing) layoutTop();
}

void UINavigationController::appearanceTransitionDidEnd() {
  if (const auto top = topViewController()) top->endAppearanceTransition();
}

}  // namespace platform

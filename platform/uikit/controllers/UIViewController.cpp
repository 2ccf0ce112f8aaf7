#include "platform/uikit/controllers/UIViewController.h"

#include <algorithm>

#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/drawing/UIScreen.h"

namespace platform {

UIViewController::UIViewController()
    : _nodeIdentifier(UIKitState::current().makeNodeIdentifier()) {}

UIViewController::~UIViewController() = default;

void UIViewController::noteChange() {
  UIKitState::current().countChange();
}

const std::shared_ptr<UIView>& UIViewController::view() {
  if (_view || _loadingView) return _view;
  _loadingView = true;
  try {
    loadView();
    if (!_view) UIViewController::loadView();
  } catch (...) {
    _loadingView = false;
    throw;
  }
  _loadingView = false;
  viewDidLoad();
  return _view;
}

void UIViewController::setView(std::shared_ptr<UIView> view) {
  if (_view) _view->_viewController.reset();
  _view = std::move(view);
  if (_view) _view->_viewController = weakSelf<UIViewController>();
  noteChange();
}

void UIViewController::loadView() {
  auto view = makeWithFrame<UIView>(UIScreen::mainScreen()->bounds());
  view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  setView(view);
}

void UIViewController::setTitle(std::optional<std::string> title) {
  navigationItem()->setTitle(title);
  _title = std::move(title);
  noteChange();
}

const std::shared_ptr<UINavigationItem>& UIViewController::navigationItem() {
  if (!_navigationItem) _navigationItem = make<UINavigationItem>();
  return _navigationItem;
}

void UIViewController::addChildViewController(const std::shared_ptr<UIViewController>& child) {
  if (!child) return;
  for (auto ancestor = self<UIViewController>(); ancestor; ancestor = ancestor->_parent.lock()) {
    if (ancestor == child) return;
  }
  child->removeFromParentViewController();
  child->_parent = weakSelf<UIViewController>();
  _children.push_back(child);
  noteChange();
}

void UIViewController::removeFromParentViewController() {
  const auto parent = _parent.lock();
  if (!parent) return;
  _parent.reset();
  std::erase(parent->_children, self<UIViewController>());
  noteChange();
}

std::shared_ptr<UINavigationController> UIViewController::navigationController() const {
  for (auto ancestor = _parent.lock(); ancestor; ancestor = ancestor->_parent.lock()) {
    if (auto found = std::dynamic_pointer_cast<UINavigationController>(ancestor)) return found;
  }
  return nullptr;
}

void UIViewController::beginAppearanceTransition(bool appearing, bool animated) {
  const bool holds =
      appearing ? _appearance == Appearance::appearing || _appearance == Appearance::appeared
                : _appearance == Appearance::disappearing || _appearance == Appearance::disappeared;
  if (holds) return;
  view();
  _animated = animated;
  _appearance = appearing ? Appearance::appearing : Appearance::disappearing;
  if (appearing) {
    viewWillAppear(animated);
  } else {
    viewWillDisappear(animated);
  }
  appearanceTransitionDidBegin(appearing, animated);
}

void UIViewController::endAppearanceTransition() {
  if (_appearance == Appearance::appearing) {
    _appearance = Appearance::appeared;
    viewDidAppear(_animated);
    appearanceTransitionDidEnd();
  } else if (_appearance == Appearance::disappearing) {
    _appearance = Appearance::disappeared;
    viewDidDisappear(_animated);
    appearanceTransitionDidEnd();
  }
}

}  // namespace platform

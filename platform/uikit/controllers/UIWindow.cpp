#include "platform/uikit/controllers/UIWindow.h"

#include "platform/uikit/drawing/UIScreen.h"
#include "platform/uikit/drawing/UITraits.h"

namespace platform {
namespace {

void tellTraitsDidChange(const std::shared_ptr<UIView>& view) {
  view->traitCollectionDidChange();
  const auto subviews = view->subviews();
  for (const auto& subview : subviews) tellTraitsDidChange(subview);
}

std::shared_ptr<UIColor> deviceTint() {
  const auto components = colorComponentsFromHex(currentTraits().tint);
  return components ? std::make_shared<UIColor>(*components) : UIColor::systemBlueColor();
}

}  // namespace

bool UIWindow::init() {
  if (!initWithFrame(UIScreen::mainScreen()->bounds())) return false;
  setTintColor(deviceTint());
  return true;
}

void UIWindow::setRootViewController(std::shared_ptr<UIViewController> controller) {
  if (controller == _root) return;
  const auto previous = std::exchange(_root, std::move(controller));
  if (previous && previous->isViewLoaded()) {
    previous->beginAppearanceTransition(false, false);
    previous->view()->removeFromSuperview();
    previous->endAppearanceTransition();
  }
  if (_visible) makeKeyAndVisible();
}

void UIWindow::makeKeyAndVisible() {
  _visible = true;
  if (!_root) return;
  const auto& view = _root->view();
  view->setFrame(bounds());
  view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  _root->beginAppearanceTransition(true, false);
  insertSubview(view, 0);
  _root->endAppearanceTransition();
}

void UIWindow::traitsDidChange() {
  const Rect screen = UIScreen::mainScreen()->bounds();
  setFrame({frame().x, frame().y, screen.width, screen.height});
  setTintColor(deviceTint());
  noteChange();
  tellTraitsDidChange(self<UIView>());
}

}  // namespace platform

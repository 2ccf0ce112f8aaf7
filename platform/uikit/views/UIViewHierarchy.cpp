#include <algorithm>

#include "platform/uikit/views/UIView.h"

// Adding views to and removing them from superviews.
namespace platform {

void UIView::addSubview(const std::shared_ptr<UIView>& view) {
  insertSubview(view, _subviews.size());
}

void UIView::insertSubview(const std::shared_ptr<UIView>& view, std::size_t index) {
  if (!view || isDescendantOfView(*view)) return;
  const auto tintBefore = view->tintColor();
  const auto parent = self<UIView>();
  view->willMoveToSuperview(parent);
  view->detachFromSuperview();
  view->_superview = parent;
  const auto place = static_cast<std::ptrdiff_t>(std::min(index, _subviews.size()));
  _subviews.insert(_subviews.begin() + place, view);
  noteChange();
  setNeedsLayout();
  if (!view->_tintColor && !sameColor(tintBefore, view->tintColor())) {
    view->propagateTintColorChange();
  }
  view->didMoveToSuperview();
}

void UIView::removeFromSuperview() {
  if (!superview()) return;
  const auto keptAlive = shared_from_this();
  const auto tintBefore = tintColor();
  willMoveToSuperview(nullptr);
  detachFromSuperview();
  if (!_tintColor && !sameColor(tintBefore, tintColor())) propagateTintColorChange();
  didMoveToSuperview();
}

void UIView::detachFromSuperview() {
  const auto parent = superview();
  if (!parent) return;
  for (auto ancestor = parent; ancestor; ancestor = ancestor->superview()) {
    ancestor->removeConstraintsOf(*this);
  }
  _superview.reset();
  std::erase_if(parent->_subviews, [this](const auto& view) { return view.get() == this; });
  parent->noteChange();
  parent->setNeedsLayout();
}

void UIView::removeConstraintsOf(const UIView& descendant) {
  const auto constraints = _constraints;  // deactivating changes the list
  for (const auto& constraint : constraints) {
    const auto first = constraint->firstItem();
    const auto second = constraint->secondItem();
    if ((first && first->isDescendantOfView(descendant)) ||
        (second && second->isDescendantOfView(descendant))) {
      constraint->setActive(false);
    }
  }
}

void UIView::bringSubviewToFront(const std::shared_ptr<UIView>& view) {
  const auto found = std::ranges::find(_subviews, view);
  if (found == _subviews.end() || found + 1 == _subviews.end()) return;
  std::rotate(found, found + 1, _subviews.end());
  noteChange();
}

bool UIView::isDescendantOfView(const UIView& view) const {
  if (this == &view) return true;
  const auto parent = superview();
  return parent && parent->isDescendantOfView(view);
}

std::shared_ptr<UIWindow> UIView::window() {
  const auto parent = superview();
  return parent ? parent->window() : nullptr;
}

std::shared_ptr<UIView> UIView::viewWithTag(std::int64_t tag) {
  if (_tag == tag) return self<UIView>();
  for (const auto& view : _subviews) {
    if (auto found = view->viewWithTag(tag)) return found;
  }
  return nullptr;
}

}  // namespace platform

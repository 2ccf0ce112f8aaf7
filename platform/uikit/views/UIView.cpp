#include "platform/uikit/views/UIView.h"

#include <algorithm>
#include <cmath>

#include "platform/uikit/views/UIGestureRecognizer.h"

namespace platform {

UIView::UIView() : _nodeIdentifier(UIKitState::current().makeNodeIdentifier()) {}

UIView::~UIView() {
  if (_layer) _layer->_owner = nullptr;
}

bool UIView::initWithFrame(Rect frame) {
  setFrame(frame);
  return true;
}

void UIView::noteChange() {
  UIKitState& state = UIKitState::current();
  _lastChange = state.countChange();
  if (state.runningAnimation()) _lastAnimation = state.runningAnimation();
}

Rect UIView::bounds() const noexcept {
  return {_boundsOrigin.x, _boundsOrigin.y, _frame.width, _frame.height};
}

void UIView::setFrame(Rect frame) {
  const auto length = [](double value) { return value > 0 ? value : 0; };  // NaN becomes 0 too
  frame.width = length(frame.width);
  frame.height = length(frame.height);
  const Size previous = _frame.size();
  if (!assign(_frame, frame) || previous == frame.size()) return;
  autoresizeSubviews(previous);
  setNeedsLayout();
  boundsSizeDidChange(previous);
}

void UIView::setBounds(Rect bounds) {
  const Point middle = center();
  setFrame(
      {middle.x - bounds.width / 2, middle.y - bounds.height / 2, bounds.width, bounds.height});
  if (assign(_boundsOrigin, bounds.origin())) boundsOriginDidChange();
}

Point UIView::center() const noexcept {
  return {_frame.x + _frame.width / 2, _frame.y + _frame.height / 2};
}

void UIView::setCenter(Point center) {
  setFrame(
      {center.x - _frame.width / 2, center.y - _frame.height / 2, _frame.width, _frame.height});
}

Point UIView::convertPointToView(Point point, const std::shared_ptr<UIView>& view) const {
  const auto inRoot = [](Point result, const UIView* from) {
    std::shared_ptr<UIView> parent;
    for (; from != nullptr; parent = from->superview(), from = parent.get()) {
      result.x += from->_frame.x - from->_boundsOrigin.x;
      result.y += from->_frame.y - from->_boundsOrigin.y;
    }
    return result;
  };
  const Point own = inRoot(point, this);
  const Point origin = inRoot({}, view.get());
  return {own.x - origin.x, own.y - origin.y};
}

void UIView::setAlpha(double alpha) {
  assign(_alpha, std::isnan(alpha) ? 0 : std::clamp(alpha, 0.0, 1.0));
}

void UIView::setHidden(bool hidden) {
  assign(_hidden, hidden);
}

void UIView::setBackgroundColor(std::shared_ptr<UIColor> color) {
  assign(_backgroundColor, std::move(color));
}

void UIView::setClipsToBounds(bool clips) {
  assign(_clipsToBounds, clips);
}

void UIView::setContentMode(UIViewContentMode mode) {
  assign(_contentMode, mode);
}

const std::shared_ptr<CALayer>& UIView::layer() {
  if (!_layer) {
    _layer = make<CALayer>();
    _layer->_owner = this;
  }
  return _layer;
}

std::shared_ptr<UIColor> UIView::tintColor() const {
  if (_tintColor) return _tintColor;
  for (auto view = superview(); view; view = view->superview()) {
    if (view->_tintColor) return view->_tintColor;
  }
  return UIColor::systemBlueColor();
}

void UIView::setTintColor(std::shared_ptr<UIColor> color) {
  const auto before = tintColor();
  if (!assign(_tintColor, std::move(color))) return;
  if (!sameColor(before, tintColor())) propagateTintColorChange();
}

void UIView::propagateTintColorChange() {
  tintColorDidChange();
  const auto subviews = _subviews;  // a callback may change the list
  for (const auto& view : subviews) {
    if (!view->_tintColor) view->propagateTintColorChange();
  }
}

void UIView::setUserInteractionEnabled(bool enabled) {
  assign(_userInteractionEnabled, enabled);
}

bool UIView::acceptsTouches() const {
  constexpr double transparent = 0.01;
  if (!_userInteractionEnabled || _hidden || _alpha < transparent) return false;
  const auto parent = superview();
  return !parent || parent->acceptsTouches();
}

void UIView::addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer) {
  if (!recognizer) return;
  if (const auto previous = recognizer->view()) previous->removeGestureRecognizer(recognizer);
  recognizer->_view = weakSelf<UIView>();
  _gestureRecognizers.push_back(recognizer);
}

void UIView::removeGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer) {
  if (std::erase(_gestureRecognizers, recognizer) > 0) recognizer->_view.reset();
}

void UIView::setAccessibilityLabel(std::optional<std::string> label) {
  assign(_accessibilityLabel, std::move(label));
}

std::shared_ptr<UIViewController> UIView::viewControllerForAncestor() const {
  if (auto controller = _viewController.lock()) return controller;
  const auto parent = superview();
  return parent ? parent->viewControllerForAncestor() : nullptr;
}

}  // namespace platform

#include "platform/uikit/views/NSLayoutConstraint.h"

#include <algorithm>

#include "platform/foundation/values/Exception.h"
#include "platform/uikit/views/UIView.h"

namespace platform {
namespace {

std::shared_ptr<UIView> commonAncestor(const std::shared_ptr<UIView>& first,
                                       const std::shared_ptr<UIView>& second) {
  if (!second) return first;
  for (auto view = first; view; view = view->superview()) {
    if (second->isDescendantOfView(*view)) return view;
  }
  return nullptr;
}

// The position of a view that holds constraints for its own size depends on its ancestors'
// constraints.
void layOutAnew(UIView& holder) {
  holder.setNeedsLayout();
  holder.invalidateIntrinsicContentSize();
}

}  // namespace

NSLayoutConstraint::NSLayoutConstraint(std::weak_ptr<UIView> first,
                                       NSLayoutAttribute firstAttribute,
                                       std::weak_ptr<UIView> second,
                                       NSLayoutAttribute secondAttribute, double constant)
    : _first(std::move(first)),
      _second(std::move(second)),
      _firstAttribute(firstAttribute),
      _secondAttribute(secondAttribute),
      _constant(constant) {}

void NSLayoutConstraint::setConstant(double constant) {
  _constant = constant;
  if (const auto holder = _holder.lock()) layOutAnew(*holder);
}

void NSLayoutConstraint::setActive(bool active) {
  if (active == isActive()) return;
  const auto own = self<NSLayoutConstraint>();
  if (!active) {
    const auto holder = _holder.lock();
    _holder.reset();
    std::erase(holder->_constraints, own);
    layOutAnew(*holder);
    return;
  }
  const auto first = firstItem();
  if (!first) return;  // a destroyed view needs no layout
  const auto holder = commonAncestor(first, secondItem());
  if (!holder) {
    raiseInvalidArgument(
        "Unable to activate constraint: the views have no common ancestor. Does the constraint "
        "reference items in different view hierarchies?");
  }
  _holder = holder;
  holder->_constraints.push_back(own);
  layOutAnew(*holder);
}

void NSLayoutConstraint::activateConstraints(
    std::initializer_list<std::shared_ptr<NSLayoutConstraint>> constraints) {
  for (const auto& constraint : constraints) {
    if (constraint) constraint->setActive(true);
  }
}

std::shared_ptr<NSLayoutConstraint> NSLayoutAnchor::constraintEqualToAnchor(
    const NSLayoutAnchor& other, double constant) const {
  return std::make_shared<NSLayoutConstraint>(_view, _attribute, other._view, other._attribute,
                                              constant);
}

std::shared_ptr<NSLayoutConstraint> NSLayoutAnchor::constraintEqualToConstant(
    double constant) const {
  return std::make_shared<NSLayoutConstraint>(_view, _attribute, std::weak_ptr<UIView>(),
                                              NSLayoutAttribute::none, constant);
}

}  // namespace platform

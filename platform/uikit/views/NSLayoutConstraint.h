#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <vector>

#include "platform/foundation/objects/Object.h"

namespace platform {

class UIView;

// The platform writes from left to right here: leading is left, trailing is right.
enum class NSLayoutAttribute : std::uint8_t {
  none,
  leading,
  trailing,
  top,
  bottom,
  width,
  height,
  centerX,
  centerY,
};

// first.attribute = second.attribute x multiplier + constant, in points; without a second view the
// constant alone. A constraint acts while it is active; the nearest view that holds both then owns
// it. Threads: main.
class NSLayoutConstraint : public Object {
  PLATFORM_CLASS(NSLayoutConstraint)

 public:
  NSLayoutConstraint() = default;
  NSLayoutConstraint(std::weak_ptr<UIView> first, NSLayoutAttribute firstAttribute,
                     std::weak_ptr<UIView> second, NSLayoutAttribute secondAttribute,
                     double constant);

  std::shared_ptr<UIView> firstItem() const { return _first.lock(); }
  std::shared_ptr<UIView> secondItem() const { return _second.lock(); }
  NSLayoutAttribute firstAttribute() const noexcept { return _firstAttribute; }
  NSLayoutAttribute secondAttribute() const noexcept { return _secondAttribute; }
  double constant() const noexcept { return _constant; }
  void setConstant(double constant);

  bool isActive() const { return !_holder.expired(); }
  // Raises NSInvalidArgumentException where the two views have no common ancestor, as the platform
  // does. Nothing changes for a constraint that is (in)active already.
  void setActive(bool active);

  // Activates all of them. An empty pointer among them is passed over.
  static void activateConstraints(
      std::initializer_list<std::shared_ptr<NSLayoutConstraint>> constraints);

 private:
  std::weak_ptr<UIView> _first;
  std::weak_ptr<UIView> _second;
  std::weak_ptr<UIView> _holder;
  NSLayoutAttribute _firstAttribute = NSLayoutAttribute::none;
  NSLayoutAttribute _secondAttribute = NSLayoutAttribute::none;
  double _constant = 0;
};

// One edge, centre line or dimension of a view, from which constraints are made. Does not keep the
// view alive. The constraints that it makes are not active yet.
class NSLayoutAnchor {
 public:
  NSLayoutAnchor(std::weak_ptr<UIView> view, NSLayoutAttribute attribute)
      : _view(std::move(view)), _attribute(attribute) {}

  std::shared_ptr<NSLayoutConstraint> constraintEqualToAnchor(const NSLayoutAnchor& other,
                                                              double constant = 0) const;
  // Of a dimension.
  std::shared_ptr<NSLayoutConstraint> constraintEqualToConstant(double constant) const;

 private:
  std::weak_ptr<UIView> _view;
  NSLayoutAttribute _attribute;
};

}  // namespace platform

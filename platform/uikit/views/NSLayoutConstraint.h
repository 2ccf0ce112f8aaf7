#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <vector>

#include "platform/foundation/objects/Object.h"

namespace platform {

class UIView;

// The text direction is left to right: leading is left, trailing is right.
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

// first.attribute = second.attribute x multiplier + constant, in points; only the constant without
// a second view. An active constraint is owned by the nearest common ancestor of its views.
// Threads: main.
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
  // As on the platform, raises NSInvalidArgumentException if the two views have no common ancestor.
  // Does nothing if the state does not change.
  void setActive(bool active);

  // Activates all constraints. Ignores empty pointers.
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

// An edge, centre line or dimension of a view, from which constraints are made. Does not keep the
// view alive. New constraints are inactive.
class NSLayoutAnchor {
 public:
  NSLayoutAnchor(std::weak_ptr<UIView> view, NSLayoutAttribute attribute)
      : _view(std::move(view)), _attribute(attribute) {}

  std::shared_ptr<NSLayoutConstraint> constraintEqualToAnchor(const NSLayoutAnchor& other,
                                                              double constant = 0) const;
  // For dimensions only.
  std::shared_ptr<NSLayoutConstraint> constraintEqualToConstant(double constant) const;

 private:
  std::weak_ptr<UIView> _view;
  NSLayoutAttribute _attribute;
};

}  // namespace platform

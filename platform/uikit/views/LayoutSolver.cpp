#include "platform/uikit/views/LayoutSolver.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/uikit/views/UIView.h"

namespace platform {
namespace {

// One axis of a view, in the holder's coordinates. Two of the four values determine the others.
struct Axis {
  std::optional<double> start;
  std::optional<double> end;
  std::optional<double> length;
  std::optional<double> center;

  bool isSolved() const noexcept { return start && length; }

  // Returns true if it determined a value.
  bool complete() {
    if (start && length && end && center) return false;
    if (!solveStartAndLength()) return false;
    end = *start + *length;
    center = *start + *length / 2;
    return true;
  }

 private:
  bool solveStartAndLength() {
    if (start && length) return true;
    if (start && end) {
      length = *end - *start;
    } else if (start && center) {
      length = 2 * (*center - *start);
    } else if (end && length) {
      start = *end - *length;
    } else if (end && center) {
      length = 2 * (*end - *center);
      start = *end - *length;
    } else if (center && length) {
      start = *center - *length / 2;
    }
    return isSolved();
  }
};

struct Box {
  Axis across;
  Axis down;
};

std::optional<double>* valueOf(Box& box, NSLayoutAttribute attribute) {
  switch (attribute) {
    case NSLayoutAttribute::leading:
      return &box.across.start;
    case NSLayoutAttribute::trailing:
      return &box.across.end;
    case NSLayoutAttribute::width:
      return &box.across.length;
    case NSLayoutAttribute::centerX:
      return &box.across.center;
    case NSLayoutAttribute::top:
      return &box.down.start;
    case NSLayoutAttribute::bottom:
      return &box.down.end;
    case NSLayoutAttribute::height:
      return &box.down.length;
    case NSLayoutAttribute::centerY:
      return &box.down.center;
    case NSLayoutAttribute::none:
      break;
  }
  return nullptr;
}

class Solver {
 public:
  explicit Solver(UIView& holder) : _holder(holder) { collect(holder); }

  void solve() {
    if (_constraints.empty()) return;
    for (const auto& constraint : _constraints) {
      addView(constraint->firstItem());
      addView(constraint->secondItem());
    }
    propagate();
    if (takeContentSizes()) propagate();
    apply(_holder);
  }

 private:
  void collect(const UIView& view) {
    const auto& own = view.constraints();
    _constraints.insert(_constraints.end(), own.begin(), own.end());
    for (const auto& subview : view.subviews()) collect(*subview);
  }

  bool isUnknown(const UIView& view) const {
    return &view != &_holder && !view.translatesAutoresizingMaskIntoConstraints();
  }

  void addView(const std::shared_ptr<UIView>& view) {
    if (!view || _boxes.contains(view.get())) return;
    Box& box = _boxes[view.get()];
    if (isUnknown(*view)) return;
    const Rect bounds = view->bounds();
    const Point origin = view->convertPointToView(
        bounds.origin(), std::static_pointer_cast<UIView>(_holder.shared_from_this()));
    box.across.start = origin.x;
    box.across.length = bounds.width;
    box.down.start = origin.y;
    box.down.length = bounds.height;
  }

  void propagate() {
    for (bool found = true; found;) {
      found = false;
      for (const auto& constraint : _constraints) found = carry(*constraint) || found;
      for (auto& [view, box] : _boxes) {
        found = box.across.complete() || found;
        found = box.down.complete() || found;
      }
    }
  }

  // Computes one side of a constraint from the other, known side.
  bool carry(const NSLayoutConstraint& constraint) {
    const auto firstView = constraint.firstItem();
    if (!firstView) return false;
    auto* first = valueOf(_boxes[firstView.get()], constraint.firstAttribute());
    if (first == nullptr) return false;
    if (constraint.secondAttribute() == NSLayoutAttribute::none) {
      return give(*first, constraint.constant());
    }
    const auto secondView = constraint.secondItem();
    if (!secondView) return false;
    auto* second = valueOf(_boxes[secondView.get()], constraint.secondAttribute());
    if (second == nullptr) return false;
    if (*second) return give(*first, **second + constraint.constant());
    return *first && give(*second, **first - constraint.constant());
  }

  static bool give(std::optional<double>& value, double known) {
    if (value) return false;
    value = known;
    return true;
  }

  bool takeContentSizes() {
    bool taken = false;
    for (auto& [view, box] : _boxes) {
      if (!isUnknown(*view)) continue;
      const Size size = view->intrinsicContentSize();
      if (size.width >= 0 && !box.across.isSolved()) taken |= give(box.across.length, size.width);
      if (size.height >= 0 && !box.down.isSolved()) taken |= give(box.down.length, size.height);
    }
    return taken;
  }

  // Superviews first, because a frame is relative to the new position of the superview.
  void apply(const UIView& view) {
    // A copy, because a resized view may change the list.
    const std::vector<std::shared_ptr<UIView>> subviews(view.subviews().begin(),
                                                        view.subviews().end());
    for (const auto& subview : subviews) {
      const auto box = _boxes.find(subview.get());
      if (box != _boxes.end() && isUnknown(*subview)) place(*subview, view, box->second);
      apply(*subview);
    }
  }

  void place(UIView& view, const UIView& superview, const Box& box) const {
    const Point origin = superview.convertPointToView(
        {}, std::static_pointer_cast<UIView>(_holder.shared_from_this()));
    Rect frame = view.frame();
    if (box.across.isSolved()) {
      frame.x = *box.across.start - origin.x;
      frame.width = *box.across.length;
    } else if (box.across.length) {
      frame.width = *box.across.length;
    }
    if (box.down.isSolved()) {
      frame.y = *box.down.start - origin.y;
      frame.height = *box.down.length;
    } else if (box.down.length) {
      frame.height = *box.down.length;
    }
    view.setFrame(frame);
  }

  UIView& _holder;
  std::vector<std::shared_ptr<NSLayoutConstraint>> _constraints;
  std::map<const UIView*, Box> _boxes;
};

}  // namespace

void solveConstraints(UIView& holder) {
  if (!holder.constraints().empty()) Solver(holder).solve();
}

}  // namespace platform

#include <algorithm>
#include <cmath>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/views/LayoutSolver.h"
#include "platform/uikit/views/UIView.h"

// Layout by autoresizing masks and constraints.
namespace platform {
namespace {

// One axis of a rectangle in its parent: the space before it, its length and the space after it.
struct Span {
  double before = 0;
  double length = 0;
  double behind = 0;
};

struct Flexibility {
  bool before = false;
  bool length = false;
  bool behind = false;
};

// Distributes the parent's growth among the flexible parts in proportion to their sizes, or evenly
// if all are zero.
void stretch(Span& span, Flexibility flexible, double growth) {
  const auto part = [](bool isFlexible, double length) {
    return isFlexible ? std::max(length, 0.0) : 0.0;
  };
  const double total = part(flexible.before, span.before) + part(flexible.length, span.length) +
                       part(flexible.behind, span.behind);
  const int count = flexible.before + flexible.length + flexible.behind;
  if (count == 0) return;
  const auto share = [&](bool isFlexible, double length) {
    if (!isFlexible) return 0.0;
    return growth * (total > 0 ? part(true, length) / total : 1.0 / count);
  };
  const double before = share(flexible.before, span.before);
  const double length = share(flexible.length, span.length);
  span.before += before;
  span.length = std::max(span.length + length, 0.0);
}

}  // namespace

void UIView::setAutoresizingMask(std::uint32_t mask) {
  assign(_autoresizingMask, mask);
}

void UIView::setTranslatesAutoresizingMaskIntoConstraints(bool translates) {
  if (assign(_translatesMask, translates)) invalidateIntrinsicContentSize();
}

void UIView::autoresizeSubviews(Size previous) {
  const auto subviews = _subviews;
  for (const auto& view : subviews) {
    if (view->_translatesMask) view->autoresize(previous, _frame.size());
  }
}

void UIView::autoresize(Size previousParent, Size parent) {
  const auto has = [this](std::uint32_t bit) { return (_autoresizingMask & bit) != 0; };
  Span across{_frame.x, _frame.width, previousParent.width - _frame.maxX()};
  stretch(across,
          {has(UIViewAutoresizingFlexibleLeftMargin), has(UIViewAutoresizingFlexibleWidth),
           has(UIViewAutoresizingFlexibleRightMargin)},
          parent.width - previousParent.width);
  Span down{_frame.y, _frame.height, previousParent.height - _frame.maxY()};
  stretch(down,
          {has(UIViewAutoresizingFlexibleTopMargin), has(UIViewAutoresizingFlexibleHeight),
           has(UIViewAutoresizingFlexibleBottomMargin)},
          parent.height - previousParent.height);
  setFrame({across.before, down.before, across.length, down.length});
}

void UIView::setNeedsLayout() {
  _needsLayout = true;
}

void UIView::invalidateIntrinsicContentSize() {
  if (!_constraints.empty()) setNeedsLayout();
  for (auto view = superview(); view; view = view->superview()) {
    if (view->laysOutByContents()) view->setNeedsLayout();
  }
}

void UIView::layoutIfNeeded() {
  const auto keptAlive = shared_from_this();
  if (_needsLayout) layoutNow();
  const auto subviews = _subviews;  // layout may change the list
  for (const auto& view : subviews) view->layoutIfNeeded();
}

void UIView::layoutNow() {
  const auto controller = _viewController.lock();
  _needsLayout = false;
  try {
    if (controller) controller->viewWillLayoutSubviews();
    solveConstraints(*this);
    layoutSubviews();
    solveConstraints(*this);  // for views that depend on frames set by layoutSubviews
    if (controller) controller->viewDidLayoutSubviews();
  } catch (...) {
    _needsLayout = true;  // skipped views are laid out next time
    throw;
  }
}

NSLayoutAnchor UIView::anchor(NSLayoutAttribute attribute) {
  return {weakSelf<UIView>(), attribute};
}

}  // namespace platform

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/objects/Object.h"
#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/drawing/UIKitState.h"
#include "platform/uikit/views/CALayer.h"
#include "platform/uikit/views/NSLayoutConstraint.h"

namespace platform {

class UIGestureRecognizer;
class UIViewController;
class UIWindow;

// Bits of an autoresizing mask.
enum UIViewAutoresizing : std::uint32_t {
  UIViewAutoresizingNone = 0,
  UIViewAutoresizingFlexibleLeftMargin = 1U << 0U,
  UIViewAutoresizingFlexibleWidth = 1U << 1U,
  UIViewAutoresizingFlexibleRightMargin = 1U << 2U,
  UIViewAutoresizingFlexibleTopMargin = 1U << 3U,
  UIViewAutoresizingFlexibleHeight = 1U << 4U,
  UIViewAutoresizingFlexibleBottomMargin = 1U << 5U,
};

enum class UIViewContentMode : std::uint8_t {
  scaleToFill = 0,
  scaleAspectFit = 1,
  scaleAspectFill = 2,
  center = 4,
};

// Bits of the options of an animation or transition.
enum UIViewAnimationOptions : std::uint32_t {
  UIViewAnimationOptionNone = 0,
  UIViewAnimationOptionTransitionCrossDissolve = 5U << 20U,
};

using AnimationBlock = std::function<void()>;
using AnimationCompletion = std::function<void(bool finished)>;

// A rectangle in the tree of what is shown. A view owns its subviews and not its superview. It
// draws nothing: a presenter reads the tree.
//
// Threads: main.
class UIView : public Object {
  PLATFORM_CLASS(UIView)

 public:
  UIView();
  ~UIView() override;
  bool init() override { return initWithFrame({}); }
  virtual bool initWithFrame(Rect frame);

  // This view's identity: unique in its process, kept for life, never used again.
  std::uint64_t nodeIdentifier() const noexcept { return _nodeIdentifier; }

  // Geometry. The frame is in the superview's coordinates; the bounds have the frame's size and
  // the origin of this view's own coordinates. A size that is negative counts as 0.
  const Rect& frame() const noexcept { return _frame; }
  void setFrame(Rect frame);
  Rect bounds() const noexcept;
  void setBounds(Rect bounds);
  Point center() const noexcept;
  void setCenter(Point center);
  // A point of this view in another view's coordinates; with an empty view in the root's.
  Point convertPointToView(Point point, const std::shared_ptr<UIView>& view) const;
  // What the contents ask for; noIntrinsicMetric where they ask for nothing.
  virtual Size intrinsicContentSize() const { return {noIntrinsicMetric, noIntrinsicMetric}; }
  // Says that the contents ask for another size; setters call it.
  void invalidateIntrinsicContentSize();
  static constexpr double noIntrinsicMetric = -1;

  // Appearance.
  double alpha() const noexcept { return _alpha; }
  void setAlpha(double alpha);  // kept between 0 and 1
  bool isHidden() const noexcept { return _hidden; }
  void setHidden(bool hidden);
  const std::shared_ptr<UIColor>& backgroundColor() const noexcept { return _backgroundColor; }
  void setBackgroundColor(std::shared_ptr<UIColor> color);
  bool clipsToBounds() const noexcept { return _clipsToBounds; }
  void setClipsToBounds(bool clips);
  UIViewContentMode contentMode() const noexcept { return _contentMode; }
  void setContentMode(UIViewContentMode mode);
  const std::shared_ptr<CALayer>& layer();  // made on the first call
  // The layer, empty where nobody has asked for it: it has no effect then.
  const std::shared_ptr<CALayer>& layerIfMade() const noexcept { return _layer; }

  // Tint: the view's own, or the nearest ancestor's, or the system blue. A change of the tint that
  // a view sees, whether set, inherited or met on joining another superview, calls
  // tintColorDidChange on it at once.
  std::shared_ptr<UIColor> tintColor() const;
  void setTintColor(std::shared_ptr<UIColor> color);  // empty: inherited again
  const std::shared_ptr<UIColor>& ownTintColor() const noexcept { return _tintColor; }
  virtual void tintColorDidChange() {}
  // The device's traits have changed; called on every view of the window.
  virtual void traitCollectionDidChange() {}

  // Interaction.
  bool isUserInteractionEnabled() const noexcept { return _userInteractionEnabled; }
  void setUserInteractionEnabled(bool enabled);
  // Whether a touch reaches the view: it and every ancestor are enabled, not hidden and not
  // transparent (alpha below 0.01).
  virtual bool acceptsTouches() const;
  void addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);
  void removeGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);
  const std::vector<std::shared_ptr<UIGestureRecognizer>>& gestureRecognizers() const noexcept {
    return _gestureRecognizers;
  }
  const std::optional<std::string>& accessibilityLabel() const noexcept {
    return _accessibilityLabel;
  }
  void setAccessibilityLabel(std::optional<std::string> label);
  std::int64_t tag() const noexcept { return _tag; }
  void setTag(std::int64_t tag) noexcept { _tag = tag; }

  // The tree. An empty pointer is passed over, and so is a view that would become its own
  // ancestor. A view that has a superview leaves it first.
  void addSubview(const std::shared_ptr<UIView>& view);
  void insertSubview(const std::shared_ptr<UIView>& view, std::size_t index);
  void removeFromSuperview();
  void bringSubviewToFront(const std::shared_ptr<UIView>& view);
  std::shared_ptr<UIView> superview() const { return _superview.lock(); }
  const std::vector<std::shared_ptr<UIView>>& subviews() const noexcept { return _subviews; }
  virtual std::shared_ptr<UIWindow> window();         // empty outside of one
  bool isDescendantOfView(const UIView& view) const;  // itself included
  std::shared_ptr<UIView> viewWithTag(std::int64_t tag);
  virtual void willMoveToSuperview(const std::shared_ptr<UIView>& /*newSuperview*/) {}
  // After this view joined or left a superview.
  virtual void didMoveToSuperview() {}
  // The controller whose view is this one or the nearest ancestor.
  std::shared_ptr<UIViewController> viewControllerForAncestor() const;

  // Layout. Subviews that translate their autoresizing mask follow a change of size at once; the
  // others get their frames from the active constraints when layout runs.
  std::uint32_t autoresizingMask() const noexcept { return _autoresizingMask; }
  void setAutoresizingMask(std::uint32_t mask);
  bool translatesAutoresizingMaskIntoConstraints() const noexcept { return _translatesMask; }
  void setTranslatesAutoresizingMaskIntoConstraints(bool translates);
  void setNeedsLayout();
  bool needsLayout() const noexcept { return _needsLayout; }
  // Lays out this view and its descendants where they need it. The application calls it on the
  // window after everything that happens.
  void layoutIfNeeded();
  virtual void layoutSubviews() {}
  NSLayoutAnchor topAnchor() { return anchor(NSLayoutAttribute::top); }
  NSLayoutAnchor bottomAnchor() { return anchor(NSLayoutAttribute::bottom); }
  NSLayoutAnchor leadingAnchor() { return anchor(NSLayoutAttribute::leading); }
  NSLayoutAnchor trailingAnchor() { return anchor(NSLayoutAttribute::trailing); }
  NSLayoutAnchor widthAnchor() { return anchor(NSLayoutAttribute::width); }
  NSLayoutAnchor heightAnchor() { return anchor(NSLayoutAttribute::height); }
  NSLayoutAnchor centerXAnchor() { return anchor(NSLayoutAttribute::centerX); }
  NSLayoutAnchor centerYAnchor() { return anchor(NSLayoutAttribute::centerY); }
  // The active constraints that this view holds for itself and its descendants.
  const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints() const noexcept {
    return _constraints;
  }

  // Changes. lastChange is the process's count of changes when this view changed last: its values,
  // its layer or the list of its subviews.
  std::uint64_t lastChange() const noexcept { return _lastChange; }
  // The animation that the last animated change was part of.
  const std::optional<ViewAnimation>& lastAnimation() const noexcept { return _lastAnimation; }
  // Says that this view has changed; setters call it.
  void noteChange();

  // Values that the block sets change at once, and the views that change remember the animation.
  // The completion runs on the main queue when the duration (seconds) has passed.
  static void animateWithDuration(double duration, const AnimationBlock& animations,
                                  AnimationCompletion completion = nullptr);
  // The same, and the view itself remembers the transition whatever the block changes.
  static void transitionWithView(const std::shared_ptr<UIView>& view, double duration,
                                 std::uint32_t options, const AnimationBlock& animations,
                                 AnimationCompletion completion = nullptr);

 protected:
  // Sets the field and notes the change where the value is another one. True where it is.
  template <class T>
  bool assign(T& field, T value) {
    if (field == value) return false;
    field = std::move(value);
    noteChange();
    return true;
  }
  // After the size of the bounds has changed and the subviews have followed.
  virtual void boundsSizeDidChange(Size /*previous*/) {}
  virtual void boundsOriginDidChange() {}
  // Whether the view places its descendants by what their contents ask for.
  virtual bool laysOutByContents() const { return !_constraints.empty(); }

 private:
  friend class CALayer;
  friend class NSLayoutConstraint;
  friend class UIViewController;

  NSLayoutAnchor anchor(NSLayoutAttribute attribute);
  void detachFromSuperview();
  void propagateTintColorChange();
  void autoresizeSubviews(Size previous);
  void autoresize(Size previousParent, Size parent);
  void layoutNow();
  void removeConstraintsOf(const UIView& descendant);

  std::uint64_t _nodeIdentifier;
  Rect _frame;
  Point _boundsOrigin;
  double _alpha = 1;
  bool _hidden = false;
  bool _clipsToBounds = false;
  bool _userInteractionEnabled = true;
  bool _translatesMask = true;
  bool _needsLayout = true;
  UIViewContentMode _contentMode = UIViewContentMode::scaleToFill;
  std::uint32_t _autoresizingMask = UIViewAutoresizingNone;
  std::int64_t _tag = 0;
  std::uint64_t _lastChange = 0;
  std::shared_ptr<UIColor> _backgroundColor;
  std::shared_ptr<UIColor> _tintColor;
  std::shared_ptr<CALayer> _layer;
  std::optional<std::string> _accessibilityLabel;
  std::optional<ViewAnimation> _lastAnimation;
  std::weak_ptr<UIView> _superview;
  std::weak_ptr<UIViewController> _viewController;
  std::vector<std::shared_ptr<UIView>> _subviews;
  std::vector<std::shared_ptr<UIGestureRecognizer>> _gestureRecognizers;
  std::vector<std::shared_ptr<NSLayoutConstraint>> _constraints;
};

// Allocates a view of the class and initialises it with the frame. Empty where that refuses.
template <std::derived_from<UIView> T>
std::shared_ptr<T> makeWithFrame(Rect frame) {
  auto view = std::make_shared<T>();
  return static_cast<UIView&>(*view).initWithFrame(frame) ? view : nullptr;
}

}  // namespace platform

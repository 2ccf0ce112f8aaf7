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

// Bit flags of an autoresizing mask.
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

// Bit flags of animation and transition options.
enum UIViewAnimationOptions : std::uint32_t {
  UIViewAnimationOptionNone = 0,
  UIViewAnimationOptionTransitionCrossDissolve = 5U << 20U,
};

using AnimationBlock = std::function<void()>;
using AnimationCompletion = std::function<void(bool finished)>;

// A rectangle in the view tree. A view owns its subviews but not its superview. It does not draw: a
// presenter reads the tree.
//
// Threads: main.
class UIView : public Object {
  PLATFORM_CLASS(UIView)

 public:
  UIView();
  ~UIView() override;
  bool init() override { return initWithFrame({}); }
  virtual bool initWithFrame(Rect frame);

  // A unique identifier in the process. Never reused.
  std::uint64_t nodeIdentifier() const noexcept { return _nodeIdentifier; }

  // Geometry. The frame is in the superview's coordinates. The bounds have the frame's size and the
  // origin of this view's own coordinates. Negative sizes become 0.
  const Rect& frame() const noexcept { return _frame; }
  void setFrame(Rect frame);
  Rect bounds() const noexcept;
  void setBounds(Rect bounds);
  Point center() const noexcept;
  void setCenter(Point center);
  // Converts a point of this view to another view's coordinates, or to the root's if the view is
  // empty.
  Point convertPointToView(Point point, const std::shared_ptr<UIView>& view) const;
  // Returns the size that the contents need; noIntrinsicMetric if they need none.
  virtual Size intrinsicContentSize() const { return {noIntrinsicMetric, noIntrinsicMetric}; }
  // Setters call it when the intrinsic size changes.
  void invalidateIntrinsicContentSize();
  static constexpr double noIntrinsicMetric = -1;

  // Appearance.
  double alpha() const noexcept { return _alpha; }
  void setAlpha(double alpha);  // clamped to 0..1
  bool isHidden() const noexcept { return _hidden; }
  void setHidden(bool hidden);
  const std::shared_ptr<UIColor>& backgroundColor() const noexcept { return _backgroundColor; }
  void setBackgroundColor(std::shared_ptr<UIColor> color);
  bool clipsToBounds() const noexcept { return _clipsToBounds; }
  void setClipsToBounds(bool clips);
  UIViewContentMode contentMode() const noexcept { return _contentMode; }
  void setContentMode(UIViewContentMode mode);
  const std::shared_ptr<CALayer>& layer();  // made on the first call
  // The layer, or empty if it has not been made and thus has no effect.
  const std::shared_ptr<CALayer>& layerIfMade() const noexcept { return _layer; }

  // Tint: of the view, otherwise of the nearest ancestor, otherwise the system blue. Any change of
  // the effective tint, set, inherited or caused by a new superview, immediately calls
  // tintColorDidChange.
  std::shared_ptr<UIColor> tintColor() const;
  void setTintColor(std::shared_ptr<UIColor> color);  // empty to inherit it
  const std::shared_ptr<UIColor>& ownTintColor() const noexcept { return _tintColor; }
  virtual void tintColorDidChange() {}
  // Called on every view of the window when the device's traits change.
  virtual void traitCollectionDidChange() {}

  // Interaction.
  bool isUserInteractionEnabled() const noexcept { return _userInteractionEnabled; }
  void setUserInteractionEnabled(bool enabled);
  // Returns whether a touch reaches the view: it and all its ancestors are enabled, not hidden and
  // not transparent (alpha below 0.01).
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

  // The tree. Ignores an empty pointer and a view that would become its own ancestor. A view with a
  // superview is first removed from it.
  void addSubview(const std::shared_ptr<UIView>& view);
  void insertSubview(const std::shared_ptr<UIView>& view, std::size_t index);
  void removeFromSuperview();
  void bringSubviewToFront(const std::shared_ptr<UIView>& view);
  std::shared_ptr<UIView> superview() const { return _superview.lock(); }
  const std::vector<std::shared_ptr<UIView>>& subviews() const noexcept { return _subviews; }
  virtual std::shared_ptr<UIWindow> window();         // empty if outside of a window
  bool isDescendantOfView(const UIView& view) const;  // includes itself
  std::shared_ptr<UIView> viewWithTag(std::int64_t tag);
  virtual void willMoveToSuperview(const std::shared_ptr<UIView>& /*newSuperview*/) {}
  // Called after this view was added to or removed from a superview.
  virtual void didMoveToSuperview() {}
  // Returns the controller of this view or of the nearest ancestor that has one.
  std::shared_ptr<UIViewController> viewControllerForAncestor() const;

  // Layout. Subviews that translate their autoresizing mask follow a change of size at once. Others
  // get their frames from the active constraints during layout.
  std::uint32_t autoresizingMask() const noexcept { return _autoresizingMask; }
  void setAutoresizingMask(std::uint32_t mask);
  bool translatesAutoresizingMaskIntoConstraints() const noexcept { return _translatesMask; }
  void setTranslatesAutoresizingMaskIntoConstraints(bool translates);
  void setNeedsLayout();
  bool needsLayout() const noexcept { return _needsLayout; }
  // Lays out this view and its descendants if needed. The application calls it on the window after
  // each event.
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

  // Changes. lastChange is the process's change counter at the last change of this view: its
  // values, its layer or its list of subviews.
  std::uint64_t lastChange() const noexcept { return _lastChange; }
  // The animation of the last animated change.
  const std::optional<ViewAnimation>& lastAnimation() const noexcept { return _lastAnimation; }
  // Setters call it after a change.
  void noteChange();

  // Values set by the block change at once, and the changed views record the animation. The
  // completion runs on the main queue after the duration (seconds).
  static void animateWithDuration(double duration, const AnimationBlock& animations,
                                  AnimationCompletion completion = nullptr);
  // Like animateWithDuration, and the view itself records the transition even if the block does not
  // change it.
  static void transitionWithView(const std::shared_ptr<UIView>& view, double duration,
                                 std::uint32_t options, const AnimationBlock& animations,
                                 AnimationCompletion completion = nullptr);

 protected:
  // Sets the field. If the value differs, notes the change and returns true.
  template <class T>
  bool assign(T& field, T value) {
    if (field == value) return false;
    field = std::move(value);
    noteChange();
    return true;
  }
  // Called after the size of the bounds changed and the subviews were resized.
  virtual void boundsSizeDidChange(Size /*previous*/) {}
  virtual void boundsOriginDidChange() {}
  // Returns whether the view lays out its descendants by their intrinsic sizes.
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

// Allocates a view of the class and initialises it with the frame. Returns an empty pointer if that
// fails.
template <std::derived_from<UIView> T>
std::shared_ptr<T> makeWithFrame(Rect frame) {
  auto view = std::make_shared<T>();
  return static_cast<UIView&>(*view).initWithFrame(frame) ? view : nullptr;
}

}  // namespace platform

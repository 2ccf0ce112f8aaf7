#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/uikit/views/UIView.h"

// Animated changes.
namespace platform {
namespace {

// Sets the running animation until the end of the scope.
class RunningAnimation {
 public:
  explicit RunningAnimation(const ViewAnimation& animation)
      : _state(UIKitState::current()), _previous(_state.runningAnimation()) {
    _state.setRunningAnimation(animation);
  }
  ~RunningAnimation() { _state.setRunningAnimation(_previous); }
  RunningAnimation(const RunningAnimation&) = delete;
  RunningAnimation& operator=(const RunningAnimation&) = delete;

 private:
  UIKitState& _state;
  std::optional<ViewAnimation> _previous;
};

ViewAnimation makeAnimation(double duration, ViewAnimationKind kind) {
  return {UIKitState::current().makeAnimationIdentifier(), duration > 0 ? duration : 0, kind};
}

void completeAfter(double duration, AnimationCompletion completion) {
  if (!completion) return;
  Process::current().service<Scheduler>().mainAfter(
      duration, [completion = std::move(completion)] { completion(true); });
}

}  // namespace

void UIView::animateWithDuration(double duration, const AnimationBlock& animations,
                                 AnimationCompletion completion) {
  const ViewAnimation animation = makeAnimation(duration, ViewAnimationKind::change);
  if (animations) {
    const RunningAnimation running(animation);
    animations();
  }
  completeAfter(animation.duration, std::move(completion));
}

void UIView::transitionWithView(const std::shared_ptr<UIView>& view, double duration,
                                std::uint32_t options, const AnimationBlock& animations,
                                AnimationCompletion completion) {
  const bool dissolves = (options & UIViewAnimationOptionTransitionCrossDissolve) ==
                         UIViewAnimationOptionTransitionCrossDissolve;
  const ViewAnimation animation = makeAnimation(
      duration, dissolves ? ViewAnimationKind::crossDissolve : ViewAnimationKind::change);
  {
    const RunningAnimation running(animation);
    if (view) view->noteChange();
    if (animations) animations();
  }
  completeAfter(animation.duration, std::move(completion));
}

}  // namespace platform

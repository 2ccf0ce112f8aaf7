#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

namespace platform {

enum class ViewAnimationKind : std::uint8_t { change, crossDissolve };

// An animation that a view's last change was part of. Values change at once; a presenter may show
// the way there. A new identifier is a new animation.
struct ViewAnimation {
  std::uint64_t identifier = 0;
  double duration = 0;  // seconds
  ViewAnimationKind kind = ViewAnimationKind::change;
  friend bool operator==(const ViewAnimation&, const ViewAnimation&) = default;
};

// What the views of one process share: the source of identities, the count of changes, the
// animation that is being described just now. Hangs on Process.
// Threads: makeNodeIdentifier from any; everything else from the main thread.
class UIKitState {
 public:
  static UIKitState& current();

  // Never given twice within a process.
  std::uint64_t makeNodeIdentifier() noexcept { return ++_lastNodeIdentifier; }

  // Grows with every change of a view, a row or a controller; a presenter that remembers the value
  // sees whether anything changed since.
  std::uint64_t changeCount() const noexcept { return _changeCount; }
  std::uint64_t countChange() noexcept { return ++_changeCount; }

  std::uint64_t makeAnimationIdentifier() noexcept { return ++_lastAnimationIdentifier; }
  // The animation whose block is running, if any.
  const std::optional<ViewAnimation>& runningAnimation() const noexcept { return _animation; }
  void setRunningAnimation(std::optional<ViewAnimation> animation) noexcept {
    _animation = animation;
  }

 private:
  std::atomic<std::uint64_t> _lastNodeIdentifier = 0;
  std::uint64_t _changeCount = 0;
  std::uint64_t _lastAnimationIdentifier = 0;
  std::optional<ViewAnimation> _animation;
};

}  // namespace platform

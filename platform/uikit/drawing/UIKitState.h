#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

namespace platform {

enum class ViewAnimationKind : std::uint8_t { change, crossDissolve };

// The animation of a view's last change. Values change at once; a presenter may animate the
// transition. Each animation has its own identifier.
struct ViewAnimation {
  std::uint64_t identifier = 0;
  double duration = 0;  // in seconds
  ViewAnimationKind kind = ViewAnimationKind::change;
  friend bool operator==(const ViewAnimation&, const ViewAnimation&) = default;
};

// State shared by the views of a process: the source of node identifiers, the change counter and
// the running animation block. Owned by Process. Threads: makeNodeIdentifier from any, everything
// else on the main thread.
class UIKitState {
 public:
  static UIKitState& current();

  // Unique within a process.
  std::uint64_t makeNodeIdentifier() noexcept { return ++_lastNodeIdentifier; }

  // Increases with every change of a view, a row or a controller, so that a presenter can detect
  // changes.
  std::uint64_t changeCount() const noexcept { return _changeCount; }
  std::uint64_t countChange() noexcept { return ++_changeCount; }

  std::uint64_t makeAnimationIdentifier() noexcept { return ++_lastAnimationIdentifier; }
  // The animation whose block is running; empty if there is none.
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

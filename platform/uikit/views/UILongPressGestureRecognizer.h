#pragma once

#include <cstdint>

#include "platform/uikit/views/UIGestureRecognizer.h"

namespace platform {

// Recognises a long press: the finger stays within 10 points of its start until the scheduler's
// clock has passed the minimum duration. The gesture then begins, and it ends when the finger is
// lifted. Threads: main.
class UILongPressGestureRecognizer : public UIGestureRecognizer {
  PLATFORM_CLASS(UILongPressGestureRecognizer)

 public:
  double minimumPressDuration() const noexcept { return _minimumPressDuration; }  // in seconds
  void setMinimumPressDuration(double seconds) noexcept { _minimumPressDuration = seconds; }

 protected:
  void handleTouchBegan() override;
  void handleTouchMoved(Point from) override;
  void handleTouchEnded() override;
  void handleTouchCancelled() override;

 private:
  void pressed(std::uint64_t touch);
  bool isUnderWay() const noexcept;

  double _minimumPressDuration = 0.5;
  Point _start;
  std::uint64_t _touch = 0;  // the touch that a timer belongs to
};

}  // namespace platform

#pragma once

#include <memory>
#include <vector>

namespace platform {
class UIGestureRecognizer;
class UIView;
}  // namespace platform

namespace settings {

class PhotoLibrary;

// The finger that presses a row. Threads: main.
class Finger {
 public:
  bool isDown() const noexcept { return _isDown; }
  // Comes down in the middle of the view; is taken away first where it is down somewhere else.
  void press(const std::shared_ptr<platform::UIView>& view);
  // Lifts the finger. Returns true if a gesture recogniser took the press, so that it is not a tap.
  bool lift();
  // Cancels the press: no gesture, no tap.
  void cancel();

 private:
  std::vector<std::weak_ptr<platform::UIGestureRecognizer>> _watching;
  bool _isDown = false;
};

// What the actions on nodes need besides the node.
struct HandTools {
  PhotoLibrary& photos;
  Finger& finger;
};

}  // namespace settings

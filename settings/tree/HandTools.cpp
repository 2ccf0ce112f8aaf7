#include "settings/tree/HandTools.h"

#include <utility>

#include "platform/uikit/views/UIGestureRecognizer.h"
#include "platform/uikit/views/UIView.h"

namespace settings {

void Finger::press(const std::shared_ptr<platform::UIView>& view) {
  if (_isDown) cancel();
  const platform::Rect bounds = view->bounds();
  const platform::Point middle{bounds.x + bounds.width / 2, bounds.y + bounds.height / 2};
  const platform::Point point = view->convertPointToView(middle, nullptr);
  _isDown = true;
  std::vector<std::shared_ptr<platform::UIGestureRecognizer>> watching;
  for (auto each = view; each; each = each->superview()) {
    for (const auto& recognizer : each->gestureRecognizers()) watching.push_back(recognizer);
  }
  _watching.assign(watching.begin(), watching.end());
  for (const auto& recognizer : watching) recognizer->touchBegan(point);
}

bool Finger::lift() {
  bool taken = false;
  _isDown = false;
  for (const auto& weak : std::exchange(_watching, {})) {
    const auto recognizer = weak.lock();
    if (!recognizer) continue;
    taken = taken || (recognizer->hasRecognized() && recognizer->cancelsTouchesInView());
    recognizer->touchEnded();
  }
  return taken;
}

void Finger::cancel() {
  _isDown = false;
  for (const auto& weak : std::exchange(_watching, {})) {
    if (const auto recognizer = weak.lock()) recognizer->touchCancelled();
  }
}

}  // namespace settings

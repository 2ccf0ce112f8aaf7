#include "platform/uikit/drawing/UIKitState.h"

#include "platform/foundation/objects/Process.h"

namespace platform {

UIKitState& UIKitState::current() {
  return Process::current().once<UIKitState>();
}

}  // namespace platform

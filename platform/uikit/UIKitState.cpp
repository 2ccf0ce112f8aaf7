#include "platform/uikit/UIKitState.h"

#include "platform/foundation/Process.h"

namespace platform {

UIKitState& UIKitState::current() {
  return Process::current().once<UIKitState>();
}

}  // namespace platform

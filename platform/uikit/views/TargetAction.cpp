#include "platform/uikit/views/TargetAction.h"

#include <algorithm>

namespace platform {

void sendAction(Object& target, std::string_view action, const std::shared_ptr<Object>& sender) {
  const auto colons = std::ranges::count(action, ':');
  if (colons == 0) {
    target.perform(action);
  } else if (colons == 1) {
    target.perform(action, {Value(sender)});
  } else {
    target.perform(action, {Value(sender), Value()});
  }
}

}  // namespace platform

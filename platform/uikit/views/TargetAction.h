#pragma once

#include <memory>
#include <string_view>

#include "platform/foundation/objects/Object.h"

namespace platform {

// Sends an action as controls and gesture recognisers do: a selector with one colon gets the
// sender, the argument for a second colon is none.
void sendAction(Object& target, std::string_view action, const std::shared_ptr<Object>& sender);

}  // namespace platform

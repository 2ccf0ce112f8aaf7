#pragma once

#include <memory>
#include <string_view>

#include "platform/foundation/objects/Object.h"

namespace platform {

// Sends an action as controls and gesture recognisers do: the sender goes along where the selector
// has a colon, none for a second one.
void sendAction(Object& target, std::string_view action, const std::shared_ptr<Object>& sender);

}  // namespace platform

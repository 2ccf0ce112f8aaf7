#pragma once

#include "platform/foundation/objects/DeviceTraits.h"

namespace platform {

// Returns the traits of the current process, or the standard ones if none were provided. Threads:
// main.
const DeviceTraits& currentTraits();

}  // namespace platform

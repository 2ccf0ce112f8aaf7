#pragma once

#include "platform/foundation/objects/DeviceTraits.h"

namespace platform {

// The traits that were provided to the current process; the standard ones where none were.
// Threads: main.
const DeviceTraits& currentTraits();

}  // namespace platform

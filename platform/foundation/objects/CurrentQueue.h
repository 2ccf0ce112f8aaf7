#pragma once

#include <string>

#include "platform/foundation/objects/RunLoop.h"

namespace platform {

// Returns the queue that the calling thread works for: the label of a serial queue, "main" on the
// main thread, otherwise "global". Threads: any that work for a process.
std::string currentQueueLabel();

// Wraps the work so that currentQueueLabel() returns the label while it runs. For queue
// implementations.
Work workOfQueue(std::string label, Work work);

}  // namespace platform

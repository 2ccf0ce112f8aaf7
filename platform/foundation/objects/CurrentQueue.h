#pragma once

#include <string>

#include "platform/foundation/objects/RunLoop.h"

namespace platform {

// Where the calling thread's work comes from: the label of the serial queue whose work it runs,
// "main" on the main thread, "global" elsewhere. Threads: any; the thread must work for a process.
std::string currentQueueLabel();

// The work, made to know that it runs on the queue of that label. For those who make queues.
Work workOfQueue(std::string label, Work work);

}  // namespace platform

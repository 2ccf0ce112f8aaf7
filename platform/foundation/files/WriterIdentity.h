#pragma once

#include <string>
#include <string_view>

namespace platform {

// Returns "<process id>-<start time>" of this program. Unlike the process id alone, it is not
// reused by later programs.
std::string currentWriter();
// Returns whether the program still runs. False for text that currentWriter() did not return.
bool writerLives(std::string_view writer);

}  // namespace platform

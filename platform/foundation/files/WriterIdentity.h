#pragma once

#include <string>
#include <string_view>

namespace platform {

// Tells a running program of this machine from every other one, also from a later one that got
// the same process id: "<process id>-<start time>".
std::string currentWriter();
// Whether the program still runs. False for what no currentWriter() gave.
bool writerLives(std::string_view writer);

}  // namespace platform

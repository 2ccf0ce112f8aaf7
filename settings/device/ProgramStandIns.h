#pragma once

#include <string_view>
#include <vector>

namespace settings {

class TreeWriter;

// Adds stand-ins for the programs that the bundle starts. They log their arguments and print what
// the real programs would print.
void addProgramStandIns(TreeWriter& writer);

// Their paths on the device.
const std::vector<std::string_view>& programStandInPaths();

}  // namespace settings

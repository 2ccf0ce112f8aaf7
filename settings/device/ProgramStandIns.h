#pragma once

#include <string_view>
#include <vector>

namespace settings {

class TreeWriter;

// Adds stand-ins for the programs that the bundle starts: they record what they were asked and
// print what the real ones would.
void addProgramStandIns(TreeWriter& writer);

// Where they lie on the device.
const std::vector<std::string_view>& programStandInPaths();

}  // namespace settings

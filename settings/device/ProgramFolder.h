#pragma once

#include <filesystem>
#include <string_view>

namespace settings {

// The folder that what belongs to the running program lies in: the one above the program's own
// ("/usr" for "/usr/bin/NAME"). Empty where the system does not say.
std::filesystem::path programFolder();

// A folder of data of the program's own, "share/NAME" there. It may be missing.
std::filesystem::path sharedFolder(std::string_view name);

}  // namespace settings

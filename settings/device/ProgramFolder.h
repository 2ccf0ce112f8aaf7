#pragma once

#include <filesystem>
#include <string_view>

namespace settings {

// The folder that contains the running program's files: the parent of the program's own folder
// ("/usr" for "/usr/bin/NAME"). Empty if the system does not report the program's path.
std::filesystem::path programFolder();

// The program's data folder "share/NAME" in programFolder(). It may be missing.
std::filesystem::path sharedFolder(std::string_view name);

}  // namespace settings

#pragma once

#include <string>
#include <string_view>

namespace platform {

// The name of a source file, without its folders, as messages give it: "HBLinkTableCell.cpp" for
// its __FILE__; "<Unknown File>" where the compiler tells none. Threads: any.
std::string sourceFileName(std::string_view path);

}  // namespace platform

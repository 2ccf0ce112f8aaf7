#pragma once

#include <source_location>
#include <string>

namespace platform {

// The name of the source file, without its folders, as messages give it: "HBLinkTableCell.cpp";
// "<Unknown File>" where the compiler tells none. Threads: any.
std::string sourceFileName(const std::source_location& location);

}  // namespace platform

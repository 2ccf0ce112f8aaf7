#pragma once

#include <string>
#include <string_view>

namespace platform {

// Returns the name of a source file without folders, for messages: "HBLinkTableCell.cpp" for its
// __FILE__, or "<Unknown File>" for an empty path. Threads: any.
std::string sourceFileName(std::string_view path);

}  // namespace platform

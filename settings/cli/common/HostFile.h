#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace settings {

// Files of this machine that the user names on the command line; "-" is standard input or output.

// Reads the whole file. Returns nothing if it cannot be read or is larger than a property list may
// be; `problem` says why, without the name: "cannot be read: Permission denied".
std::optional<std::string> readHostFile(const std::string& name, std::istream& standardInput,
                                        std::string& problem);

// Replaces the file completely or not at all. If it is not a regular file (a terminal, a pipe),
// writes to it. Returns nothing on success, otherwise the error.
std::optional<std::string> writeHostFile(const std::string& name, std::string_view bytes,
                                         std::ostream& standardOutput);

// The name of the file in messages.
std::string shownName(const std::string& name);

}  // namespace settings

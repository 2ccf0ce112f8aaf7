#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace settings {

// Files of this machine that people name on the command line; "-" is standard input or output.

// The whole file. Empty where it cannot be read or is larger than a property list may be; `problem`
// says why, without the name: "cannot be read: Permission denied".
std::optional<std::string> readHostFile(const std::string& name, std::istream& standardInput,
                                        std::string& problem);

// Replaces the file as a whole or not at all. What is no regular file (a terminal, a pipe) is
// written to. No text where that was done, else what went wrong.
std::optional<std::string> writeHostFile(const std::string& name, std::string_view bytes,
                                         std::ostream& standardOutput);

// What messages call the file.
std::string shownName(const std::string& name);

}  // namespace settings

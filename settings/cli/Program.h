#pragma once

#include <span>
#include <string>

#include "settings/cli/common/CommandContext.h"

namespace settings {

// Runs the program with its arguments (without its own name). Returns the exit status. Every error
// becomes a message and an exit status; a failure to write the results is an error too.
ExitStatus runProgram(std::span<const std::string> arguments, CommandContext& context);

}  // namespace settings

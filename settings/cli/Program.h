#pragma once

#include <span>
#include <string>

#include "settings/cli/common/CommandContext.h"

namespace settings {

// Runs the program with its arguments (without its own name). Everything that goes wrong becomes
// a message and an exit status; results that could not be written are a failure, too.
ExitStatus runProgram(std::span<const std::string> arguments, CommandContext& context);

}  // namespace settings

#pragma once

#include "settings/cli/common/CommandContext.h"

namespace settings {

// Each adds one subcommand to its parent: its options, its help, and what it does, which sets the
// context's status. Parent and context must outlive the parsing of the command line.
void addLint(CLI::App& program, CommandContext& context);
void addSmoke(CLI::App& program, CommandContext& context);

}  // namespace settings

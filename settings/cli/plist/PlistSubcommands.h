#pragma once

#include "settings/cli/common/CommandContext.h"

namespace settings {

// Each adds one subcommand to its parent: its options, its help, and what it does, which sets the
// context's status. Parent and context must outlive the parsing of the command line.
void addPlist(CLI::App& program, CommandContext& context);
void addPlistConvert(CLI::App& plist, CommandContext& context);
void addPlistLint(CLI::App& plist, CommandContext& context);
void addPlistShow(CLI::App& plist, CommandContext& context);

}  // namespace settings

#pragma once

#include "settings/cli/common/CommandContext.h"

// The subcommands that search for mistakes.
namespace settings {

AddSubcommand addSmoke;
AddSubcommand addLint;

}  // namespace settings

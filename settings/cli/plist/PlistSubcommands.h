#pragma once

#include "settings/cli/common/CommandContext.h"

// The subcommand `plist` and its own subcommands, in the order of the help.
namespace settings {

AddSubcommand addPlist;
AddSubcommand addPlistConvert;
AddSubcommand addPlistLint;
AddSubcommand addPlistShow;
inline constexpr AddSubcommand* plistSubcommands[] = {addPlistConvert, addPlistLint, addPlistShow};

}  // namespace settings

#pragma once

#include "settings/cli/checks/CheckSubcommands.h"
#include "settings/cli/common/CommandContext.h"
#include "settings/cli/plist/PlistSubcommands.h"
#include "settings/cli/prefs/PrefsSubcommands.h"

// All subcommands. To add one, write a file with the function that adds it, and declare it here and
// in the order of the help.
namespace settings {

AddSubcommand addServe;
AddSubcommand addScript;
AddSubcommand addColour;
AddSubcommand addDevice;
inline constexpr AddSubcommand* programSubcommands[] = {
    addServe, addScript, addSmoke, addLint, addPrefs, addPlist, addColour, addDevice,
};

}  // namespace settings

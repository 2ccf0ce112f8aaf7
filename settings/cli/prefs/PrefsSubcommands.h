#pragma once

#include "settings/cli/common/CommandContext.h"

// The subcommand `prefs` and its own subcommands, in the order of the help.
namespace settings {

AddSubcommand addPrefs;
AddSubcommand addPrefsGet;
AddSubcommand addPrefsSet;
AddSubcommand addPrefsRemove;
AddSubcommand addPrefsShow;
AddSubcommand addPrefsDiff;
AddSubcommand addPrefsWatch;
inline constexpr AddSubcommand* prefsSubcommands[] = {
    addPrefsGet, addPrefsSet, addPrefsRemove, addPrefsShow, addPrefsDiff, addPrefsWatch,
};

}  // namespace settings

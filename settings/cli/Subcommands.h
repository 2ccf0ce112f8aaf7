#pragma once

#include "settings/cli/common/CommandContext.h"

// Every subcommand there is. A new one is a file with the function that adds it, and here that
// function and its place in the help.
namespace settings {

// Adds a subcommand to its parent: its options, its help, and what it does, which sets the
// context's status. Parent and context must outlive the parsing of the command line.
using AddSubcommand = void(CLI::App& parent, CommandContext& context);

AddSubcommand addServe;
AddSubcommand addScript;
AddSubcommand addSmoke;
AddSubcommand addLint;
AddSubcommand addPrefs;
AddSubcommand addPlist;
AddSubcommand addColour;
AddSubcommand addDevice;
inline constexpr AddSubcommand* programSubcommands[] = {
    addServe, addScript, addSmoke, addLint, addPrefs, addPlist, addColour, addDevice,
};

AddSubcommand addPrefsGet;
AddSubcommand addPrefsSet;
AddSubcommand addPrefsRemove;
AddSubcommand addPrefsShow;
AddSubcommand addPrefsDiff;
AddSubcommand addPrefsWatch;
inline constexpr AddSubcommand* prefsSubcommands[] = {
    addPrefsGet, addPrefsSet, addPrefsRemove, addPrefsShow, addPrefsDiff, addPrefsWatch,
};

AddSubcommand addPlistConvert;
AddSubcommand addPlistLint;
AddSubcommand addPlistShow;
inline constexpr AddSubcommand* plistSubcommands[] = {addPlistConvert, addPlistLint, addPlistShow};

}  // namespace settings

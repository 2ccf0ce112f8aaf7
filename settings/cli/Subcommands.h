#pragma once

#include "settings/cli/common/CommandContext.h"

namespace settings {

// Each adds one subcommand to its parent: its options, its help, and what it does, which sets the
// context's status. Parent and context must outlive the parsing of the command line.
void addServe(CLI::App& program, CommandContext& context);
void addLint(CLI::App& program, CommandContext& context);
void addSmoke(CLI::App& program, CommandContext& context);
void addScript(CLI::App& program, CommandContext& context);
void addDevice(CLI::App& program, CommandContext& context);

void addPrefs(CLI::App& program, CommandContext& context);
void addPrefsGet(CLI::App& prefs, CommandContext& context);
void addPrefsSet(CLI::App& prefs, CommandContext& context);
void addPrefsRemove(CLI::App& prefs, CommandContext& context);
void addPrefsShow(CLI::App& prefs, CommandContext& context);
void addPrefsDiff(CLI::App& prefs, CommandContext& context);
void addPrefsWatch(CLI::App& prefs, CommandContext& context);

void addPlist(CLI::App& program, CommandContext& context);
void addPlistConvert(CLI::App& plist, CommandContext& context);
void addPlistLint(CLI::App& plist, CommandContext& context);
void addPlistShow(CLI::App& plist, CommandContext& context);

void addColour(CLI::App& program, CommandContext& context);

}  // namespace settings

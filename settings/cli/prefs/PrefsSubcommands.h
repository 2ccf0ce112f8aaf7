#pragma once

#include "settings/cli/common/CommandContext.h"

namespace settings {

// Each adds one subcommand to its parent: its options, its help, and what it does, which sets the
// context's status. Parent and context must outlive the parsing of the command line.
void addPrefs(CLI::App& program, CommandContext& context);
void addPrefsGet(CLI::App& prefs, CommandContext& context);
void addPrefsSet(CLI::App& prefs, CommandContext& context);
void addPrefsRemove(CLI::App& prefs, CommandContext& context);
void addPrefsShow(CLI::App& prefs, CommandContext& context);
void addPrefsDiff(CLI::App& prefs, CommandContext& context);
void addPrefsWatch(CLI::App& prefs, CommandContext& context);

}  // namespace settings

#include <CLI/CLI.hpp>

#include "settings/cli/plist/PlistSubcommands.h"

namespace settings {

void addPlist(CLI::App& program, CommandContext& context) {
  CLI::App* plist = program.add_subcommand("plist", "Property lists: convert, check, show");
  plist->require_subcommand(1);
  plist->footer(exampleText("plist lint resources/*.plist"));
  for (AddSubcommand* add : plistSubcommands) add(*plist, context);
}

}  // namespace settings

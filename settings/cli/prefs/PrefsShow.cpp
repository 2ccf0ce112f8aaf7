#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

#include "settings/cli/common/PlistInput.h"
#include "settings/cli/prefs/PrefsOptions.h"
#include "settings/cli/prefs/PrefsSubcommands.h"
#include "settings/device/JsonText.h"
#include "settings/device/PropertyListJson.h"

namespace settings {
namespace {

ExitStatus show(const PrefsOptions& options, CommandContext& context) {
  const auto entries = readEntries(options, context);
  if (!entries) return context.status;
  if (context.json) {
    context.output << jsonText(jsonFromValue(*entries), JsonStyle::indented) << '\n';
  } else {
    printOutline(context.output, *entries);
  }
  return ExitStatus::done;
}

}  // namespace

void addPrefsShow(CLI::App& prefs, CommandContext& context) {
  CLI::App* command = prefs.add_subcommand("show", "Print the whole preference file");
  const auto options = std::make_shared<PrefsOptions>();
  addPrefsOptions(*command, *options);
  addCommonOptions(*command, context, "prefs show --json");
  command->callback([options, &context] { context.status = show(*options, context); });
}

}  // namespace settings

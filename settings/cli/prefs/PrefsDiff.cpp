#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>

#include "settings/cli/common/HostFile.h"
#include "settings/cli/common/PlistInput.h"
#include "settings/cli/prefs/PrefsOptions.h"
#include "settings/cli/prefs/PrefsSubcommands.h"
#include "settings/device/JsonText.h"

namespace settings {
namespace {

struct DiffChoice {
  PrefsOptions prefs;
  std::string before;
  std::string after;  // empty for the device's preference file
};

std::optional<platform::Dictionary> entriesOf(const std::string& file, CommandContext& context) {
  const auto value = readPlistFile(file, context);
  if (!value) return std::nullopt;
  if (const platform::Dictionary* entries = value->asDictionary()) return *entries;
  context.status = context.fail(shownName(file) + ": the root is not a dictionary");
  return std::nullopt;
}

ExitStatus diff(const DiffChoice& choice, CommandContext& context) {
  const auto before = entriesOf(choice.before, context);
  if (!before) return context.status;
  const auto after =
      choice.after.empty() ? readEntries(choice.prefs, context) : entriesOf(choice.after, context);
  if (!after) return context.status;
  nlohmann::ordered_json report = nlohmann::ordered_json::array();
  const auto changes = changesBetween(*before, *after);
  for (const PreferenceChange& change : changes) {
    if (context.json) {
      report.push_back(jsonOfChange(change));
    } else {
      printChange(context.output, change);
    }
  }
  if (context.json) context.output << jsonText(report, JsonStyle::indented) << '\n';
  return changes.empty() ? ExitStatus::done : ExitStatus::finding;
}

}  // namespace

void addPrefsDiff(CLI::App& prefs, CommandContext& context) {
  CLI::App* command =
      prefs.add_subcommand("diff", "Compare two preference files; exit status 1 if they differ");
  const auto choice = std::make_shared<DiffChoice>();
  command->add_option("A", choice->before, "A file of this machine; - is standard input")
      ->required();
  command->add_option("B", choice->after, "Another one; default: the device's preference file");
  addPrefsOptions(*command, choice->prefs);
  addCommonOptions(*command, context, "prefs diff before.plist");
  command->callback([choice, &context] { context.status = diff(*choice, context); });
}

}  // namespace settings

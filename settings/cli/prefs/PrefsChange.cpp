#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "settings/cli/common/PlistInput.h"
#include "settings/cli/prefs/BundleStore.h"
#include "settings/cli/prefs/PrefsOptions.h"
#include "settings/cli/prefs/PrefsSubcommands.h"
#include "settings/cli/prefs/ValueText.h"
#include "settings/device/JsonText.h"

namespace settings {
namespace {

struct ChangeChoice {
  PrefsOptions prefs;
  std::string key;
  std::string text;
  std::string type;
};

void printChanged(const PreferenceChange& change, CommandContext& context) {
  if (context.json) {
    context.output << jsonText(jsonOfChange(change)) << '\n';
  } else {
    printChange(context.output, change);
  }
}

// Changes one key through the bundle's store, and then checks the file, since the store does not
// report a failed write.
ExitStatus change(const ChangeChoice& choice, const platform::Value& value,
                  CommandContext& context) {
  const auto tree = openDevice(choice.prefs.device, context);
  if (!tree) return context.status;
  platform::DeviceFileSystem files(tree->root().string());
  const std::string path = preferenceFilePath(choice.prefs.domain);
  const PreferenceFile before = readPreferenceFile(files, path);
  if (before.state == PreferenceFileState::damaged) {
    return context.fail(before.problem +
                        "\nThe store would start empty and replace the file; nothing was "
                        "changed. Repair or remove the file first.");
  }
  std::string problem;
  const auto store = BundleStore::open(*tree, choice.prefs.domain, problem);
  if (!store) return context.fail(problem);
  if (value) {
    store->setObject(value, choice.key);
  } else {
    store->removeObject(choice.key);
  }
  const PreferenceFile after = readPreferenceFile(files, path);
  const PreferenceChange made{choice.key, before.entries.valueForKey(choice.key),
                              after.entries.valueForKey(choice.key)};
  if (after.state != PreferenceFileState::read || !isWrittenAlike(made.after, value)) {
    return context.fail("the store could not write " + path +
                        "; check that its folder exists and is writable");
  }
  printChanged(made, context);
  return ExitStatus::done;
}

ExitStatus set(const ChangeChoice& choice, CommandContext& context) {
  const ParsedValue parsed = parseValueText(choice.text, choice.type);
  if (!parsed.problem.empty()) {
    context.fail(parsed.problem);
    return ExitStatus::usage;
  }
  return change(choice, parsed.value, context);
}

}  // namespace

void addPrefsSet(CLI::App& prefs, CommandContext& context) {
  CLI::App* command = prefs.add_subcommand("set", "Set one value through the bundle's store");
  const auto choice = std::make_shared<ChangeChoice>();
  command->add_option("KEY", choice->key, "The key")->required();
  command
      ->add_option("VALUE", choice->text,
                   "The value; without --type: JSON, or a string if it is not JSON")
      ->required();
  command->add_option("--type", choice->type, "The value's type")
      ->check(CLI::IsMember(valueTypeNames()))
      ->type_name("T");
  addPrefsOptions(*command, choice->prefs);
  addCommonOptions(*command, context, "prefs set presentationStyle 1 --type integer");
  command->callback([choice, &context] { context.status = set(*choice, context); });
}

void addPrefsRemove(CLI::App& prefs, CommandContext& context) {
  CLI::App* command = prefs.add_subcommand("remove", "Remove one key through the bundle's store");
  const auto choice = std::make_shared<ChangeChoice>();
  command->add_option("KEY", choice->key, "The key")->required();
  addPrefsOptions(*command, choice->prefs);
  addCommonOptions(*command, context, "prefs remove presentationStyle");
  command->callback(
      [choice, &context] { context.status = change(*choice, platform::Value(), context); });
}

}  // namespace settings

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <string>

#include "settings/cli/common/PlistInput.h"
#include "settings/cli/prefs/PrefsOptions.h"
#include "settings/cli/prefs/PrefsSubcommands.h"
#include "settings/device/JsonText.h"
#include "settings/device/PropertyListJson.h"

namespace settings {
namespace {

struct GetChoice {
  PrefsOptions prefs;
  std::string key;
};

ExitStatus get(const GetChoice& choice, CommandContext& context) {
  const auto entries = readEntries(choice.prefs, context);
  if (!entries) return context.status;
  const platform::Value* value = entries->find(choice.key);
  if (value == nullptr) return context.fail("there is no key \"" + choice.key + "\"");
  const bool isContainer = value->asArray() != nullptr || value->asDictionary() != nullptr;
  if (context.json || isContainer) {
    context.output << jsonText(jsonFromValue(*value), JsonStyle::indented) << '\n';
  } else if (const auto text = value->asString()) {
    context.output << *text << '\n';
  } else {
    context.output << outlineText(*value) << '\n';
  }
  return ExitStatus::done;
}

}  // namespace

void addPrefsGet(CLI::App& prefs, CommandContext& context) {
  CLI::App* command =
      prefs.add_subcommand("get", "Print one value; exit status 1 if the key is absent");
  const auto choice = std::make_shared<GetChoice>();
  command->add_option("KEY", choice->key, "The key")->required();
  addPrefsOptions(*command, choice->prefs);
  addCommonOptions(*command, context, "prefs get presentationStyle --json");
  command->callback([choice, &context] { context.status = get(*choice, context); });
}

}  // namespace settings

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "settings/cli/common/PlistInput.h"
#include "settings/cli/plist/PlistSubcommands.h"
#include "settings/device/JsonText.h"
#include "settings/device/PropertyListJson.h"

namespace settings {
namespace {

ExitStatus show(const std::string& file, CommandContext& context) {
  const auto value = readPlistFile(file, context);
  if (!value) return context.status;
  if (context.json) {
    context.output << jsonText(jsonFromValue(*value), JsonStyle::indented) << '\n';
  } else {
    printOutline(context.output, *value);
  }
  return ExitStatus::done;
}

}  // namespace

void addPlistShow(CLI::App& plist, CommandContext& context) {
  CLI::App* command = plist.add_subcommand("show", "Print a property list as an outline");
  const auto file = std::make_shared<std::string>();
  command->add_option("FILE", *file, "XML, binary or JSON; - is standard input")->required();
  addCommonOptions(*command, context, "plist show settings.plist");
  command->callback([file, &context] { context.status = show(*file, context); });
}

}  // namespace settings

#include "settings/cli/common/CommandContext.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

#include "settings/device/Product.h"

namespace settings {

ExitStatus CommandContext::fail(std::string_view text) {
  messages << programName << ": " << text << '\n';
  return ExitStatus::finding;
}

void addCommonOptions(CLI::App& command, CommandContext& context, std::string_view example) {
  command.add_flag("--json", context.json, "Print the results as JSON");
  command.footer(exampleText(example));
}

std::string exampleText(std::string_view arguments, std::string_view before) {
  return "Example:\n  " + std::string(before) + std::string(programName) + " " +
         std::string(arguments);
}

}  // namespace settings

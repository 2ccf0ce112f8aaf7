#include "settings/cli/common/CommandContext.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

namespace settings {

ExitStatus CommandContext::fail(std::string_view text) {
  messages << "zentrova-settings: " << text << '\n';
  return ExitStatus::finding;
}

void addCommonOptions(CLI::App& command, CommandContext& context, std::string_view example) {
  command.add_flag("--json", context.json, "Print the results as JSON");
  command.footer("Example:\n  " + std::string(example));
}

}  // namespace settings

#pragma once

#include <iosfwd>
#include <string_view>

namespace CLI {  // NOLINT(readability-identifier-naming): the library's name
class App;
}

namespace settings {

enum class ExitStatus : int {
  done = 0,
  finding = 1,  // an expectation failed, something was found, or the work could not be done
  usage = 2,    // the command line cannot be understood
};

// What every subcommand works with: where its results and messages go, and what it came to.
// Threads: belongs to one.
struct CommandContext {
  std::istream& input;
  std::ostream& output;    // results
  std::ostream& messages;  // everything for people beside the results
  bool json = false;       // results as JSON
  ExitStatus status = ExitStatus::done;

  // Writes "zentrova-settings: text" as a message, and gives ExitStatus::finding.
  ExitStatus fail(std::string_view text);
};

// Gives a subcommand the option --json, and an example under its help.
void addCommonOptions(CLI::App& command, CommandContext& context, std::string_view example);

}  // namespace settings

#pragma once

#include <iosfwd>
#include <string>
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

// The input, output and exit status of a subcommand. Threads: one.
struct CommandContext {
  std::istream& input;
  std::ostream& output;    // results
  std::ostream& messages;  // errors and notes for the user
  bool json = false;       // results as JSON
  ExitStatus status = ExitStatus::done;

  // Writes "PROGRAM: text" as a message and returns ExitStatus::finding.
  ExitStatus fail(std::string_view text);
};

// An example for a help text: the program with these arguments, after `before`.
std::string exampleText(std::string_view arguments, std::string_view before = {});

// Adds the option --json and an example (the program's arguments) to a subcommand.
void addCommonOptions(CLI::App& command, CommandContext& context, std::string_view example);

// Each adds a subcommand with its options and help to its parent. When run, the subcommand sets the
// context's status. Parent and context must outlive the parsing of the command line.
using AddSubcommand = void(CLI::App& parent, CommandContext& context);

}  // namespace settings

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

// What every subcommand works with: where its results and messages go, and what it came to.
// Threads: belongs to one.
struct CommandContext {
  std::istream& input;
  std::ostream& output;    // results
  std::ostream& messages;  // everything for people beside the results
  bool json = false;       // results as JSON
  ExitStatus status = ExitStatus::done;

  // Writes "PROGRAM: text" as a message, and gives ExitStatus::finding.
  ExitStatus fail(std::string_view text);
};

// An example under a help: the program with these arguments, and what stands before it on the line.
std::string exampleText(std::string_view arguments, std::string_view before = {});

// Gives a subcommand the option --json, and an example (the program's arguments) under its help.
void addCommonOptions(CLI::App& command, CommandContext& context, std::string_view example);

// Adds a subcommand to its parent: its options, its help, and what it does, which sets the
// context's status. Parent and context must outlive the parsing of the command line.
using AddSubcommand = void(CLI::App& parent, CommandContext& context);

}  // namespace settings

#include "settings/cli/Program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <ostream>
#include <vector>

#include "platform/foundation/values/Exception.h"
#include "settings/cli/Subcommands.h"
#include "settings/device/Product.h"

namespace settings {
namespace {

void describe(CLI::App& program, CommandContext& context) {
  program.require_subcommand(1);
  program.get_formatter()->column_width(36);
  program.footer(
      "Every subcommand has --help with an example. Exit status: 0 done, 1 a failed expectation\n"
      "or a finding, 2 a usage error.\n\n" +
      exampleText("device create ./device && " + std::string(programName) + " serve"));
  for (AddSubcommand* add : programSubcommands) add(program, context);
}

ExitStatus parseAndRun(CLI::App& program, std::span<const std::string> arguments,
                       CommandContext& context) {
  // The parser reads them from the end.
  std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
  try {
    program.parse(std::move(reversed));
  } catch (const CLI::ParseError& error) {
    const int status = program.exit(error, context.output, context.messages);
    return status == 0 ? ExitStatus::done : ExitStatus::usage;
  } catch (const platform::Exception& raised) {
    return context.fail("an exception of the platform ended the command: " +
                        std::string(raised.what()));
  } catch (const std::exception& raised) {
    return context.fail(std::string("the command failed: ") + raised.what());
  }
  return context.status;
}

}  // namespace

ExitStatus runProgram(std::span<const std::string> arguments, CommandContext& context) {
  CLI::App program("The Settings application: shows the pages of a settings bundle.",
                   std::string(programName));
  describe(program, context);
  const ExitStatus status = parseAndRun(program, arguments, context);
  errno = 0;
  context.output.flush();
  if (context.output) return status;
  const std::string reason = errno == 0 ? std::string() : std::string(": ") + std::strerror(errno);
  return context.fail("cannot write the results to standard output" + reason);
}

}  // namespace settings

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "settings/cli/Program.h"

int main(int count, char** values) {
  // A reader that goes away is an error of the write. A handler, unlike ignoring the signal, is
  // not inherited by the programs that are started.
  std::signal(SIGPIPE, [](int) {});
  std::ios::sync_with_stdio(false);
  const std::vector<std::string> arguments(values + 1, values + count);
  settings::CommandContext context{std::cin, std::cout, std::cerr};
  return static_cast<int>(settings::runProgram(arguments, context));
}

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "settings/cli/Program.h"

int main(int count, char** values) {
  // A reader that closes the pipe must become a write error. Unlike SIG_IGN, a handler is not
  // inherited by started programs.
  std::signal(SIGPIPE, [](int) {});
  std::ios::sync_with_stdio(false);
  const std::vector<std::string> arguments(values + 1, values + count);
  settings::CommandContext context{std::cin, std::cout, std::cerr};
  return static_cast<int>(settings::runProgram(arguments, context));
}

#include "platform/foundation/files/WriterIdentity.h"

#include <cerrno>
#include <charconv>
#include <fstream>
#include <iterator>
#include <signal.h>
#include <sstream>
#include <unistd.h>

namespace platform {

namespace {

struct ProcessState {
  // In clock ticks since the machine started; "0" if unknown.
  std::string startTime = "0";
  bool hasEnded = false;  // a zombie
};

ProcessState stateOf(int process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  // The second field is the program's name in parentheses and may contain any character.
  const std::size_t nameEnd = text.rfind(')');
  ProcessState state;
  if (nameEnd == std::string::npos) return state;
  std::istringstream fields(text.substr(nameEnd + 1));
  std::string field;
  fields >> field;
  state.hasEnded = field == "Z" || field == "X";
  constexpr int startTimeAfterName = 20;
  for (int index = 1; index < startTimeAfterName; ++index) fields >> field;
  if (fields) state.startTime = field;
  return state;
}

}  // namespace

std::string currentWriter() {
  const int process = ::getpid();
  return std::to_string(process) + "-" + stateOf(process).startTime;
}

bool writerLives(std::string_view writer) {
  const std::size_t dash = writer.find('-');
  if (dash == std::string_view::npos) return false;
  int process = 0;
  const char* end = writer.data() + dash;
  const auto [stop, error] = std::from_chars(writer.data(), end, process);
  if (error != std::errc() || stop != end || process <= 0) return false;
  if (::kill(process, 0) != 0 && errno == ESRCH) return false;
  const ProcessState state = stateOf(process);
  return !state.hasEnded && state.startTime == writer.substr(dash + 1);
}

}  // namespace platform

#pragma once

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "tests/settings/web/TemporaryPage.h"

// Runs the built program as users run it.
namespace settings::test {

// The program that was built with the test.
inline std::string builtProgram() {
  return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "zentrova-settings")
      .string();
}

// A child process with its standard streams connected to files or pipes. The destructor ends it.
class Child {
 public:
  struct Streams {
    int input = -1;  // -1: /dev/null
    int output = -1;
    int messages = -1;
  };

  // `environment` is added to the test's environment. `program` is a path, or a name to look up.
  Child(std::vector<std::string> arguments, const Streams& streams,
        const std::vector<std::string>& environment = {},
        const std::string& program = builtProgram()) {
    arguments.insert(arguments.begin(), program);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    const std::array<int, 3> descriptors = {streams.input, streams.output, streams.messages};
    for (int stream = 0; stream < 3; ++stream) {
      const int descriptor = descriptors.at(static_cast<std::size_t>(stream));
      if (descriptor >= 0) {
        ::posix_spawn_file_actions_adddup2(&actions, descriptor, stream);
      } else {
        ::posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
      }
    }
    std::vector<std::string> variables = environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
      if (!std::string_view(*variable).starts_with("ZENTROVA_DEVICE=")) {
        variables.emplace_back(*variable);
      }
    }
    if (::posix_spawnp(&_id, arguments[0].c_str(), &actions, nullptr, pointers(arguments).data(),
                       pointers(variables).data()) != 0) {
      _id = -1;
    }
    ::posix_spawn_file_actions_destroy(&actions);
  }
  ~Child() {
    if (_id > 0) {
      ::kill(_id, SIGKILL);
      wait();
    }
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  void signal(int number) const { ::kill(_id, number); }
  // The exit status; 128 plus the signal number if a signal ended it; -1 if it never ran.
  int wait() {
    if (_id <= 0) return -1;
    int status = 0;
    while (::waitpid(_id, &status, 0) < 0 && errno == EINTR) {
    }
    _id = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

 private:
  static std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> made;
    for (std::string& text : texts) made.push_back(text.data());
    made.push_back(nullptr);
    return made;
  }

  pid_t _id = -1;
};

struct ProgramResult {
  int status = -1;
  std::string output;
  std::string messages;
};

struct ProgramRun {
  std::string program = builtProgram();
  std::string input;
  std::vector<std::string> environment;
  std::string outputFile;  // where standard output goes; captured if empty
};

// Runs the program until it ends.
inline ProgramResult runProgramWith(std::vector<std::string> arguments,
                                    const ProgramRun& run = {}) {
  const TemporaryFolder folder;
  folder.write("input", run.input);
  const std::string outputFile = run.outputFile.empty() ? folder.in("output") : run.outputFile;
  constexpr int readOnly = O_RDONLY | O_CLOEXEC;
  constexpr int writeOnly = O_WRONLY | O_CREAT | O_CLOEXEC;
  const Child::Streams streams{::open(folder.in("input").c_str(), readOnly),
                               ::open(outputFile.c_str(), writeOnly, 0600),
                               ::open(folder.in("messages").c_str(), writeOnly, 0600)};
  ProgramResult result;
  result.status = Child(std::move(arguments), streams, run.environment, run.program).wait();
  for (const int descriptor : {streams.input, streams.output, streams.messages}) {
    ::close(descriptor);
  }
  result.output = folder.read("output");
  result.messages = folder.read("messages");
  return result;
}

inline ProgramResult runProgramWith(std::vector<std::string> arguments, std::string input) {
  ProgramRun run;
  run.input = std::move(input);
  return runProgramWith(std::move(arguments), run);
}

// A program that runs until it is told to stop. Its output can be read line by line.
class LiveProgram {
 public:
  // The stream that `readLine` reads.
  enum class Read { output, messages, both };
  explicit LiveProgram(std::vector<std::string> arguments, Read read = Read::output)
      : _pipe(makePipe()), _child(std::move(arguments), streams(read)) {
    ::close(_pipe[1]);
  }
  ~LiveProgram() { ::close(_pipe[0]); }

  // The next line without its end; empty if there is none.
  std::string readLine() {
    while (_received.find('\n') == std::string::npos) {
      pollfd waited{_pipe[0], POLLIN, 0};
      constexpr int patienceMilliseconds = 30000;
      std::array<char, 4096> buffer{};
      if (::poll(&waited, 1, patienceMilliseconds) <= 0) return {};
      const ssize_t size = ::read(_pipe[0], buffer.data(), buffer.size());
      if (size <= 0) return {};
      _received.append(buffer.data(), static_cast<std::size_t>(size));
    }
    const std::size_t end = _received.find('\n');
    std::string line = _received.substr(0, end);
    _received.erase(0, end + 1);
    return line;
  }
  // Sends the signal and returns the exit status.
  int stop(int signal) {
    _child.signal(signal);
    return _child.wait();
  }

 private:
  static std::array<int, 2> makePipe() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) ends = {-1, -1};
    return ends;
  }
  Child::Streams streams(Read read) const {
    return {-1, read == Read::messages ? -1 : _pipe[1], read == Read::output ? -1 : _pipe[1]};
  }

  std::array<int, 2> _pipe;
  Child _child;
  std::string _received;
};

}  // namespace settings::test

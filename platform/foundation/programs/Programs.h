#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// A program to start. The path is the device's, resolved inside the device tree.
struct ProgramRequest {
  std::string path;
  std::vector<std::string> arguments;                   // argv, the name itself first
  std::optional<std::vector<std::string>> environment;  // none: an empty (null) environment
  bool pipeStandardOutput = false;
  // The descriptor that the child gets as its standard output, -1: inherited. The caller keeps it
  // and closes its own copy. Not together with pipeStandardOutput.
  int standardOutput = -1;
};

// A program that was started, for the `spawned` record. Filled while the program runs.
struct ProgramRecord {
  std::uint64_t id = 0;
  ProgramRequest request;
  int startError = 0;             // errno of a start that failed
  std::optional<int> exitStatus;  // of a program that has ended; 128 + N for signal N
};

// A running child. Its owner may drop it: the child goes on and is reaped.
class RunningProgram {
 public:
  virtual ~RunningProgram() = default;
  virtual int processIdentifier() const = 0;
  // Reads what there is, up to one pipe buffer; empty at the end of the output. Blocks until there
  // is something; only with pipeStandardOutput.
  virtual std::string readAvailable() = 0;
  // File descriptor of the reading end, -1 without pipe; owned by this object.
  virtual int outputDescriptor() const = 0;
  // Does not block. When it becomes known, the scheduler of the process that started the program
  // looks at what it waits for.
  virtual std::optional<int> exitStatus() = 0;
  virtual void terminate() = 0;
};

// Starts programs: the one place where posix_spawn is called. A service of the process.
// Threads: any.
class Programs {
 public:
  virtual ~Programs() = default;
  // An empty pointer where the program could not be started; the record says why.
  virtual std::shared_ptr<RunningProgram> start(const ProgramRequest& request) = 0;
  // Programs started since the process began, with what is known of them now.
  virtual std::vector<ProgramRecord> records() = 0;
};

// libSystem's posix_spawn as the bundle uses it: no file actions, no attributes. `environment`
// none stands for a null environment. Gives 0 or an errno value; `pid` takes the child's id.
int posix_spawn(int* pid, std::string_view path, const std::vector<std::string>& arguments,
                const std::optional<std::vector<std::string>>& environment);

}  // namespace platform

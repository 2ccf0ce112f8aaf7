#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// A program to start. The path is a device path, resolved inside the device tree.
struct ProgramRequest {
  std::string path;
  std::vector<std::string> arguments;                   // argv, starts with the program's name
  std::optional<std::vector<std::string>> environment;  // none for an empty (null) environment
  bool pipeStandardOutput = false;
  // The descriptor used as the child's standard output; -1 to inherit it. The caller keeps and
  // closes its own copy. Not allowed together with pipeStandardOutput.
  int standardOutput = -1;
};

// A program that was started, for the `spawned` record. Updated while the program runs.
struct ProgramRecord {
  std::uint64_t id = 0;
  ProgramRequest request;
  int startError = 0;             // errno if the start failed
  std::optional<int> exitStatus;  // set when the program ends; 128 + N for signal N
};

// A running child. If its owner releases it, the child keeps running and is reaped.
class RunningProgram {
 public:
  virtual ~RunningProgram() = default;
  virtual int processIdentifier() const = 0;
  // Reads available output, up to one pipe buffer; blocks until there is some. Returns empty text
  // at the end of the output. Requires pipeStandardOutput.
  virtual std::string readAvailable() = 0;
  // Returns the descriptor of the reading end, owned by this object; -1 without a pipe.
  virtual int outputDescriptor() const = 0;
  // Does not block. When the status becomes known, the scheduler of the process that started the
  // program is woken.
  virtual std::optional<int> exitStatus() = 0;
  virtual void terminate() = 0;
};

// Starts programs; the only code that calls posix_spawn. A service of the process. Threads: any.
class Programs {
 public:
  virtual ~Programs() = default;
  // Returns an empty pointer if the program cannot be started; its record has the reason.
  virtual std::shared_ptr<RunningProgram> start(const ProgramRequest& request) = 0;
  // Returns all programs started by this process, with their current state.
  virtual std::vector<ProgramRecord> records() = 0;
};

// The subset of posix_spawn that the bundle uses: no file actions, no attributes. If `environment`
// is none, passes a null environment. Returns 0 and sets `pid`, or returns an errno value.
int posix_spawn(int* pid, std::string_view path, const std::vector<std::string>& arguments,
                const std::optional<std::vector<std::string>>& environment);

}  // namespace platform

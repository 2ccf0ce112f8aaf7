#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/programs/NSPipe.h"
#include "platform/foundation/programs/Programs.h"

namespace platform {

// Runs a program once, through the process's Programs. Threads: main.
//
// The child inherits standard input and error. Its environment is that of an application on a
// device (PATH and HOME), not that of the settings process.
class NSTask : public Object {
  PLATFORM_CLASS(NSTask)

 public:
  void setLaunchPath(std::optional<std::string> path) { _launchPath = std::move(path); }
  // Excludes the name of the program itself, which is the launch path.
  void setArguments(std::vector<std::string> arguments) { _arguments = std::move(arguments); }
  void setStandardOutput(std::shared_ptr<NSPipe> pipe) { _standardOutput = std::move(pipe); }

  // Starts the program and closes this process's copy of the writing end of the pipe. Raises
  // NSInvalidArgumentException if there is no launch path or the task was launched before. A
  // program that cannot be started (missing or not executable) counts as ended with termination
  // status 127 and no output.
  void launch();
  bool isRunning() const;
  // Runs the main queue until the program ends. Observers of available data have been notified of
  // all its output when this returns. Returns at once if nothing was launched.
  void waitUntilExit();
  // Returns the exit status, or 128 + N for signal N. Raises NSInvalidArgumentException before the
  // launch and while the program runs.
  int terminationStatus() const;
  // Returns 0 before the launch.
  int processIdentifier() const;
  void terminate();

 private:
  std::optional<std::string> _launchPath;
  std::vector<std::string> _arguments;
  std::shared_ptr<NSPipe> _standardOutput;
  bool _launched = false;
  std::shared_ptr<RunningProgram> _program;
};

}  // namespace platform

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/programs/NSPipe.h"
#include "platform/foundation/programs/Programs.h"

namespace platform {

// A program that is run once, through the process's Programs. Main thread only.
//
// The child inherits standard input and error, and finds the environment that an application has
// on a device (PATH and HOME), not that of whoever runs the settings.
class NSTask : public Object {
  PLATFORM_CLASS(NSTask)

 public:
  void setLaunchPath(std::optional<std::string> path) { _launchPath = std::move(path); }
  // Without the name of the program itself, which is the launch path.
  void setArguments(std::vector<std::string> arguments) { _arguments = std::move(arguments); }
  void setStandardOutput(std::shared_ptr<NSPipe> pipe) { _standardOutput = std::move(pipe); }

  // Starts the program; this process's copy of the pipe's writing end is closed. Raises
  // NSInvalidArgumentException where no launch path was set or the task was launched before. A
  // program that cannot be started (there is none, it is no program) has ended at once without
  // output, with the termination status 127.
  void launch();
  bool isRunning() const;
  // Runs the main queue until the program has ended. What it had printed by then has been told to
  // those who wait for data when this returns. Returns at once where nothing was launched.
  void waitUntilExit();
  // The exit status, 128 + N for signal N. Raises NSInvalidArgumentException while the program
  // runs or before it was launched.
  int terminationStatus() const;
  // 0 before it was launched.
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

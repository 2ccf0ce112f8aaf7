#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "platform/foundation/programs/Programs.h"

namespace platform {

// A started child that leads a process group, and the thread that waits for it. Threads: any, but
// readAvailable one at a time.
class ChildProcess final : public RunningProgram {
 public:
  // Takes ownership of the reading end of the child's output, -1 for none.
  ChildProcess(int processIdentifier, int outputDescriptor)
      : _processIdentifier(processIdentifier), _outputDescriptor(outputDescriptor) {}
  ~ChildProcess() override;

  int processIdentifier() const override { return _processIdentifier; }
  std::string readAvailable() override;
  int outputDescriptor() const override { return _outputDescriptor; }
  std::optional<int> exitStatus() override;
  void terminate() override;

  // Sends a signal to the child and its process group. Does nothing if the child has ended, because
  // its id and group may have been reused.
  void sendSignal(int number);
  // Waits until the child ends and stores its exit status.
  void waitForEnd();

 private:
  const int _processIdentifier;
  const int _outputDescriptor;
  std::mutex _mutex;
  std::optional<int> _exitStatus;
};

}  // namespace platform

#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "platform/foundation/programs/Programs.h"

namespace platform {

// A child that was started and leads a process group, and the thread that waits for it.
// Threads: any, but readAvailable from one at a time.
class ChildProcess final : public RunningProgram {
 public:
  // Takes over the reading end of the child's output; -1 for none.
  ChildProcess(int processIdentifier, int outputDescriptor)
      : _processIdentifier(processIdentifier), _outputDescriptor(outputDescriptor) {}
  ~ChildProcess() override;

  int processIdentifier() const override { return _processIdentifier; }
  std::string readAvailable() override;
  int outputDescriptor() const override { return _outputDescriptor; }
  std::optional<int> exitStatus() override;
  void terminate() override;

  // To the child and what it has started in its group. Nothing where the child has ended: its id,
  // and that of the group, may belong to somebody else by then.
  void sendSignal(int number);
  // Waits until the child ends, and takes its exit status.
  void waitForEnd();

 private:
  const int _processIdentifier;
  const int _outputDescriptor;
  std::mutex _mutex;
  std::optional<int> _exitStatus;
};

}  // namespace platform

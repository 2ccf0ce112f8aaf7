#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/programs/Programs.h"

namespace platform {

class ChildProcess;

// What happens to programs that still run when whoever started them goes away.
enum class AtEnd { letRun, kill };

// Starts the programs of a device tree with posix_spawn. Children get the standard descriptors and
// no others, lead a group each, and are waited for, each by its own id on a thread of its own. The
// end of a child wakes the main thread of the process that started it.
class DevicePrograms final : public Programs {
 public:
  // A program lives on by default, as on a device; tests and scripts kill what still runs.
  explicit DevicePrograms(std::shared_ptr<FileSystem> files, AtEnd atEnd = AtEnd::letRun);
  ~DevicePrograms() override;

  std::shared_ptr<RunningProgram> start(const ProgramRequest& request) override;
  std::vector<ProgramRecord> records() override;
  // Sends a signal to the program of that record and what it has started; nothing where it does
  // not run.
  void sendSignal(std::uint64_t id, int number);

 private:
  struct Entry {
    ProgramRecord record;
    std::shared_ptr<ChildProcess> child;
    std::thread waiter;
  };

  const std::shared_ptr<FileSystem> _files;
  const AtEnd _atEnd;
  std::mutex _mutex;
  std::vector<Entry> _entries;
};

}  // namespace platform

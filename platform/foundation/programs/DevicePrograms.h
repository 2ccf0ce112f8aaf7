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

// What to do on destruction with programs that still run.
enum class AtEnd { letRun, kill };

// Starts programs of a device tree with posix_spawn. Each child inherits only the standard
// descriptors, leads its own process group, and is waited for by a separate thread. When a child
// ends, the main thread of the process that started it is woken.
class DevicePrograms final : public Programs {
 public:
  // By default, programs keep running, as on a device. Tests and scripts kill them.
  explicit DevicePrograms(std::shared_ptr<FileSystem> files, AtEnd atEnd = AtEnd::letRun);
  ~DevicePrograms() override;

  std::shared_ptr<RunningProgram> start(const ProgramRequest& request) override;
  std::vector<ProgramRecord> records() override;
  // Sends a signal to the program with that record and to its process group. Does nothing if it has
  // ended.
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

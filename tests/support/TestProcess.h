#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/FoundationClasses.h"
#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/files/ObservedFileSystem.h"
#include "platform/foundation/log/MemoryLog.h"
#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/programs/DevicePrograms.h"
#include "platform/foundation/scheduling/VirtualScheduler.h"
#include "tests/support/FaultySystemCalls.h"
#include "tests/support/RecordingPrograms.h"
#include "tests/support/TemporaryDeviceTree.h"

namespace test_support {

// A process for one test, the current process as long as this object exists. It has a temporary
// device tree, a clock that stands still, files that can be made to fail, a log in memory, device
// traits, and a stand-in that records started programs (or, on request, starts the programs of the
// tree). The foundation's classes are registered.
class TestProcess {
 public:
  enum class RunPrograms { recorded, real };
  explicit TestProcess(RunPrograms programs = RunPrograms::recorded);
  ~TestProcess();
  TestProcess(const TestProcess&) = delete;
  TestProcess& operator=(const TestProcess&) = delete;

  platform::Process& process() { return _process; }
  platform::ClassRegistry& classes() { return _process.classes(); }
  TemporaryDeviceTree& tree() { return _tree; }
  platform::VirtualScheduler& scheduler() { return *_scheduler; }
  // The FileSystem service: observed, over the temporary tree.
  platform::ObservedFileSystem& files() { return *_files; }
  platform::DeviceFileSystem& deviceFiles() { return *_deviceFiles; }
  FaultySystemCalls& systemCalls() { return *_systemCalls; }
  platform::MemoryLog& log() { return *_log; }
  platform::DeviceTraits& traits() { return *_traits; }
  platform::Programs& programs() { return _process.service<platform::Programs>(); }
  // The stand-in. The test must not have requested real programs.
  RecordingPrograms& recordedPrograms();

  // The main settings file.
  static constexpr std::string_view preferencePath =
      "/var/jb/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist";

 private:
  TemporaryDeviceTree _tree;
  platform::Process _process;
  platform::ProcessScope _scope;
  std::shared_ptr<platform::VirtualScheduler> _scheduler;
  std::shared_ptr<FaultySystemCalls> _systemCalls;
  std::shared_ptr<platform::DeviceFileSystem> _deviceFiles;
  std::shared_ptr<platform::ObservedFileSystem> _files;
  std::shared_ptr<platform::MemoryLog> _log;
  std::shared_ptr<platform::DeviceTraits> _traits;
  std::shared_ptr<RecordingPrograms> _recorded;
};

}  // namespace test_support

#include "tests/support/TestProcess.h"

#include <stdexcept>

namespace test_support {

using platform::AtEnd;
using platform::DevicePrograms;

TestProcess::TestProcess(RunPrograms programs)
    : _scope(_process),
      _scheduler(std::make_shared<platform::VirtualScheduler>(&_process)),
      _systemCalls(std::make_shared<FaultySystemCalls>()),
      _deviceFiles(std::make_shared<platform::DeviceFileSystem>(_tree.root(), _systemCalls)),
      _files(std::make_shared<platform::ObservedFileSystem>(_deviceFiles)),
      _log(std::make_shared<platform::MemoryLog>()),
      _traits(std::make_shared<platform::DeviceTraits>()) {
  platform::registerFoundationClasses(_process.classes());
  _process.provide<platform::Scheduler>(_scheduler);
  _process.provide<platform::FileSystem>(_files);
  _process.provide<platform::Log>(_log);
  _process.provide<platform::DeviceTraits>(_traits);
  if (programs == RunPrograms::real) {
    _process.provide<platform::Programs>(std::make_shared<DevicePrograms>(_files, AtEnd::kill));
  } else {
    _recorded = std::make_shared<RecordingPrograms>();
    _process.provide<platform::Programs>(_recorded);
  }
}

TestProcess::~TestProcess() = default;

RecordingPrograms& TestProcess::recordedPrograms() {
  if (!_recorded) throw std::logic_error("this test process runs real programs");
  return *_recorded;
}

}  // namespace test_support

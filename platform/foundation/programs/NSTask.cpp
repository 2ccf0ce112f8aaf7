#include "platform/foundation/programs/NSTask.h"

#include <limits>

#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/foundation/values/Exception.h"

namespace platform {

namespace {

constexpr int statusOfMissingProgram = 127;

std::vector<std::string> environmentOfApplications() {
  return {"PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin", "HOME=/var/mobile"};
}

}  // namespace

void NSTask::launch() {
  if (_launched) raiseInvalidArgument("*** -[NSConcreteTask launch]: task already launched");
  if (!_launchPath) {
    raiseInvalidArgument("*** -[NSConcreteTask launch]: launch path not accessible");
  }
  ProgramRequest request;
  request.path = *_launchPath;
  request.arguments = {*_launchPath};
  request.arguments.insert(request.arguments.end(), _arguments.begin(), _arguments.end());
  request.environment = environmentOfApplications();
  if (_standardOutput) {
    request.standardOutput = _standardOutput->fileHandleForWriting()->fileDescriptor();
  }
  _launched = true;
  _program = Process::current().service<Programs>().start(request);
  // While our copy is open, the reader never sees the end of the output.
  if (_standardOutput) _standardOutput->fileHandleForWriting()->closeFile();
}

bool NSTask::isRunning() const {
  return _program && !_program->exitStatus();
}

void NSTask::waitUntilExit() {
  if (!_launched) return;
  Process::current().service<Scheduler>().runMainUntil([this] { return !isRunning(); },
                                                       std::numeric_limits<double>::infinity());
}

int NSTask::terminationStatus() const {
  if (!_launched)
    raiseInvalidArgument("*** -[NSConcreteTask terminationStatus]: task not launched");
  if (!_program) return statusOfMissingProgram;
  const std::optional<int> status = _program->exitStatus();
  if (!status) raiseInvalidArgument("*** -[NSConcreteTask terminationStatus]: task still running");
  return *status;
}

int NSTask::processIdentifier() const {
  return _program ? _program->processIdentifier() : 0;
}

void NSTask::terminate() {
  if (_program) _program->terminate();
}

}  // namespace platform

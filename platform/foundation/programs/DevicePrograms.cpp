#include "platform/foundation/programs/DevicePrograms.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <signal.h>
#include <spawn.h>
#include <unistd.h>
#include <utility>

#include "platform/foundation/objects/Process.h"
#include "platform/foundation/programs/ChildProcess.h"
#include "platform/foundation/scheduling/Scheduler.h"

namespace platform {

namespace {

constexpr int firstOwnDescriptor = 3;

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}
std::vector<char*> pointersTo(std::vector<std::string>&&) = delete;

// The environment of a child: `output` as its standard output (-1 to inherit ours), no other
// descriptors, default signal handling, and its own process group, so that its own children can be
// ended with it.
class Surroundings {
 public:
  explicit Surroundings(int output) {
    ::posix_spawn_file_actions_init(&_actions);
    if (output >= 0) ::posix_spawn_file_actions_adddup2(&_actions, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_addclosefrom_np(&_actions, firstOwnDescriptor);
    ::posix_spawnattr_init(&_attributes);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&_attributes, &signals);
    ::sigaddset(&signals, SIGPIPE);
    ::posix_spawnattr_setsigdefault(&_attributes, &signals);
    ::posix_spawnattr_setflags(
        &_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  }
  ~Surroundings() {
    ::posix_spawn_file_actions_destroy(&_actions);
    ::posix_spawnattr_destroy(&_attributes);
  }
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;

  const posix_spawn_file_actions_t* actions() const { return &_actions; }
  const posix_spawnattr_t* attributes() const { return &_attributes; }

 private:
  posix_spawn_file_actions_t _actions{};
  posix_spawnattr_t _attributes{};
};

int spawn(const std::string& hostPath, const ProgramRequest& request, int output, pid_t& child) {
  const Surroundings surroundings(output);
  const std::vector<char*> arguments = pointersTo(request.arguments);
  const std::vector<char*> environment =
      request.environment ? pointersTo(*request.environment) : std::vector<char*>{nullptr};
  return ::posix_spawn(&child, hostPath.c_str(), surroundings.actions(), surroundings.attributes(),
                       arguments.data(), environment.data());
}

// Returns 0 and sets the child, or returns an errno value.
int startChild(const std::string& hostPath, const ProgramRequest& request,
               std::shared_ptr<ChildProcess>& child) {
  std::array<int, 2> pipe{-1, request.standardOutput};
  if (request.pipeStandardOutput && ::pipe2(pipe.data(), O_CLOEXEC) != 0) return errno;
  pid_t number = -1;
  const int error = spawn(hostPath, request, pipe[1], number);
  if (request.pipeStandardOutput) ::close(pipe[1]);
  if (error == 0) {
    child = std::make_shared<ChildProcess>(number, pipe[0]);
  } else if (pipe[0] >= 0) {
    ::close(pipe[0]);
  }
  return error;
}

// Returns a function that wakes the main thread of the calling thread's process, if there is one.
std::function<void()> wakerOfCaller() {
  const Process* process = Process::currentOrNull();
  const auto scheduler = process != nullptr ? process->serviceOrNull<Scheduler>() : nullptr;
  return scheduler ? scheduler->waker() : [] {};
}

}  // namespace

DevicePrograms::DevicePrograms(std::shared_ptr<FileSystem> files, AtEnd atEnd)
    : _files(std::move(files)), _atEnd(atEnd) {}

DevicePrograms::~DevicePrograms() {
  if (_atEnd == AtEnd::letRun) {
    for (Entry& entry : _entries) {
      if (entry.waiter.joinable()) entry.waiter.detach();
    }
    return;
  }
  for (Entry& entry : _entries) {
    if (entry.child) entry.child->sendSignal(SIGKILL);
  }
  for (Entry& entry : _entries) {
    if (entry.waiter.joinable()) entry.waiter.join();
  }
}

std::shared_ptr<RunningProgram> DevicePrograms::start(const ProgramRequest& request) {
  const std::optional<std::string> hostPath = _files->hostPath(request.path);
  Entry entry;
  entry.record.request = request;
  entry.record.startError = hostPath ? startChild(*hostPath, request, entry.child) : ENOENT;
  const auto child = entry.child;
  if (child) {
    entry.waiter = std::thread([child, wake = wakerOfCaller()] {
      child->waitForEnd();
      wake();
    });
  }
  const std::lock_guard lock(_mutex);
  entry.record.id = _entries.size() + 1;
  _entries.push_back(std::move(entry));
  return child;
}

void DevicePrograms::sendSignal(std::uint64_t id, int number) {
  const std::lock_guard lock(_mutex);
  if (id == 0 || id > _entries.size()) return;
  if (const auto& child = _entries[id - 1].child) child->sendSignal(number);
}

std::vector<ProgramRecord> DevicePrograms::records() {
  const std::lock_guard lock(_mutex);
  std::vector<ProgramRecord> records;
  records.reserve(_entries.size());
  for (Entry& entry : _entries) {
    if (entry.child) entry.record.exitStatus = entry.child->exitStatus();
    records.push_back(entry.record);
  }
  return records;
}

}  // namespace platform

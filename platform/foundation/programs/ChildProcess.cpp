#include "platform/foundation/programs/ChildProcess.h"

#include <array>
#include <cerrno>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::size_t pipeBuffer = std::size_t{64} * 1024;
constexpr int signalBase = 128;
// For a child whose status was already taken, for example if SIGCHLD is ignored.
constexpr int unknownStatus = 255;

int exitStatusOf(int status) {
  return WIFSIGNALED(status) ? signalBase + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

ChildProcess::~ChildProcess() {
  if (_outputDescriptor >= 0) ::close(_outputDescriptor);
}

std::string ChildProcess::readAvailable() {
  if (_outputDescriptor < 0) return {};
  std::string chunk(pipeBuffer, '\0');
  ssize_t count = -1;
  do {
    count = ::read(_outputDescriptor, chunk.data(), chunk.size());
  } while (count < 0 && errno == EINTR);
  chunk.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return chunk;
}

std::optional<int> ChildProcess::exitStatus() {
  const std::lock_guard lock(_mutex);
  return _exitStatus;
}

void ChildProcess::terminate() {
  sendSignal(SIGTERM);
}

void ChildProcess::sendSignal(int number) {
  const std::lock_guard lock(_mutex);
  if (!_exitStatus) ::kill(-_processIdentifier, number);
}

void ChildProcess::waitForEnd() {
  const auto id = static_cast<id_t>(_processIdentifier);
  siginfo_t information{};
  // WNOWAIT keeps the child a zombie, so its id cannot be reused before the lock is held.
  while (::waitid(P_PID, id, &information, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
  }
  const std::lock_guard lock(_mutex);
  int status = 0;
  const pid_t reaped = ::waitpid(_processIdentifier, &status, 0);
  _exitStatus = reaped == _processIdentifier ? exitStatusOf(status) : unknownStatus;
}

}  // namespace platform

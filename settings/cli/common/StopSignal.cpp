#include "settings/cli/common/StopSignal.h"

#include <sys/signalfd.h>
#include <unistd.h>

namespace settings {

StopSignal::StopSignal() {
  sigset_t signals;
  ::sigemptyset(&signals);
  ::sigaddset(&signals, SIGINT);
  ::sigaddset(&signals, SIGTERM);
  ::pthread_sigmask(SIG_BLOCK, &signals, &_former);
  _descriptor = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

StopSignal::~StopSignal() {
  // The command has ended because of the signal, which must not also kill the program.
  signalfd_siginfo taken{};
  while (::read(_descriptor, &taken, sizeof taken) > 0) {
  }
  ::close(_descriptor);
  ::pthread_sigmask(SIG_SETMASK, &_former, nullptr);
}

}  // namespace settings

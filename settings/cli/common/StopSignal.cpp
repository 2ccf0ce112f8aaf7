#include "settings/cli/common/StopSignal.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace settings {
namespace {

// A signal handler is given nothing but the signal: this is the one way to the descriptor.
std::atomic<int> signalledDescriptor{-1};
static_assert(std::atomic<int>::is_always_lock_free);

void wake(int descriptor) noexcept {
  const std::uint64_t one = 1;
  const ssize_t written = ::write(descriptor, &one, sizeof one);
  static_cast<void>(written);  // fails only where it is readable already
}

void onSignal(int) {
  const int saved = errno;
  wake(signalledDescriptor.load());
  errno = saved;
}

}  // namespace

StopSignal::StopSignal() : _descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  signalledDescriptor = _descriptor;
  struct sigaction action {};
  action.sa_handler = onSignal;
  action.sa_flags = SA_RESTART;
  ::sigaction(SIGINT, &action, &_formerInterrupt);
  ::sigaction(SIGTERM, &action, &_formerTerminate);
}

StopSignal::~StopSignal() {
  ::sigaction(SIGINT, &_formerInterrupt, nullptr);
  ::sigaction(SIGTERM, &_formerTerminate, nullptr);
  signalledDescriptor = -1;
  ::close(_descriptor);
}

void StopSignal::raise() noexcept {
  wake(_descriptor);
}

bool waitReadable(int first, int second, bool& firstReady, bool& secondReady) {
  std::array<pollfd, 2> waited = {{{first, POLLIN, 0}, {second, POLLIN, 0}}};
  while (::poll(waited.data(), waited.size(), -1) < 0) {
    if (errno != EINTR) return false;
  }
  firstReady = waited[0].revents != 0;
  secondReady = waited[1].revents != 0;
  return true;
}

}  // namespace settings

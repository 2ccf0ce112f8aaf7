#include "settings/cli/common/FolderWatch.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

namespace settings {

std::unique_ptr<FolderWatch> FolderWatch::open(platform::MainQueue& queue,
                                               const std::string& hostPath, std::string& problem) {
  const int descriptor = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
  constexpr std::uint32_t events = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE |
                                   IN_CREATE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF |
                                   IN_ONLYDIR;
  if (descriptor >= 0 && ::inotify_add_watch(descriptor, hostPath.c_str(), events) >= 0) {
    return std::unique_ptr<FolderWatch>(new FolderWatch(queue, descriptor));
  }
  problem = "cannot watch the folder " + hostPath + ": " + std::strerror(errno);
  if (descriptor >= 0) ::close(descriptor);
  return nullptr;
}

FolderWatch::~FolderWatch() {
  _queue.cancelWait(_wait);
  ::close(_descriptor);
}

void FolderWatch::notify(std::string name, std::function<void()> changed) {
  _name = std::move(name);
  _changed = std::move(changed);
  waitForChanges();
}

void FolderWatch::waitForChanges() {
  _wait = _queue.addWait(_descriptor, [this] {
    const bool concerned = takeChanges();
    if (!_gone) waitForChanges();
    if (concerned) _changed();
  });
}

bool FolderWatch::takeChanges() {
  bool concerned = false;
  std::array<char, 16384> buffer{};
  while (true) {
    const ssize_t size = ::read(_descriptor, buffer.data(), buffer.size());
    if (size < 0 && errno == EINTR) continue;
    if (size <= 0) return concerned;
    concerned = takeBatch({buffer.data(), static_cast<std::size_t>(size)}) || concerned;
  }
}

bool FolderWatch::takeBatch(std::string_view bytes) {
  bool concerned = false;
  while (bytes.size() >= sizeof(inotify_event)) {
    inotify_event event{};
    std::memcpy(&event, bytes.data(), sizeof event);
    bytes.remove_prefix(sizeof event);
    // The name is padded with zeros.
    const std::string_view text(bytes.data(), ::strnlen(bytes.data(), event.len));
    bytes.remove_prefix(event.len);
    _gone = _gone || (event.mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED)) != 0;
    concerned = concerned || text == _name || (event.mask & IN_Q_OVERFLOW) != 0 || _gone;
  }
  return concerned;
}

}  // namespace settings

#include "platform/foundation/files/DevicePaths.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <linux/openat2.h>
#include <utility>

namespace platform {

namespace {

// The kernel's limit for links in one path.
constexpr int maximumLinks = 40;
constexpr int folderFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

std::vector<std::string> stepsOf(std::string_view path) {
  std::vector<std::string> steps;
  while (!path.empty()) {
    const std::size_t slash = path.find('/');
    const std::string_view step = path.substr(0, slash);
    if (!step.empty() && step != ".") steps.emplace_back(step);
    path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
  }
  return steps;
}

std::string_view withoutTrailingSlashes(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
  return path;
}

// Returns 0 for a valid path, otherwise an errno value.
int problemOf(std::string_view path) {
  if (path.empty()) return ENOENT;
  if (path.find('\0') != std::string_view::npos) return EINVAL;
  return path.size() >= PATH_MAX ? ENAMETOOLONG : 0;
}

bool namesNothingInParent(std::string_view name) {
  return name.empty() || name == "." || name == "..";
}

}  // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept
    : _calls(other._calls), _number(std::exchange(other._number, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this == &other) return *this;
  reset();
  _calls = other._calls;
  _number = std::exchange(other._number, -1);
  return *this;
}

void Descriptor::reset() noexcept {
  if (_number < 0) return;
  const int error = errno;
  _calls->close(std::exchange(_number, -1));
  errno = error;
}

// Walks through the tree step by step. Keeps the parent folders open, so that ".." returns to the
// folder that the walk came from and never leaves the root.
class DevicePaths::Walk {
 public:
  Walk(SystemCalls& calls, int root) : _calls(calls), _root(root) {}

  // Goes to the folder that contains the last step. On failure, returns false with errno set, and
  // `remaining` returns the steps that were not taken, starting with the failed one.
  bool go(std::string_view path, bool followLast);

  int folder() const { return _folders.empty() ? _root : _folders.back().number(); }
  std::string last() const { return _last.empty() ? "." : _last; }
  const std::vector<std::string>& names() const { return _names; }
  std::vector<std::string> remaining() const { return {_steps.rbegin(), _steps.rend()}; }
  Descriptor takeFolder();

 private:
  bool takeStep(bool followLast);
  bool enter(const std::string& step);
  bool expand(const std::string& link);
  void leave();
  std::optional<std::string> targetOf(const std::string& step);

  SystemCalls& _calls;
  int _root;
  std::vector<Descriptor> _folders;
  std::vector<std::string> _names;
  std::vector<std::string> _steps;  // not taken yet, the next one at the back
  std::string _last;
  int _links = 0;
};

bool DevicePaths::Walk::go(std::string_view path, bool followLast) {
  const std::vector<std::string> steps = stepsOf(path);
  _steps.assign(steps.rbegin(), steps.rend());
  while (!_steps.empty()) {
    if (!takeStep(followLast)) return false;
  }
  return true;
}

bool DevicePaths::Walk::takeStep(bool followLast) {
  const std::string step = _steps.back();
  if (step == "..") {
    _steps.pop_back();
    leave();
    return true;
  }
  const bool isLast = _steps.size() == 1;
  if (!isLast || followLast) {
    const auto target = targetOf(step);
    if (target) return expand(*target);
    const bool isNoLink = errno == EINVAL;
    // The last step may be missing.
    if (!isNoLink && !(isLast && errno == ENOENT)) return false;
    if (!isLast) return enter(step);
  }
  _steps.pop_back();
  _last = step;
  return true;
}

bool DevicePaths::Walk::enter(const std::string& step) {
  const int entered = _calls.openat(folder(), step.c_str(), folderFlags | O_NOFOLLOW, 0);
  if (entered < 0) return false;
  _steps.pop_back();
  _folders.emplace_back(_calls, entered);
  _names.push_back(step);
  return true;
}

void DevicePaths::Walk::leave() {
  if (_folders.empty()) return;
  _folders.pop_back();
  _names.pop_back();
}

bool DevicePaths::Walk::expand(const std::string& link) {
  if (++_links > maximumLinks) {
    errno = ELOOP;
    return false;
  }
  if (link.empty()) {
    errno = ENOENT;
    return false;
  }
  _steps.pop_back();
  if (link.front() == '/') {
    _folders.clear();
    _names.clear();
  }
  const std::vector<std::string> steps = stepsOf(link);
  _steps.insert(_steps.end(), steps.rbegin(), steps.rend());
  return true;
}

std::optional<std::string> DevicePaths::Walk::targetOf(const std::string& step) {
  char buffer[PATH_MAX];
  const ssize_t size = _calls.readlinkat(folder(), step.c_str(), buffer, sizeof(buffer));
  if (size < 0) return std::nullopt;
  return std::string(buffer, static_cast<std::size_t>(size));
}

Descriptor DevicePaths::Walk::takeFolder() {
  if (!_folders.empty()) return std::move(_folders.back());
  return {_calls, _calls.openat(_root, ".", folderFlags, 0)};
}

DevicePaths::DevicePaths(const std::string& rootHostPath, std::shared_ptr<SystemCalls> calls,
                         PathResolution resolution)
    : _rootHostPath(withoutTrailingSlashes(rootHostPath)),
      _calls(std::move(calls)),
      _root(*_calls, _calls->openat(AT_FDCWD, _rootHostPath.c_str(), folderFlags, 0)),
      _rootError(_root ? 0 : errno),
      _kernelResolves(resolution == PathResolution::automatic) {}

DevicePaths::~DevicePaths() = default;

Descriptor DevicePaths::openByKernel(const std::string& path, int flags) {
  constexpr int attempts = 8;
  int number = -1;
  // The kernel asks for a retry if folders are renamed at the same time.
  for (int attempt = 0; attempt < attempts; ++attempt) {
    number = _calls->openat2(_root.number(), path.c_str(), flags | O_CLOEXEC, RESOLVE_IN_ROOT);
    if (number >= 0 || (errno != EAGAIN && errno != EINTR)) break;
  }
  return {*_calls, number};
}

Descriptor DevicePaths::openStepByStep(std::string_view path, int flags) {
  const bool asFolder = path.ends_with('/') || path.ends_with("/.");
  Walk walk(*_calls, _root.number());
  if (!walk.go(path, asFolder || (flags & O_NOFOLLOW) == 0)) return {};
  const int all = flags | O_CLOEXEC | O_NOFOLLOW | (asFolder ? O_DIRECTORY : 0);
  int number = -1;
  do {
    number = _calls->openat(walk.folder(), walk.last().c_str(), all, 0);
  } while (number < 0 && errno == EINTR);
  return {*_calls, number};
}

Descriptor DevicePaths::open(std::string_view path, int flags) {
  if (const int problem = _rootError != 0 ? _rootError : problemOf(path); problem != 0) {
    errno = problem;
    return {};
  }
  if (_kernelResolves.load(std::memory_order_relaxed)) {
    Descriptor opened = openByKernel(std::string(path), flags);
    // The kernel is too old, or a sandbox blocks the call.
    if (opened || (errno != ENOSYS && errno != EPERM && errno != EAGAIN)) return opened;
    if (errno == ENOSYS) _kernelResolves.store(false, std::memory_order_relaxed);
  }
  return openStepByStep(path, flags);
}

std::optional<FolderAndName> DevicePaths::parentOf(std::string_view path) {
  const std::string_view plain = withoutTrailingSlashes(path);
  const std::size_t slash = plain.rfind('/');
  const std::string_view name = slash == std::string_view::npos ? plain : plain.substr(slash + 1);
  if (problemOf(path) == 0 && namesNothingInParent(name)) return parentFollowingLinks(path);
  const std::string_view parent =
      slash == std::string_view::npos || slash == 0 ? "/" : plain.substr(0, slash);
  Descriptor folder = open(path.empty() ? path : parent, O_PATH | O_DIRECTORY);
  if (!folder) return std::nullopt;
  if (name.find('\0') != std::string_view::npos) {
    errno = EINVAL;
    return std::nullopt;
  }
  return FolderAndName{std::move(folder), std::string(name)};
}

std::optional<FolderAndName> DevicePaths::parentFollowingLinks(std::string_view path) {
  if (const int problem = _rootError != 0 ? _rootError : problemOf(path); problem != 0) {
    errno = problem;
    return std::nullopt;
  }
  Walk walk(*_calls, _root.number());
  if (!walk.go(path, true)) return std::nullopt;
  std::string last = walk.last();
  Descriptor folder = walk.takeFolder();
  if (!folder) return std::nullopt;
  return FolderAndName{std::move(folder), std::move(last)};
}

std::optional<std::string> DevicePaths::hostPath(std::string_view path) {
  if (const int problem = _rootError != 0 ? _rootError : problemOf(path); problem != 0) {
    errno = problem;
    return std::nullopt;
  }
  Walk walk(*_calls, _root.number());
  std::vector<std::string> rest;
  if (walk.go(path, true)) {
    rest.push_back(walk.last());
  } else {
    const int error = errno;
    rest = walk.remaining();
    for (const std::string& step : rest) {
      if (error != ENOENT || step == "..") return std::nullopt;
    }
  }
  std::string host = _rootHostPath == "/" ? "" : _rootHostPath;
  for (const std::string& name : walk.names()) host += "/" + name;
  for (const std::string& name : rest) host += name == "." ? "" : "/" + name;
  return host.empty() ? "/" : host;
}

}  // namespace platform

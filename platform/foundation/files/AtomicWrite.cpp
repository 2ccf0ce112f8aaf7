#include "platform/foundation/files/AtomicWrite.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>

namespace platform {

namespace {

constexpr int attemptsForName = 100;
constexpr mode_t modeOfNewFiles = 0644;
constexpr std::size_t piecesAtOnce = 64;

// The data that is not written yet.
class Remaining {
 public:
  explicit Remaining(std::span<const std::string_view> pieces) : _pieces(pieces) { skip(0); }

  bool empty() const { return _pieces.empty(); }

  int fill(std::array<iovec, piecesAtOnce>& vectors) const {
    const std::size_t count = std::min(_pieces.size(), vectors.size());
    for (std::size_t index = 0; index < count; ++index) {
      const std::string_view piece = _pieces[index].substr(index == 0 ? _offset : 0);
      vectors[index] = {const_cast<char*>(piece.data()), piece.size()};
    }
    return static_cast<int>(count);
  }

  void skip(std::size_t bytes) {
    _offset += bytes;
    while (!_pieces.empty() && _offset >= _pieces.front().size()) {
      _offset -= _pieces.front().size();
      _pieces = _pieces.subspan(1);
    }
  }

 private:
  std::span<const std::string_view> _pieces;
  std::size_t _offset = 0;
};

// Retries a call that was interrupted by a signal. Returns 0 or an errno value.
template <class Call>
int untilNotInterrupted(Call call) {
  while (call() != 0) {
    if (errno != EINTR) return errno;
  }
  return 0;
}

}  // namespace

int AtomicWrite::run(std::span<const std::string_view> pieces,
                     const std::function<std::string()>& nextName) {
  if (_isNew) {
    _folderEntry = {
        _calls, _calls.openat(_target.folder.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0)};
    if (!_folderEntry) return errno;
  }
  if (const int error = openTemporary(nextName); error != 0) return error;
  if (const int error = fill(pieces); error != 0) {
    _calls.unlinkat(_target.folder.number(), _temporary.c_str(), 0);
    return error;
  }
  return moveIntoPlace();
}

int AtomicWrite::openTemporary(const std::function<std::string()>& nextName) {
  constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
  int error = EEXIST;
  for (int attempt = 0; attempt < attemptsForName && (error == EEXIST || error == EINTR);
       ++attempt) {
    _temporary = nextName();
    _file = {_calls, _calls.openat(_target.folder.number(), _temporary.c_str(), flags,
                                   _mode.value_or(modeOfNewFiles))};
    if (_file) return 0;
    error = errno;
  }
  return error;
}

int AtomicWrite::fill(std::span<const std::string_view> pieces) {
  if (const int error = writeAll(pieces); error != 0) return error;
  // The umask may have removed bits that the old version has.
  if (_mode && _calls.fchmod(_file.number(), *_mode) != 0) return errno;
  return untilNotInterrupted([this] { return _calls.fdatasync(_file.number()); });
}

int AtomicWrite::writeAll(std::span<const std::string_view> pieces) {
  std::array<iovec, piecesAtOnce> vectors;
  Remaining remaining(pieces);
  while (!remaining.empty()) {
    const int count = remaining.fill(vectors);
    const ssize_t written = _calls.writev(_file.number(), vectors.data(), count);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    // Do not loop forever on a disk that accepts nothing and reports no error.
    if (written == 0) return EIO;
    remaining.skip(static_cast<std::size_t>(written));
  }
  return 0;
}

int AtomicWrite::moveIntoPlace() {
  const int folder = _target.folder.number();
  if (_calls.renameat(folder, _temporary.c_str(), folder, _target.name.c_str()) != 0) {
    const int error = errno;
    _calls.unlinkat(folder, _temporary.c_str(), 0);
    return error;
  }
  if (!_isNew) return 0;
  const int error = untilNotInterrupted([this] { return _calls.fsync(_folderEntry.number()); });
  // Some file systems do not support fsync on a folder.
  if (error == 0 || error == EINVAL) return 0;
  withdrawNewFile();
  return error;
}

// Removes the new file, unless it has been replaced in the meantime.
void AtomicWrite::withdrawNewFile() {
  struct stat ours {};
  struct stat there {};
  const int folder = _target.folder.number();
  if (_calls.fstat(_file.number(), &ours) != 0) return;
  if (_calls.fstatat(folder, _target.name.c_str(), &there, AT_SYMLINK_NOFOLLOW) != 0) return;
  if (ours.st_ino == there.st_ino && ours.st_dev == there.st_dev) {
    _calls.unlinkat(folder, _target.name.c_str(), 0);
  }
}

}  // namespace platform

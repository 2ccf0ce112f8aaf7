#include "platform/foundation/files/DeviceFileSystem.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <random>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/foundation/files/AtomicWrite.h"
#include "platform/foundation/files/TreeRemoval.h"
#include "platform/foundation/files/WriterIdentity.h"

namespace platform {

namespace {

constexpr mode_t permissionBits = 07777;
constexpr mode_t modeOfNewFolders = 0755;

FileError failure(std::string_view what, std::string_view path, int code) {
  std::string message = "cannot ";
  message.append(what).append(" ").append(path).append(": ");
  return {code, message + std::generic_category().message(code)};
}

FileError tooLarge(std::string_view path, std::uint64_t limit) {
  return {EFBIG, "cannot read " + std::string(path) + ": it has more than " +
                     std::to_string(limit) + " bytes, which is the limit"};
}

FileType typeOf(mode_t mode) {
  if (S_ISREG(mode)) return FileType::regular;
  if (S_ISDIR(mode)) return FileType::directory;
  return S_ISLNK(mode) ? FileType::symbolicLink : FileType::other;
}

// Reads until the buffer is full or the file ends. Returns the number of bytes, or -1 with errno
// set. If exactly `enough` bytes are read, a partial read counts as the end of the file, which
// saves a call.
ssize_t readInto(SystemCalls& calls, int file, char* buffer, std::size_t capacity,
                 std::size_t enough) {
  std::size_t total = 0;
  while (total < capacity) {
    const ssize_t count = calls.read(file, buffer + total, capacity - total);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -1;
    total += static_cast<std::size_t>(count);
    if (count == 0 || (total == enough && total < capacity)) break;
  }
  return static_cast<ssize_t>(total);
}

std::uint64_t randomNumber() {
  std::random_device device;
  return (static_cast<std::uint64_t>(device()) << 32U) | device();
}

// Compares data with the pieces, chunk by chunk.
class PieceComparison {
 public:
  explicit PieceComparison(std::span<const std::string_view> pieces) : _pieces(pieces) {}

  bool nextEquals(std::string_view bytes) {
    while (!bytes.empty()) {
      while (!_pieces.empty() && _pieces.front().size() == _offset) advance();
      if (_pieces.empty()) return false;
      const std::string_view piece = _pieces.front().substr(_offset, bytes.size());
      if (bytes.substr(0, piece.size()) != piece) return false;
      _offset += piece.size();
      bytes.remove_prefix(piece.size());
    }
    return true;
  }

 private:
  void advance() {
    _pieces = _pieces.subspan(1);
    _offset = 0;
  }

  std::span<const std::string_view> _pieces;
  std::size_t _offset = 0;
};

}  // namespace

DeviceFileSystem::DeviceFileSystem(const std::string& rootHostPath,
                                   std::shared_ptr<SystemCalls> calls, PathResolution resolution)
    : _calls(std::move(calls)), _paths(rootHostPath, _calls, resolution), _random(randomNumber()) {}

DeviceFileSystem::~DeviceFileSystem() = default;

Descriptor DeviceFileSystem::openToRead(std::string_view path, struct stat& status) {
  // Without O_NONBLOCK, a pipe without a writer would block.
  Descriptor file = _paths.open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  if (!file || _calls->fstat(file.number(), &status) != 0) return {};
  if (S_ISREG(status.st_mode)) return file;
  errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  return {};
}

FileContents DeviceFileSystem::read(std::string_view path, std::uint64_t limit) {
  struct stat status {};
  const Descriptor file = openToRead(path, status);
  if (!file) return {{}, failure("read", path, errno)};
  const auto size = static_cast<std::uint64_t>(status.st_size);
  if (size > limit) return {{}, tooLarge(path, limit)};
  // One extra byte shows whether the file has grown in the meantime.
  const std::size_t capacity = static_cast<std::size_t>(size) + 1;
  std::shared_ptr<char[]> buffer(new (std::nothrow) char[capacity]);
  if (!buffer) return {{}, failure("read", path, ENOMEM)};
  const ssize_t count = readInto(*_calls, file.number(), buffer.get(), capacity, capacity - 1);
  if (count < 0) return {{}, failure("read", path, errno)};
  if (static_cast<std::size_t>(count) == capacity) return {{}, failure("read", path, EBUSY)};
  return {FileBytes(std::move(buffer), static_cast<std::size_t>(count)), {}};
}

std::optional<bool> DeviceFileSystem::holdsExactly(std::string_view path,
                                                   std::span<const std::string_view> pieces) {
  struct stat status {};
  const Descriptor file = openToRead(path, status);
  if (!file) return std::nullopt;
  std::size_t size = 0;
  for (const std::string_view piece : pieces) size += piece.size();
  if (static_cast<std::size_t>(status.st_size) != size) return false;
  constexpr std::size_t blockSize = std::size_t{64} * 1024;
  const std::unique_ptr<char[]> block(new char[blockSize]);
  PieceComparison comparison(pieces);
  for (std::size_t done = 0; done < size;) {
    const std::size_t wanted = std::min(blockSize, size - done);
    const ssize_t count = readInto(*_calls, file.number(), block.get(), wanted, wanted);
    if (count < 0) return std::nullopt;
    if (static_cast<std::size_t>(count) < wanted) return false;
    if (!comparison.nextEquals({block.get(), wanted})) return false;
    done += wanted;
  }
  return true;
}

std::string DeviceFileSystem::temporaryName() {
  const std::uint64_t number = _counter.fetch_add(1, std::memory_order_relaxed);
  std::string name(temporaryPrefix);
  {
    const std::lock_guard lock(_writerMutex);
    // A forked child is a different writer.
    if (const int process = ::getpid(); process != _writerProcess) {
      _writerProcess = process;
      _writer = currentWriter();
    }
    name += _writer;
  }
  std::array<char, 48> unique{};
  std::snprintf(unique.data(), unique.size(), "-%llx-%016llx",
                static_cast<unsigned long long>(number), static_cast<unsigned long long>(_random));
  return name + unique.data();
}

std::size_t DeviceFileSystem::removeStaleTemporaries(std::string_view folder) {
  const Descriptor opened = _paths.open(folder, O_PATH | O_DIRECTORY);
  std::vector<std::string> names;
  if (!opened || _calls->namesIn(opened.number(), names) != 0) return 0;
  std::size_t removed = 0;
  for (const std::string& name : names) {
    if (!name.starts_with(temporaryPrefix)) continue;
    const std::string_view rest = std::string_view(name).substr(temporaryPrefix.size());
    const std::size_t dash = rest.find('-', rest.find('-') + 1);
    if (writerLives(rest.substr(0, dash))) continue;
    if (_calls->unlinkat(opened.number(), name.c_str(), 0) == 0) ++removed;
  }
  return removed;
}

int DeviceFileSystem::inspectTarget(const FolderAndName& target, std::string_view path,
                                    std::optional<mode_t>& mode, bool& isNew) {
  struct stat status {};
  if (_calls->fstatat(target.folder.number(), target.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) !=
      0) {
    isNew = errno == ENOENT;
    return isNew ? 0 : errno;
  }
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (S_ISLNK(status.st_mode)) {
    // A link has no permissions. Its target determines who may read the content.
    const Descriptor leadsTo = _paths.open(path, O_PATH);
    if (!leadsTo || _calls->fstat(leadsTo.number(), &status) != 0) return 0;
  }
  if (S_ISREG(status.st_mode)) mode = status.st_mode & permissionBits;
  return 0;
}

FileError DeviceFileSystem::writeAtomically(std::string_view path,
                                            std::span<const std::string_view> pieces) {
  const std::optional<FolderAndName> target = _paths.parentOf(path);
  if (!target) return failure("write", path, errno);
  std::optional<mode_t> mode;
  bool isNew = false;
  int error = inspectTarget(*target, path, mode, isNew);
  if (error == 0) {
    error =
        AtomicWrite(*_calls, *target, mode, isNew).run(pieces, [this] { return temporaryName(); });
  }
  return error == 0 ? FileError() : failure("write", path, error);
}

std::optional<FileAttributes> DeviceFileSystem::attributesOfItem(std::string_view path) {
  const Descriptor item = _paths.open(path, O_PATH | O_NOFOLLOW);
  struct stat status {};
  if (!item || _calls->fstat(item.number(), &status) != 0) return std::nullopt;
  return FileAttributes{typeOf(status.st_mode), static_cast<std::uint64_t>(status.st_size),
                        status.st_mode & permissionBits};
}

std::optional<std::string> DeviceFileSystem::destinationOfSymbolicLink(std::string_view path) {
  const auto item = _paths.parentOf(path);
  if (!item) return std::nullopt;
  std::array<char, PATH_MAX> text;
  const ssize_t size =
      _calls->readlinkat(item->folder.number(), item->name.c_str(), text.data(), text.size());
  if (size < 0) return std::nullopt;
  return std::string(text.data(), static_cast<std::size_t>(size));
}

bool DeviceFileSystem::fileExists(std::string_view path) {
  return static_cast<bool>(_paths.open(path, O_PATH));
}

std::optional<std::vector<std::string>> DeviceFileSystem::contentsOfDirectory(
    std::string_view path) {
  const Descriptor folder = _paths.open(path, O_PATH | O_DIRECTORY);
  std::vector<std::string> names;
  if (!folder || _calls->namesIn(folder.number(), names) != 0) return std::nullopt;
  std::sort(names.begin(), names.end());
  return names;
}

// Returns 0 if the folder exists afterwards, otherwise an errno value.
int DeviceFileSystem::ensureFolder(std::string_view path) {
  if (_paths.open(path, O_PATH | O_DIRECTORY)) return 0;
  if (errno != ENOENT) return errno;
  const auto item = _paths.parentOf(path);
  if (!item) return errno;
  const int made = _calls->mkdirat(item->folder.number(), item->name.c_str(), modeOfNewFolders);
  const int error = made == 0 ? 0 : errno;
  // Another writer may have created it first.
  return error == EEXIST && _paths.open(path, O_PATH | O_DIRECTORY) ? 0 : error;
}

FileError DeviceFileSystem::createDirectory(std::string_view path) {
  for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
    const int error = ensureFolder(path.substr(0, end));
    if (error != 0) return failure("create the folder", path, error);
    if (end == std::string_view::npos) return {};
  }
}

FileError DeviceFileSystem::remove(std::string_view path) {
  const auto item = _paths.parentOf(path);
  if (!item) return failure("remove", path, errno);
  const int error = item->name == "." ? EBUSY : TreeRemoval(*_calls).remove(*item);
  return error == 0 ? FileError() : failure("remove", path, error);
}

FileError DeviceFileSystem::createSymbolicLink(std::string_view path,
                                               std::string_view destination) {
  const auto item = _paths.parentOf(path);
  if (!item) return failure("create the link", path, errno);
  if (destination.find('\0') != std::string_view::npos) {
    return failure("create the link", path, EINVAL);
  }
  if (_calls->symlinkat(std::string(destination).c_str(), item->folder.number(),
                        item->name.c_str()) != 0) {
    return failure("create the link", path, errno);
  }
  return {};
}

FileError DeviceFileSystem::setMode(std::string_view path, std::uint32_t mode) {
  const auto item = _paths.parentFollowingLinks(path);
  if (!item || _calls->fchmodat(item->folder.number(), item->name.c_str(),
                                static_cast<mode_t>(mode) & permissionBits) != 0) {
    return failure("set the mode of", path, errno);
  }
  return {};
}

std::optional<std::string> DeviceFileSystem::hostPath(std::string_view path) {
  return _paths.hostPath(path);
}

}  // namespace platform

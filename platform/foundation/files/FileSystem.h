#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

// The reason why a file operation failed. `code` is an errno value, 0 for success.
struct FileError {
  int code = 0;
  std::string message;  // for the user: the operation, the path and the reason
  explicit operator bool() const noexcept { return code != 0; }
};

enum class FileType { regular, directory, symbolicLink, other };

struct FileAttributes {
  FileType type = FileType::other;  // of the item itself; links are not followed
  std::uint64_t size = 0;           // bytes
  std::uint32_t mode = 0;           // permission bits
};

// The bytes of a file. Copies share one buffer, which is never modified. (A std::string would zero
// its buffer before the file is read into it.)
class FileBytes {
 public:
  FileBytes() = default;
  FileBytes(std::shared_ptr<const char[]> buffer, std::size_t size) noexcept
      : _buffer(std::move(buffer)), _size(size) {}

  const char* data() const noexcept { return _buffer.get(); }
  std::size_t size() const noexcept { return _size; }
  bool empty() const noexcept { return _size == 0; }
  // Valid as long as any copy of this object or the buffer exists.
  std::string_view view() const noexcept { return {_buffer.get(), _size}; }
  operator std::string_view() const noexcept { return view(); }
  operator std::string() const { return std::string(view()); }
  // For callers that keep a part of the bytes without copying it.
  const std::shared_ptr<const char[]>& buffer() const noexcept { return _buffer; }

  friend bool operator==(const FileBytes& a, std::string_view b) noexcept { return a.view() == b; }

 private:
  std::shared_ptr<const char[]> _buffer;
  std::size_t _size = 0;
};

struct FileContents {
  FileBytes bytes;
  FileError error;  // if set, bytes is empty
};

// Files of the device, addressed by their path on the device ("/var/jb/..."). Links inside the
// device tree, including absolute ones, stay inside it. Nothing is cached. Threads: any.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // Reads a regular file; anything else is an error. A file larger than `limit` bytes fails with
  // EFBIG.
  virtual FileContents read(std::string_view path, std::uint64_t limit = defaultReadLimit) = 0;

  // Writes a temporary file in the same folder, syncs it to disk and renames it over the old file;
  // for a new file, syncs the folder's entry too. Keeps the permission bits of the old file. If
  // `path` is a link to a file, the link is replaced. On failure, the old file is unchanged and no
  // temporary file is left.
  virtual FileError writeAtomically(std::string_view path,
                                    std::span<const std::string_view> pieces) = 0;
  FileError writeAtomically(std::string_view path, std::string_view bytes) {
    const std::string_view pieces[] = {bytes};
    return writeAtomically(path, std::span<const std::string_view>(pieces));
  }

  // Returns whether the file holds exactly these bytes; empty if it cannot be read. Stops at the
  // first difference, and reads nothing if the sizes differ.
  virtual std::optional<bool> holdsExactly(std::string_view path,
                                           std::span<const std::string_view> pieces) = 0;

  // Returns the attributes of the item itself, without following a link; empty if it does not
  // exist.
  virtual std::optional<FileAttributes> attributesOfItem(std::string_view path) = 0;
  // Returns the unresolved target of a symbolic link; empty if there is no such link.
  virtual std::optional<std::string> destinationOfSymbolicLink(std::string_view path) = 0;
  // Follows links.
  virtual bool fileExists(std::string_view path) = 0;
  // Returns the names in a folder, sorted by bytes, without "." and ".."; empty if it is not a
  // folder.
  virtual std::optional<std::vector<std::string>> contentsOfDirectory(std::string_view path) = 0;
  virtual FileError createDirectory(std::string_view path) = 0;  // creates missing parents
  virtual FileError remove(std::string_view path) = 0;  // removes a folder with its contents
  virtual FileError createSymbolicLink(std::string_view path, std::string_view destination) = 0;
  virtual FileError setMode(std::string_view path, std::uint32_t mode) = 0;

  // Returns the path on this machine for a device path, with every link resolved inside the tree.
  // Used to start programs and in messages. Empty if a link cannot be followed.
  virtual std::optional<std::string> hostPath(std::string_view path) = 0;

  static constexpr std::uint64_t defaultReadLimit = 256ULL * 1024 * 1024;
};

// A write as reported to observers (see ObservedFileSystem).
struct FileWrite {
  std::string path;        // as passed by the writer
  bool changed = false;    // whether the new bytes differ from the old ones
  std::uint64_t size = 0;  // bytes
  FileError error;
};

}  // namespace platform

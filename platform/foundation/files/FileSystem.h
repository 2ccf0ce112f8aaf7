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

// Why a file operation failed, as a value. `code` is an errno value, 0 for success.
struct FileError {
  int code = 0;
  std::string message;  // for people: what was tried, on which path, and why it failed
  explicit operator bool() const noexcept { return code != 0; }
};

enum class FileType { regular, directory, symbolicLink, other };

struct FileAttributes {
  FileType type = FileType::other;  // of the item itself: a link is not followed
  std::uint64_t size = 0;           // bytes
  std::uint32_t mode = 0;           // permission bits
};

// The bytes of a file that was read: one buffer, shared by the copies, which nobody writes to.
// (Not a std::string, which would fill the buffer with zeros before the file is read into it.)
class FileBytes {
 public:
  FileBytes() = default;
  FileBytes(std::shared_ptr<const char[]> buffer, std::size_t size) noexcept
      : _buffer(std::move(buffer)), _size(size) {}

  const char* data() const noexcept { return _buffer.get(); }
  std::size_t size() const noexcept { return _size; }
  bool empty() const noexcept { return _size == 0; }
  // Valid as long as any copy, or the buffer, lives.
  std::string_view view() const noexcept { return {_buffer.get(), _size}; }
  operator std::string_view() const noexcept { return view(); }
  operator std::string() const { return std::string(view()); }
  // For whoever keeps a part of the bytes without a copy.
  const std::shared_ptr<const char[]>& buffer() const noexcept { return _buffer; }

  friend bool operator==(const FileBytes& a, std::string_view b) noexcept { return a.view() == b; }

 private:
  std::shared_ptr<const char[]> _buffer;
  std::size_t _size = 0;
};

struct FileContents {
  FileBytes bytes;
  FileError error;  // set: bytes is empty
};

// Files of the device, by their path on the device ("/var/jb/..."). Links inside the device tree
// stay inside it, absolute ones too. Every read and write happens when it is asked for.
// Threads: every function from any thread.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // Regular files only; a folder, a device or a pipe is an error. `limit` is the largest size in
  // bytes that is read; a larger file is the error EFBIG.
  virtual FileContents read(std::string_view path, std::uint64_t limit = defaultReadLimit) = 0;

  // Writes to a temporary file in the same folder, makes the bytes reach the disk and renames it
  // over the old one; where the file is new, the folder's entry reaches the disk too. The old
  // file's permission bits are kept. Where `path` is a link to a file, the link is replaced. On
  // any failure the old file is whole and no temporary file is left.
  virtual FileError writeAtomically(std::string_view path,
                                    std::span<const std::string_view> pieces) = 0;
  FileError writeAtomically(std::string_view path, std::string_view bytes) {
    const std::string_view pieces[] = {bytes};
    return writeAtomically(path, std::span<const std::string_view>(pieces));
  }

  // Whether the file holds exactly these bytes; reads no further than the first difference, and
  // nothing where the sizes differ. Empty where it cannot be read.
  virtual std::optional<bool> holdsExactly(std::string_view path,
                                           std::span<const std::string_view> pieces) = 0;

  // Of the item itself, not of what a link points to. Empty where there is none.
  virtual std::optional<FileAttributes> attributesOfItem(std::string_view path) = 0;
  // The text of a symbolic link as it stands. Empty where there is none.
  virtual std::optional<std::string> destinationOfSymbolicLink(std::string_view path) = 0;
  // Whether something is there; links are followed.
  virtual bool fileExists(std::string_view path) = 0;
  // Names in a folder, sorted by bytes, without "." and "..". Empty optional where it is no folder.
  virtual std::optional<std::vector<std::string>> contentsOfDirectory(std::string_view path) = 0;
  virtual FileError createDirectory(std::string_view path) = 0;  // with those above it
  virtual FileError remove(std::string_view path) = 0;           // a folder with what is in it
  virtual FileError createSymbolicLink(std::string_view path, std::string_view destination) = 0;
  virtual FileError setMode(std::string_view path, std::uint32_t mode) = 0;

  // The path on this machine that the device's path stands for, every link resolved inside the
  // tree; for programs that are started and for messages. Empty where a link cannot be followed.
  virtual std::optional<std::string> hostPath(std::string_view path) = 0;

  static constexpr std::uint64_t defaultReadLimit = 256ULL * 1024 * 1024;
};

// Every write of a process goes past the observers that are added here (see ObservedFileSystem).
struct FileWrite {
  std::string path;        // as the writer gave it
  bool changed = false;    // whether the bytes differ from those before
  std::uint64_t size = 0;  // bytes
  FileError error;
};

}  // namespace platform

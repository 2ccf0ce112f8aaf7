#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/files/DevicePaths.h"
#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/files/SystemCalls.h"

namespace platform {

// The files of a device tree: a folder of this machine that serves as "/". Links and ".." never
// lead outside of it, unless the folder is the machine's own "/".
class DeviceFileSystem final : public FileSystem {
 public:
  // If the root cannot be opened, every operation fails with the reason.
  explicit DeviceFileSystem(const std::string& rootHostPath,
                            std::shared_ptr<SystemCalls> calls = std::make_shared<SystemCalls>(),
                            PathResolution resolution = PathResolution::automatic);
  ~DeviceFileSystem() override;

  const std::string& rootHostPath() const noexcept { return _paths.rootHostPath(); }

  using FileSystem::writeAtomically;
  FileContents read(std::string_view path, std::uint64_t limit = defaultReadLimit) override;
  FileError writeAtomically(std::string_view path,
                            std::span<const std::string_view> pieces) override;
  std::optional<bool> holdsExactly(std::string_view path,
                                   std::span<const std::string_view> pieces) override;
  std::optional<FileAttributes> attributesOfItem(std::string_view path) override;
  std::optional<std::string> destinationOfSymbolicLink(std::string_view path) override;
  bool fileExists(std::string_view path) override;
  std::optional<std::vector<std::string>> contentsOfDirectory(std::string_view path) override;
  FileError createDirectory(std::string_view path) override;
  FileError remove(std::string_view path) override;
  FileError createSymbolicLink(std::string_view path, std::string_view destination) override;
  FileError setMode(std::string_view path, std::uint32_t mode) override;
  std::optional<std::string> hostPath(std::string_view path) override;

  // Removes temporary files that were left in a folder by writers that died during a write. Keeps
  // the files of running writers. Returns the number of removed files.
  std::size_t removeStaleTemporaries(std::string_view folder);

  // The prefix of the names of temporary files.
  static constexpr std::string_view temporaryPrefix = ".zentrova-write-";

 private:
  // Opens regular files only. Returns -1 with errno set on failure.
  Descriptor openToRead(std::string_view path, struct stat& status);
  // Reads the permission bits that a new version of the item keeps; empty if it gets those of a new
  // file. Returns 0, or an errno value if the item cannot be replaced.
  int inspectTarget(const FolderAndName& target, std::string_view path, std::optional<mode_t>& mode,
                    bool& isNew);
  std::string temporaryName();
  int ensureFolder(std::string_view path);

  std::shared_ptr<SystemCalls> _calls;
  DevicePaths _paths;
  std::uint64_t _random;
  std::atomic<std::uint64_t> _counter{0};
  std::mutex _writerMutex;
  int _writerProcess = 0;
  std::string _writer;
};

}  // namespace platform

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

// The files of a device tree: a folder of this machine that stands for "/". Nothing outside it is
// reached, whatever links and ".." a path has, unless the folder is the machine's own "/".
class DeviceFileSystem final : public FileSystem {
 public:
  // A root that cannot be opened makes every operation fail with the reason.
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

  // Removes the temporary files in a folder whose writers were ended in the middle of a write.
  // Those of writers that live are left alone. The result is how many were removed.
  std::size_t removeStaleTemporaries(std::string_view folder);

  // What the names of temporary files begin with.
  static constexpr std::string_view temporaryPrefix = ".zentrova-write-";

 private:
  // Only a regular file; -1 with errno otherwise.
  Descriptor openToRead(std::string_view path, struct stat& status);
  // The permission bits that a new version of the item takes over, empty where it takes those of
  // a new file; 0 or an errno value where the item cannot be replaced.
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

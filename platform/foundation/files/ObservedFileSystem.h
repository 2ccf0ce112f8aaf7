#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/files/FileSystem.h"

namespace platform {

// Forwards to another file system and records each write and whether it changed the bytes. Keeps
// the last `capacity` writes.
class ObservedFileSystem final : public FileSystem {
 public:
  using Observer = std::function<void(const FileWrite&)>;

  explicit ObservedFileSystem(std::shared_ptr<FileSystem> files, std::size_t capacity = 10000);

  FileSystem& inner() noexcept { return *_files; }
  // Returns the writes since the last call, oldest first.
  std::vector<FileWrite> takeWrites();
  // Calls the observer after each write, on the writing thread. Returns an id for removeObserver.
  std::uint64_t addObserver(Observer observer);
  void removeObserver(std::uint64_t observer);

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

 private:
  void record(const FileWrite& write);

  std::shared_ptr<FileSystem> _files;
  const std::size_t _capacity;
  std::mutex _mutex;
  std::vector<FileWrite> _writes;
  std::map<std::uint64_t, Observer> _observers;
  std::uint64_t _lastObserver = 0;
};

}  // namespace platform

#include "platform/foundation/files/ObservedFileSystem.h"

#include <utility>

namespace platform {

ObservedFileSystem::ObservedFileSystem(std::shared_ptr<FileSystem> files, std::size_t capacity)
    : _files(std::move(files)), _capacity(capacity) {}

std::vector<FileWrite> ObservedFileSystem::takeWrites() {
  const std::lock_guard lock(_mutex);
  return std::exchange(_writes, {});
}

std::uint64_t ObservedFileSystem::addObserver(Observer observer) {
  const std::lock_guard lock(_mutex);
  _observers.emplace(++_lastObserver, std::move(observer));
  return _lastObserver;
}

void ObservedFileSystem::removeObserver(std::uint64_t observer) {
  const std::lock_guard lock(_mutex);
  _observers.erase(observer);
}

void ObservedFileSystem::record(const FileWrite& write) {
  std::vector<Observer> observers;
  {
    const std::lock_guard lock(_mutex);
    for (const auto& [number, observer] : _observers) observers.push_back(observer);
    if (_writes.size() >= _capacity) _writes.erase(_writes.begin());
    if (_capacity > 0) _writes.push_back(write);
  }
  for (const Observer& observer : observers) observer(write);
}

FileError ObservedFileSystem::writeAtomically(std::string_view path,
                                              std::span<const std::string_view> pieces) {
  const bool same = _files->holdsExactly(path, pieces).value_or(false);
  FileWrite write;
  write.error = _files->writeAtomically(path, pieces);
  write.path = path;
  write.changed = !write.error && !same;
  for (const std::string_view piece : pieces) write.size += piece.size();
  record(write);
  return write.error;
}

FileContents ObservedFileSystem::read(std::string_view path, std::uint64_t limit) {
  return _files->read(path, limit);
}

std::optional<bool> ObservedFileSystem::holdsExactly(std::string_view path,
                                                     std::span<const std::string_view> pieces) {
  return _files->holdsExactly(path, pieces);
}

std::optional<FileAttributes> ObservedFileSystem::attributesOfItem(std::string_view path) {
  return _files->attributesOfItem(path);
}

std::optional<std::string> ObservedFileSystem::destinationOfSymbolicLink(std::string_view path) {
  return _files->destinationOfSymbolicLink(path);
}

bool ObservedFileSystem::fileExists(std::string_view path) {
  return _files->fileExists(path);
}

std::optional<std::vector<std::string>> ObservedFileSystem::contentsOfDirectory(
    std::string_view path) {
  return _files->contentsOfDirectory(path);
}

FileError ObservedFileSystem::createDirectory(std::string_view path) {
  return _files->createDirectory(path);
}

FileError ObservedFileSystem::remove(std::string_view path) {
  return _files->remove(path);
}

FileError ObservedFileSystem::createSymbolicLink(std::string_view path,
                                                 std::string_view destination) {
  return _files->createSymbolicLink(path, destination);
}

FileError ObservedFileSystem::setMode(std::string_view path, std::uint32_t mode) {
  return _files->setMode(path, mode);
}

std::optional<std::string> ObservedFileSystem::hostPath(std::string_view path) {
  return _files->hostPath(path);
}

}  // namespace platform

#include "settings/device/TreeFolders.h"

#include <cerrno>
#include <fcntl.h>
#include <stdio.h>
#include <system_error>
#include <unistd.h>

namespace settings {

namespace fs = std::filesystem;

namespace {

std::string lastError() {
  return std::generic_category().message(errno);
}

}  // namespace

// Not mkdtemp: its folder would be accessible only by its owner.
FolderBeside::FolderBeside(const fs::path& target) : _target(target) {
  constexpr int attempts = 1000;
  std::error_code error;
  for (int attempt = 0; attempt < attempts && !error; ++attempt) {
    const fs::path path =
        target.parent_path() / ("." + target.filename().string() + "-" +
                                std::to_string(::getpid()) + "-" + std::to_string(attempt));
    if (!fs::create_directory(path, error)) continue;
    _path = path;
    return;
  }
  _problem = "cannot make a folder in " + target.parent_path().string() + ": " +
             (error ? error.message() : "every name is taken");
}

FolderBeside::~FolderBeside() {
  std::error_code ignored;
  if (!_path.empty()) fs::remove_all(_path, ignored);
}

std::string FolderBeside::moveIntoPlace() {
  if (::rename(_path.c_str(), _target.c_str()) != 0) {
    return "cannot put the new tree at " + _target.string() + ": " + lastError();
  }
  _path.clear();
  return {};
}

std::string FolderBeside::exchange() {
  if (::renameat2(AT_FDCWD, _path.c_str(), AT_FDCWD, _target.c_str(), RENAME_EXCHANGE) != 0) {
    return "cannot put the new folder at " + _target.string() + ": " + lastError();
  }
  return {};
}

FoldersAbove::FoldersAbove(const fs::path& path) : _parent(path.parent_path()) {
  std::error_code error;
  for (fs::path at = _parent; !at.empty() && !fs::exists(at, error); at = at.parent_path()) {
    _highestMade = at;
  }
  fs::create_directories(_parent, error);
  if (error) _problem = "cannot make the folder " + _parent.string() + ": " + error.message();
}

FoldersAbove::~FoldersAbove() {
  if (_kept || _highestMade.empty()) return;
  std::error_code error;
  // Removes only empty folders: another program may have put files there in the meantime.
  for (fs::path at = _parent; fs::remove(at, error) && at != _highestMade;) at = at.parent_path();
}

}  // namespace settings

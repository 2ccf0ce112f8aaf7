#pragma once

#include <filesystem>
#include <string>

namespace settings {

// A new, empty folder next to another one. The destructor removes it with its content unless it has
// replaced the other folder.
class FolderBeside {
 public:
  explicit FolderBeside(const std::filesystem::path& target);
  ~FolderBeside();
  FolderBeside(const FolderBeside&) = delete;
  FolderBeside& operator=(const FolderBeside&) = delete;

  const std::filesystem::path& path() const noexcept { return _path; }
  // An error for the user; empty if the folder exists.
  const std::string& problem() const noexcept { return _problem; }

  // Both return an error for the user; empty on success.
  // Replaces the target, which must be missing or an empty folder.
  std::string moveIntoPlace();
  // Replaces the target, and removes its old content afterwards.
  std::string exchange();

 private:
  std::filesystem::path _target;
  std::filesystem::path _path;
  std::string _problem;
};

// Creates the parent folders of a path. The destructor removes those that it created unless keep
// was called.
class FoldersAbove {
 public:
  explicit FoldersAbove(const std::filesystem::path& path);
  ~FoldersAbove();
  FoldersAbove(const FoldersAbove&) = delete;
  FoldersAbove& operator=(const FoldersAbove&) = delete;

  const std::string& problem() const noexcept { return _problem; }
  void keep() noexcept { _kept = true; }

 private:
  std::filesystem::path _highestMade;  // empty if nothing was created
  std::filesystem::path _parent;
  std::string _problem;
  bool _kept = false;
};

}  // namespace settings

#pragma once

#include <filesystem>
#include <string>

namespace settings {

// A new, empty folder beside another one, which is removed with its content at the end unless
// it has taken the other one's place.
class FolderBeside {
 public:
  explicit FolderBeside(const std::filesystem::path& target);
  ~FolderBeside();
  FolderBeside(const FolderBeside&) = delete;
  FolderBeside& operator=(const FolderBeside&) = delete;

  const std::filesystem::path& path() const noexcept { return _path; }
  // For people; empty where the folder is there.
  const std::string& problem() const noexcept { return _problem; }

  // Both answer with what went wrong, for people, or with an empty text.
  // Takes the place of the target, which must be missing or an empty folder.
  std::string moveIntoPlace();
  // Takes the place of the target, whose content is removed afterwards.
  std::string exchange();

 private:
  std::filesystem::path _target;
  std::filesystem::path _path;
  std::string _problem;
};

// Makes the folders above a path, and removes those that it made unless they were kept.
class FoldersAbove {
 public:
  explicit FoldersAbove(const std::filesystem::path& path);
  ~FoldersAbove();
  FoldersAbove(const FoldersAbove&) = delete;
  FoldersAbove& operator=(const FoldersAbove&) = delete;

  const std::string& problem() const noexcept { return _problem; }
  void keep() noexcept { _kept = true; }

 private:
  std::filesystem::path _highestMade;  // empty where all were there
  std::filesystem::path _parent;
  std::string _problem;
  bool _kept = false;
};

}  // namespace settings

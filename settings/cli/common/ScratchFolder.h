#pragma once

#include <filesystem>

namespace settings {

// A temporary folder of this machine. The destructor removes it with its content.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // Empty if the folder could not be created.
  const std::filesystem::path& path() const noexcept { return _path; }

 private:
  std::filesystem::path _path;
};

}  // namespace settings

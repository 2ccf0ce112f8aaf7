#pragma once

#include <filesystem>

namespace settings {

// A folder of this machine for the time being, which goes away with all in it.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // Empty where there is no room for one.
  const std::filesystem::path& path() const noexcept { return _path; }

 private:
  std::filesystem::path _path;
};

}  // namespace settings

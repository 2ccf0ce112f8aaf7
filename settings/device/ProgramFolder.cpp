#include "settings/device/ProgramFolder.h"

#include <system_error>

namespace settings {

std::filesystem::path programFolder() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::filesystem::path() : program.parent_path().parent_path();
}

std::filesystem::path sharedFolder(std::string_view name) {
  return programFolder() / "share" / name;
}

}  // namespace settings

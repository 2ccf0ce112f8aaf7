#include "settings/cli/common/ScratchFolder.h"

#include <stdlib.h>
#include <string>
#include <system_error>

namespace settings {

ScratchFolder::ScratchFolder() {
  std::error_code error;
  std::string pattern =
      (std::filesystem::temp_directory_path(error) / "settings-command-XXXXXX").string();
  if (!error && ::mkdtemp(pattern.data()) != nullptr) _path = pattern;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  if (!_path.empty()) std::filesystem::remove_all(_path, ignored);
}

}  // namespace settings

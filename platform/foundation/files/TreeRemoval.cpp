#include "platform/foundation/files/TreeRemoval.h"

#include <cerrno>
#include <fcntl.h>
#include <utility>

namespace platform {

int TreeRemoval::remove(const FolderAndName& item) {
  int error = removeOrEnter(item.folder.number(), item.name);
  while (error == 0 && !_levels.empty()) {
    Level& level = _levels.back();
    if (level.names.empty()) {
      error = removeEmpty(item.folder.number());
      continue;
    }
    const std::string name = std::move(level.names.back());
    level.names.pop_back();
    error = removeOrEnter(level.folder.number(), name);
  }
  return error;
}

int TreeRemoval::removeOrEnter(int folder, const std::string& name) {
  if (_calls.unlinkat(folder, name.c_str(), 0) == 0) return 0;
  if (errno != EISDIR) return errno;
  Level level;
  level.folder = {_calls, _calls.openat(folder, name.c_str(),
                                        O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW, 0)};
  if (!level.folder || _calls.namesIn(level.folder.number(), level.names) != 0) return errno;
  level.name = name;
  _levels.push_back(std::move(level));
  return 0;
}

int TreeRemoval::removeEmpty(int folderOfItem) {
  const std::string name = std::move(_levels.back().name);
  _levels.pop_back();
  const int folder = _levels.empty() ? folderOfItem : _levels.back().folder.number();
  return _calls.unlinkat(folder, name.c_str(), AT_REMOVEDIR) == 0 ? 0 : errno;
}

}  // namespace platform

#pragma once

#include <string>
#include <vector>

#include "platform/foundation/files/DevicePaths.h"
#include "platform/foundation/files/SystemCalls.h"

namespace platform {

// Removes an item, a folder with all that is in it; links are removed, not followed. However deep
// the folders are, it does not recurse.
class TreeRemoval {
 public:
  explicit TreeRemoval(SystemCalls& calls) : _calls(calls) {}
  // 0 or an errno value; then part of the folder's content may be gone.
  int remove(const FolderAndName& item);

 private:
  struct Level {
    Descriptor folder;
    std::string name;
    std::vector<std::string> names;  // what is still in it
  };
  int removeOrEnter(int folder, const std::string& name);
  int removeEmpty(int folderOfItem);

  SystemCalls& _calls;
  std::vector<Level> _levels;
};

}  // namespace platform

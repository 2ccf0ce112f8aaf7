#pragma once

#include <string>
#include <vector>

#include "platform/foundation/files/DevicePaths.h"
#include "platform/foundation/files/SystemCalls.h"

namespace platform {

// Removes an item; a folder is removed with its contents. Links are removed, not followed. Does not
// recurse, so folders may be nested to any depth.
class TreeRemoval {
 public:
  explicit TreeRemoval(SystemCalls& calls) : _calls(calls) {}
  // Returns 0 or an errno value. On failure, part of the folder's contents may be removed already.
  int remove(const FolderAndName& item);

 private:
  struct Level {
    Descriptor folder;
    std::string name;
    std::vector<std::string> names;  // remaining contents
  };
  int removeOrEnter(int folder, const std::string& name);
  int removeEmpty(int folderOfItem);

  SystemCalls& _calls;
  std::vector<Level> _levels;
};

}  // namespace platform

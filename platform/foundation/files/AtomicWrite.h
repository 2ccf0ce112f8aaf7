#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/files/DevicePaths.h"
#include "platform/foundation/files/SystemCalls.h"

namespace platform {

// Replaces one file by a new version, whole or not at all: a temporary file in the same folder is
// written, reaches the disk, and takes the place of the old one.
class AtomicWrite {
 public:
  // The new version's permission bits; empty: 0644 less the umask. `isNew` where there is no file
  // of that name yet, so that the folder's entry has to reach the disk too.
  AtomicWrite(SystemCalls& calls, const FolderAndName& target, std::optional<mode_t> mode,
              bool isNew)
      : _calls(calls), _target(target), _mode(mode), _isNew(isNew) {}

  // 0 or an errno value; in that case everything is as it was before. `nextName` gives a name for
  // the temporary file, another one each time.
  int run(std::span<const std::string_view> pieces, const std::function<std::string()>& nextName);

 private:
  int openTemporary(const std::function<std::string()>& nextName);
  int writeAll(std::span<const std::string_view> pieces);
  int fill(std::span<const std::string_view> pieces);
  int moveIntoPlace();
  void withdrawNewFile();

  SystemCalls& _calls;
  const FolderAndName& _target;
  std::optional<mode_t> _mode;
  bool _isNew;
  Descriptor _folderEntry;
  Descriptor _file;
  std::string _temporary;
};

}  // namespace platform

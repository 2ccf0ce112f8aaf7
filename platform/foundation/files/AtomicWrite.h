#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/files/DevicePaths.h"
#include "platform/foundation/files/SystemCalls.h"

namespace platform {

// Replaces a file with a new version atomically: writes a temporary file in the same folder, syncs
// it to disk and renames it over the old file.
class AtomicWrite {
 public:
  // `mode` is the permission bits of the new version; if empty, 0644 minus the umask. `isNew` means
  // that the file does not exist yet, so the folder's entry must be synced too.
  AtomicWrite(SystemCalls& calls, const FolderAndName& target, std::optional<mode_t> mode,
              bool isNew)
      : _calls(calls), _target(target), _mode(mode), _isNew(isNew) {}

  // Returns 0, or an errno value if nothing was changed. `nextName` returns a name for the
  // temporary file, a different one on each call.
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

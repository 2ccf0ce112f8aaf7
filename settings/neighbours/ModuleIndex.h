#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/values/Collections.h"

namespace settings {

// A Control Center module of the device: a folder with an Info.plist that contains an identifier.
struct ModuleFolder {
  std::string path;  // on the device
  std::string identifier;
  std::string displayName;  // CFBundleDisplayName, else CFBundleName, else the folder's name
};

// The modules that are installed on the device: first the system's modules, then the added ones,
// each group sorted by folder name. A folder whose Info.plist is missing, damaged or without an
// identifier is ignored. If two modules have the same identifier, the first one counts.
//
// There is one index for each process. It reads the folders at most once for each user action: all
// questions within one action get the same answer, as from a repository that updates between two
// events.
//
// Threads: main.
class ModuleIndex {
 public:
  const std::vector<ModuleFolder>& modules();
  // The modules' identifiers, in the order above.
  const platform::Array& identifiers();
  // Makes the next question read the folders again.
  void forget() noexcept { _read.reset(); }

 private:
  struct Contents {
    std::vector<ModuleFolder> modules;
    platform::Array identifiers;
  };
  const Contents& contents();

  std::optional<Contents> _read;
};

}  // namespace settings

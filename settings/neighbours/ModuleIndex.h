#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/values/Collections.h"

namespace settings {

// A Control Center module of the device: a folder with an Info.plist that names its identifier.
struct ModuleFolder {
  std::string path;  // on the device
  std::string identifier;
  std::string displayName;  // CFBundleDisplayName, else CFBundleName, else the folder's name
};

// The modules that are installed on the device: the folders of the system's modules, then those of
// the added ones, each by name. A folder whose Info.plist is missing, damaged or without an
// identifier is no module; of two with one identifier the first counts.
//
// One for each process. The folders are looked at once for each thing that the user does: what is
// asked in between gets one answer, as from a repository that learns of changes between two events.
//
// Threads: main.
class ModuleIndex {
 public:
  const std::vector<ModuleFolder>& modules();
  // The modules' identifiers, in their order.
  const platform::Array& identifiers();
  // Lets the next question look at the folders again.
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

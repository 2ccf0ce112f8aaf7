#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace settings {

// The content of a device tree, as shown to users and scripts. Paths are device paths.
struct DeviceDescription {
  std::string folder;                        // on this machine, absolute
  std::int64_t format = 0;                   // version of the tree's layout
  std::string jailbreakFolder;               // target of the link "/var/jb", as stored
  std::string bundlePath;                    // empty if the bundle is not installed
  std::string bundleVersion;                 // from its Info.plist; empty if absent
  std::vector<std::string> preferenceFiles;  // names
  std::vector<std::string> modules;          // identifiers of the installed modules
  std::vector<std::string> photos;           // names
  std::vector<std::string> programs;         // paths of the stand-ins
};

}  // namespace settings

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace settings {

// What a device tree holds, for people and scripts. Paths are the device's.
struct DeviceDescription {
  std::string folder;                        // on this machine, absolute
  std::int64_t format = 0;                   // of the tree's layout
  std::string jailbreakFolder;               // what "/var/jb" leads to, as the link has it
  std::string bundlePath;                    // empty where the bundle is not installed
  std::string bundleVersion;                 // from its Info.plist; empty where there is none
  std::vector<std::string> preferenceFiles;  // names
  std::vector<std::string> modules;          // identifiers of the installed modules
  std::vector<std::string> photos;           // names
  std::vector<std::string> programs;         // paths of the stand-ins
};

}  // namespace settings

#pragma once

#include <string>

namespace platform {

// The bundle whose pages the process shows: a service of the process, provided by whoever loads
// the bundle. List pages look their resources up there.
struct BundleInfo {
  std::string path;  // the folder, as on the device
};

}  // namespace platform

#pragma once

#include <string>

namespace platform {

// The bundle whose pages the process shows. A service of the process, provided by the code that
// loads the bundle. List pages load their resources from it.
struct BundleInfo {
  std::string path;  // the folder, as on the device
};

}  // namespace platform

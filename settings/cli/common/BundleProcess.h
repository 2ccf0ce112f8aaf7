#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/objects/Process.h"
#include "settings/application/BundleLoader.h"
#include "settings/application/SettingsProcess.h"

namespace settings {

class DeviceTree;

// A process of its own with a bundle loaded and no page shown, the current one as long as this
// lives. What was made in it goes before it.
//
// Threads: belongs to one.
class BundleProcess {
 public:
  // With the bundle that is installed on a device. Empty where it cannot be loaded; `problem` says
  // why.
  static std::unique_ptr<BundleProcess> openInstalled(const DeviceTree& tree, std::string& problem);
  // With the bundle that was built together with the program; there is no device then.
  static std::unique_ptr<BundleProcess> openBuilt(std::string& problem);
  // With the bundle in that folder, an absolute path; there is no device then.
  static std::unique_ptr<BundleProcess> openFolder(const std::filesystem::path& bundle,
                                                   std::string& problem);
  BundleProcess(const BundleProcess&) = delete;
  BundleProcess& operator=(const BundleProcess&) = delete;

  // The class of that name; null where there is none.
  const platform::Class* find(std::string_view className) {
    return _process.process().classes().find(className);
  }

 private:
  explicit BundleProcess(const std::filesystem::path& root);
  static std::unique_ptr<BundleProcess> open(const std::filesystem::path& root,
                                             const std::string& path, std::string& problem);

  LoadedBundle _bundle;  // the code goes last
  SettingsProcess _process;
  platform::ProcessScope _scope;
};

}  // namespace settings

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

// A process with a bundle loaded and no page shown. It is the current process during its lifetime.
// Objects that are made in it must be destroyed before it.
//
// Threads: one.
class BundleProcess {
 public:
  // Loads the bundle that is installed on a device. Returns nothing if that fails; `problem` says
  // why.
  static std::unique_ptr<BundleProcess> openInstalled(const DeviceTree& tree, std::string& problem);
  // Loads the bundle that was built with the program; there is no device then.
  static std::unique_ptr<BundleProcess> openBuilt(std::string& problem);
  // Loads the bundle in that folder, an absolute path; there is no device then.
  static std::unique_ptr<BundleProcess> openFolder(const std::filesystem::path& bundle,
                                                   std::string& problem);
  BundleProcess(const BundleProcess&) = delete;
  BundleProcess& operator=(const BundleProcess&) = delete;

  // The class with this name; null if there is none.
  const platform::Class* find(std::string_view className) {
    return _process.process().classes().find(className);
  }

 private:
  explicit BundleProcess(const std::filesystem::path& root);
  static std::unique_ptr<BundleProcess> open(const std::filesystem::path& root,
                                             const std::string& path, std::string& problem);

  LoadedBundle _bundle;  // the code is unloaded last
  SettingsProcess _process;
  platform::ProcessScope _scope;
};

}  // namespace settings

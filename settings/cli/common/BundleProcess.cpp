#include "settings/cli/common/BundleProcess.h"

#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/log/MemoryLog.h"
#include "platform/foundation/programs/DevicePrograms.h"
#include "platform/preferences/BundleInfo.h"
#include "settings/device/BundleInstallation.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/Product.h"

namespace settings {
namespace {

DeviceServices servicesIn(const std::filesystem::path& root) {
  DeviceServices services;
  services.files = std::make_shared<platform::DeviceFileSystem>(root.string());
  services.programs = std::make_shared<platform::DevicePrograms>(services.files);
  services.log = std::make_shared<platform::MemoryLog>();
  services.traits = std::make_shared<platform::DeviceTraits>();
  return services;
}

}  // namespace

BundleProcess::BundleProcess(const std::filesystem::path& root)
    : _process(servicesIn(root), Time::virtualClock), _scope(_process.process()) {}

std::unique_ptr<BundleProcess> BundleProcess::open(const std::filesystem::path& root,
                                                   const std::string& path, std::string& problem) {
  std::unique_ptr<BundleProcess> opened(new BundleProcess(root));
  opened->_bundle = loadBundle(opened->_process.process(), path);
  auto info = std::make_shared<platform::BundleInfo>();
  info->path = path;
  opened->_process.process().provide<platform::BundleInfo>(std::move(info));
  if (!opened->_bundle.problem) return opened;
  problem = *opened->_bundle.problem;
  return nullptr;
}

std::unique_ptr<BundleProcess> BundleProcess::openInstalled(const DeviceTree& tree,
                                                            std::string& problem) {
  return open(tree.root(), std::string(bundlePath), problem);
}

std::unique_ptr<BundleProcess> BundleProcess::openBuilt(std::string& problem) {
  const std::filesystem::path bundle = findBuiltBundle();
  if (!bundle.empty()) return openFolder(bundle, problem);
  problem = "no complete " + std::string(bundleFolderName) +
            " next to the program. Build the project, or name a device with --device.";
  return nullptr;
}

std::unique_ptr<BundleProcess> BundleProcess::openFolder(const std::filesystem::path& bundle,
                                                         std::string& problem) {
  return open(bundle.parent_path(), "/" + bundle.filename().string(), problem);
}

}  // namespace settings

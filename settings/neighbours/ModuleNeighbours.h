#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/objects/Object.h"
#include "platform/uikit/images/UIImage.h"
#include "settings/neighbours/ModuleIndex.h"
#include "settings/neighbours/NeighbourRegistry.h"

namespace settings {

// The stand-ins that know of the installed Control Center modules:
//
// - "CCSModuleRepository" of the Control Center support library: `repositoryWithDefaults`, whose
//   `loadableModuleIdentifiers` is a set with the identifiers of the installed modules;
// - "ZVModuleRepository" of the product's main component: `forbiddenCCIdentifiers`, the array of
//   texts at forbiddenModulesPath; nothing is forbidden where there is no such file;
// - "CCUISettingsListController" of the system's settings, and "CCUISettingsModulesController",
//   its name before system version 14.0: "_identifiersToDescriptions" leads from the identifier of
//   each installed module to an object that answers `displayName` and `iconImage`.
//
// All of them answer with what the device tree holds (see ModuleIndex).
std::vector<NeighbourRegistry::Neighbour> moduleNeighbours();

// What the system shows of a module. Threads: main.
class ModuleDescription final : public platform::Object {
  PLATFORM_CLASS(ModuleDescription)

 public:
  ModuleDescription() = default;
  explicit ModuleDescription(ModuleFolder folder) : _folder(std::move(folder)) {}

  const std::string& displayName() const noexcept { return _folder.displayName; }
  // The folder's icon.png, at the size of an icon in a list. Read at the first call and kept;
  // empty where there is none, or the file is no image.
  std::shared_ptr<platform::UIImage> iconImage();

 private:
  ModuleFolder _folder;
  std::shared_ptr<platform::UIImage> _icon;
  bool _iconWasRead = false;
};

}  // namespace settings

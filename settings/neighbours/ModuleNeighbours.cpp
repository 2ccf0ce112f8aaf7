#include "settings/neighbours/ModuleNeighbours.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/device/DeviceTree.h"

namespace settings {

using platform::Array;
using platform::ClassBuilder;
using platform::ClassRegistry;
using platform::Process;
using platform::UIImage;
using platform::Value;

namespace {

constexpr double iconSide = 29;  // points
constexpr std::uint64_t largestIcon = 16ULL * 1024 * 1024;

ModuleIndex& index() {
  return Process::current().once<ModuleIndex>();
}

platform::FileSystem& files() {
  return Process::current().service<platform::FileSystem>();
}

// What the repository gives: a set, of which only the elements are asked for.
class ModuleIdentifierSet final : public platform::Object {
  PLATFORM_CLASS(ModuleIdentifierSet)

 public:
  ModuleIdentifierSet() = default;
  explicit ModuleIdentifierSet(Array identifiers) : _identifiers(std::move(identifiers)) {}
  Array allObjects() const { return _identifiers; }

 private:
  Array _identifiers;
};

class CCSModuleRepository final : public platform::Object {
  PLATFORM_CLASS(CCSModuleRepository)

 public:
  static std::shared_ptr<CCSModuleRepository> repositoryWithDefaults() {
    return platform::make<CCSModuleRepository>();
  }
  std::shared_ptr<ModuleIdentifierSet> loadableModuleIdentifiers() const {
    return std::make_shared<ModuleIdentifierSet>(index().identifiers());
  }
};

class ZVModuleRepository final : public platform::Object {
  PLATFORM_CLASS(ZVModuleRepository)

 public:
  static Array forbiddenCCIdentifiers() {
    const auto file = files().read(forbiddenModulesPath);
    if (file.error) return {};
    const auto list = platform::readPropertyList(file.bytes);
    return list.value.asArray() ? *list.value.asArray() : Array();
  }
};

// The system's settings controller, under either of its names.
class CCUISettingsListController final : public platform::Object {
  PLATFORM_CLASS(CCUISettingsListController)

 public:
  static constexpr std::string_view nameBeforeVersion14 = "CCUISettingsModulesController";

  platform::Dictionary descriptions() const {
    std::vector<std::pair<std::string, Value>> entries;
    for (const auto& folder : index().modules()) {
      entries.emplace_back(folder.identifier, std::make_shared<ModuleDescription>(folder));
    }
    return platform::Dictionary(std::move(entries));
  }
};

void registerRepository(ClassRegistry& registry) {
  registry.add(ClassBuilder<ModuleIdentifierSet>("NSObject")
                   .operation("allObjects", &ModuleIdentifierSet::allObjects)
                   .build());
  registry.add(
      ClassBuilder<CCSModuleRepository>("NSObject")
          .classOperation("repositoryWithDefaults", &CCSModuleRepository::repositoryWithDefaults)
          .operation("loadableModuleIdentifiers", &CCSModuleRepository::loadableModuleIdentifiers)
          .build());
}

void registerForbidden(ClassRegistry& registry) {
  registry.add(
      ClassBuilder<ZVModuleRepository>("NSObject")
          .classOperation("forbiddenCCIdentifiers", &ZVModuleRepository::forbiddenCCIdentifiers)
          .build());
}

void registerController(ClassRegistry& registry, std::string_view name) {
  using Controller = CCUISettingsListController;
  if (!registry.find(ModuleDescription::staticClassName)) {
    registry.add(ClassBuilder<ModuleDescription>("NSObject")
                     .operation("displayName", &ModuleDescription::displayName)
                     .operation("iconImage", &ModuleDescription::iconImage)
                     .build());
  }
  registry.add(ClassBuilder<Controller>(name, "NSObject")
                   .key("_identifiersToDescriptions", &Controller::descriptions)
                   .build());
}

// An image of whatever size as an icon: its longer side takes the room that an icon has.
std::shared_ptr<UIImage> readIcon(const std::string& path) {
  const auto file = files().read(path, largestIcon);
  const auto image = file.error ? nullptr : UIImage::imageWithData(platform::Data(file.bytes));
  if (!image) return nullptr;
  const double side = std::max(image->pixelWidth(), image->pixelHeight());
  return UIImage::imageWithData(*image->encodedData(), side / iconSide);
}

}  // namespace

std::shared_ptr<UIImage> ModuleDescription::iconImage() {
  if (!std::exchange(_iconWasRead, true)) _icon = readIcon(_folder.path + "/icon.png");
  return _icon;
}

std::vector<NeighbourRegistry::Neighbour> moduleNeighbours() {
  using Controller = CCUISettingsListController;
  return {
      {"CCSModuleRepository", &registerRepository},
      {"ZVModuleRepository", &registerForbidden},
      {std::string(Controller::staticClassName),
       [](ClassRegistry& registry) { registerController(registry, Controller::staticClassName); }},
      {std::string(Controller::nameBeforeVersion14),
       [](ClassRegistry& registry) {
         registerController(registry, Controller::nameBeforeVersion14);
       }},
  };
}

}  // namespace settings

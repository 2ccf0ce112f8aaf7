// Stand-ins for classes that know the installed Control Center modules. Their answers come from the
// device tree (see ModuleIndex).

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/uikit/images/UIImage.h"
#include "settings/device/DevicePaths.h"
#include "settings/neighbours/ModuleIndex.h"
#include "settings/neighbours/Neighbours.h"

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

// Scales an image so that its longer side is iconSide.
std::shared_ptr<UIImage> readIcon(const std::string& path) {
  const auto file = files().read(path, largestIcon);
  const auto image = file.error ? nullptr : UIImage::imageWithData(platform::Data(file.bytes));
  if (!image) return nullptr;
  const double side = std::max(image->pixelWidth(), image->pixelHeight());
  return UIImage::imageWithData(*image->encodedData(), side / iconSide);
}

// What the system shows for a module. Threads: main.
class ModuleDescription final : public platform::Object {
  PLATFORM_CLASS(ModuleDescription)

 public:
  ModuleDescription() = default;
  explicit ModuleDescription(ModuleFolder folder) : _folder(std::move(folder)) {}

  const std::string& displayName() const noexcept { return _folder.displayName; }
  // The folder's icon.png, at the size of an icon in a list. Read at the first call and cached;
  // empty if the file is missing or not an image.
  std::shared_ptr<UIImage> iconImage() {
    if (!std::exchange(_iconWasRead, true)) _icon = readIcon(_folder.path + "/icon.png");
    return _icon;
  }

 private:
  ModuleFolder _folder;
  std::shared_ptr<UIImage> _icon;
  bool _iconWasRead = false;
};

// The repository's result: a set; callers only read its elements.
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

class ForbiddenModules final : public platform::Object {
 public:
  static constexpr std::string_view staticClassName = moduleRepositoryClassName;
  std::string_view className() const override { return staticClassName; }

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
  platform::Dictionary descriptions() const {
    std::vector<std::pair<std::string, Value>> entries;
    for (const auto& folder : index().modules()) {
      entries.emplace_back(folder.identifier, std::make_shared<ModuleDescription>(folder));
    }
    return platform::Dictionary(std::move(entries));
  }
};

}  // namespace

void registerModuleRepository(ClassRegistry& registry, std::string_view className) {
  registry.add(ClassBuilder<ModuleIdentifierSet>("NSObject")
                   .operation("allObjects", &ModuleIdentifierSet::allObjects)
                   .build());
  registry.add(
      ClassBuilder<CCSModuleRepository>(className, "NSObject")
          .classOperation("repositoryWithDefaults", &CCSModuleRepository::repositoryWithDefaults)
          .operation("loadableModuleIdentifiers", &CCSModuleRepository::loadableModuleIdentifiers)
          .build());
}

void registerForbiddenModules(ClassRegistry& registry, std::string_view className) {
  registry.add(
      ClassBuilder<ForbiddenModules>(className, "NSObject")
          .classOperation("forbiddenCCIdentifiers", &ForbiddenModules::forbiddenCCIdentifiers)
          .build());
}

void registerModuleSettings(ClassRegistry& registry, std::string_view className) {
  if (!registry.find(ModuleDescription::staticClassName)) {
    registry.add(ClassBuilder<ModuleDescription>("NSObject")
                     .operation("displayName", &ModuleDescription::displayName)
                     .operation("iconImage", &ModuleDescription::iconImage)
                     .build());
  }
  registry.add(ClassBuilder<CCUISettingsListController>(className, "NSObject")
                   .key("_identifiersToDescriptions", &CCUISettingsListController::descriptions)
                   .build());
}

}  // namespace settings

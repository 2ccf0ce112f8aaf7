#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/values/Collections.h"
#include "platform/uikit/images/UIImage.h"

namespace zentrova::tests {

// The answers of the neighbours' classes. A service of the test's process.
struct Neighbours {
  platform::Array loadable;
  platform::Array forbidden;
  platform::Dictionary descriptions;
  int queries = 0;  // how often the loadable modules were asked for

  static Neighbours& current() { return platform::Process::current().service<Neighbours>(); }
};

class IdentifierSet final : public platform::Object {
  PLATFORM_CLASS(IdentifierSet)

 public:
  platform::Value allObjects() const {
    ++Neighbours::current().queries;
    return Neighbours::current().loadable;
  }
};

class CCSModuleRepository final : public platform::Object {
  PLATFORM_CLASS(CCSModuleRepository)

 public:
  static std::shared_ptr<CCSModuleRepository> repositoryWithDefaults() {
    return platform::make<CCSModuleRepository>();
  }
  std::shared_ptr<IdentifierSet> loadableModuleIdentifiers() const {
    return platform::make<IdentifierSet>();
  }
};

class ZVModuleRepository final : public platform::Object {
  PLATFORM_CLASS(ZVModuleRepository)

 public:
  static platform::Array forbiddenCCIdentifiers() { return Neighbours::current().forbidden; }
};

class ModuleDescription final : public platform::Object {
  PLATFORM_CLASS(ModuleDescription)

 public:
  ModuleDescription() = default;
  explicit ModuleDescription(std::string name) : _name(std::move(name)) {}
  platform::Value displayName() const { return _name; }
  std::shared_ptr<platform::UIImage> iconImage() const {
    return platform::UIImage::systemImageNamed("icon." + _name);
  }

 private:
  std::string _name;
};

// The settings controller under its name from system version 14.0 on, and under the older one.
class CCUISettingsListController final : public platform::Object {
  PLATFORM_CLASS(CCUISettingsListController)

 public:
  platform::Value descriptions() const { return Neighbours::current().descriptions; }
};

class CCUISettingsModulesController final : public platform::Object {
  PLATFORM_CLASS(CCUISettingsModulesController)

 public:
  platform::Value descriptions() const { return platform::Dictionary{{"a", old}}; }
  const std::shared_ptr<ModuleDescription> old = std::make_shared<ModuleDescription>("Old A");
};

inline void registerNeighbours(platform::ClassRegistry& registry) {
  using platform::ClassBuilder;
  registry.add(ClassBuilder<IdentifierSet>("NSObject")
                   .operation("allObjects", &IdentifierSet::allObjects)
                   .build());
  registry.add(
      ClassBuilder<CCSModuleRepository>("NSObject")
          .classOperation("repositoryWithDefaults", &CCSModuleRepository::repositoryWithDefaults)
          .operation("loadableModuleIdentifiers", &CCSModuleRepository::loadableModuleIdentifiers)
          .build());
  registry.add(
      ClassBuilder<ZVModuleRepository>("NSObject")
          .classOperation("forbiddenCCIdentifiers", &ZVModuleRepository::forbiddenCCIdentifiers)
          .build());
  registry.add(ClassBuilder<ModuleDescription>("NSObject")
                   .operation("displayName", &ModuleDescription::displayName)
                   .operation("iconImage", &ModuleDescription::iconImage)
                   .build());
  registry.add(ClassBuilder<CCUISettingsListController>("NSObject")
                   .key("_identifiersToDescriptions", &CCUISettingsListController::descriptions)
                   .build());
  registry.add(ClassBuilder<CCUISettingsModulesController>("NSObject")
                   .key("_identifiersToDescriptions", &CCUISettingsModulesController::descriptions)
                   .build());
}

}  // namespace zentrova::tests

#include "prefs/HBRootListController.h"

#include <string>
#include <utility>

#include "platform/foundation/Class.h"

namespace zentrova {

using platform::PSSpecifier;
using platform::Value;

bool HBRootListController::init() {
  if (!PSListController::init()) return false;
  _preferences = HBPreferences::preferencesForIdentifier(std::string(preferencesDomain));
  return true;
}

void HBRootListController::setPreferences(std::shared_ptr<HBPreferences> preferences) {
  _preferences = std::move(preferences);
}

Value HBRootListController::readPreferenceValue(const std::shared_ptr<PSSpecifier>& specifier) {
  if (!specifier) return {};
  Value defaultValue = specifier->propertyForKey("default");
  if (!_preferences) return defaultValue;
  const Value stored = _preferences->objectForKey(specifier->propertyForKey("key"));
  return stored ? stored : defaultValue;
}

void HBRootListController::setPreferenceValue(const Value& value,
                                              const std::shared_ptr<PSSpecifier>& specifier) {
  const Value key = specifier ? specifier->propertyForKey("key") : Value();
  if (_preferences) _preferences->setObject(value, key);
}

void HBRootListController::registerClass(platform::ClassRegistry& registry) {
  registry.add(
      platform::ClassBuilder<HBRootListController>("PSListController")
          .property("preferences", &HBRootListController::preferences,
                    &HBRootListController::setPreferences)
          .operation("readPreferenceValue:", &HBRootListController::readPreferenceValue)
          .operation("setPreferenceValue:specifier:", &HBRootListController::setPreferenceValue)
          .build());
}

}  // namespace zentrova

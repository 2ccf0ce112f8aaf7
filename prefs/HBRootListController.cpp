#include "prefs/HBRootListController.h"

#include <string>
#include <utility>

#include "platform/foundation/objects/ClassBuilder.h"

namespace zentrova {

using platform::PSSpecifier;
using platform::Value;

bool HBRootListController::init() {
  if (!PSListController::init()) return false;
  setPreferences(HBPreferences::preferencesForIdentifier(preferencesDomain));
  return true;
}

std::shared_ptr<HBPreferences> HBRootListController::preferences() const {
  const std::lock_guard lock(_mutex);
  return _preferences;
}

void HBRootListController::setPreferences(std::shared_ptr<HBPreferences> preferences) {
  const std::lock_guard lock(_mutex);
  _preferences.swap(preferences);  // the old store is released after the lock
}

Value HBRootListController::readPreferenceValue(const std::shared_ptr<PSSpecifier>& specifier) {
  if (!specifier) return {};
  Value defaultValue = specifier->propertyForKey("default");
  const auto store = preferences();
  if (!store) return defaultValue;
  const Value stored = store->objectForKey(specifier->propertyForKey("key"));
  return stored ? stored : defaultValue;
}

void HBRootListController::setPreferenceValue(const Value& value,
                                              const std::shared_ptr<PSSpecifier>& specifier) {
  const Value key = specifier ? specifier->propertyForKey("key") : Value();
  if (const auto store = preferences()) store->setObject(value, key);
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

#include "prefs/HBPreferences.h"

#include <utility>

#include "platform/foundation/objects/Class.h"
#include "platform/foundation/propertylist/PropertyList.h"

namespace zentrova {

using platform::MutableDictionary;
using platform::Value;

namespace {

// Does not depend on the install root.
constexpr std::string_view preferencesDirectory = "/var/jb/var/mobile/Library/Preferences/";

bool isTruthNumber(const Value& value) {
  if (!value.isNumber()) return false;
  const auto number = value.intValue();
  return number == 0 || number == 1;
}

}  // namespace

std::shared_ptr<HBPreferences> HBPreferences::preferencesForIdentifier(
    const std::optional<std::string>& identifier) {
  return platform::make(&HBPreferences::initWithIdentifier, identifier);
}

std::string HBPreferences::filePathForIdentifier(const std::optional<std::string>& identifier) {
  return std::string(preferencesDirectory) + identifier.value_or("(null)") + ".plist";
}

bool HBPreferences::initWithIdentifier(const std::optional<std::string>& identifier) {
  _identifier_rl = identifier;
  auto contents = platform::dictionaryWithContentsOfFile(filePathForIdentifier(identifier));
  _dictRep = contents ? std::make_shared<MutableDictionary>(*std::move(contents))
                      : std::make_shared<MutableDictionary>();
  return true;
}

void HBPreferences::setDictRep(std::shared_ptr<MutableDictionary> dictRep) {
  _dictRep = std::move(dictRep);
}

void HBPreferences::setIdentifier_rl(const std::optional<std::string>& identifier) {
  _identifier_rl = identifier;
}

Value HBPreferences::objectForKey(const Value& key) const {
  return _dictRep ? _dictRep->valueForKey(key) : Value();
}

Value HBPreferences::_objectForKey(const Value& key) const {
  return objectForKey(key);
}

Value HBPreferences::objectForKey(const Value& key, const Value& defaultValue) const {
  const Value stored = objectForKey(key);
  return stored ? stored : defaultValue;
}

void HBPreferences::setObject(const Value& object, const Value& key) {
  if (_dictRep) _dictRep->setValueForKey(object, key);
  writeToFile();
}

void HBPreferences::_setObject(const Value& object, const Value& key) {
  setObject(object, key);
}

void HBPreferences::removeObjectForKey(const Value& key) {
  if (_dictRep) _dictRep->removeObjectForKey(key);
  writeToFile();
}

void HBPreferences::writeToFile() const {
  // A failed write is not reported: the change stays in memory, and the next write retries it.
  if (_dictRep) platform::writeToFileAtomically(*_dictRep, filePathForIdentifier(_identifier_rl));
}

std::optional<std::string> HBPreferences::stringForKey(const Value& key) const {
  return stringForKey(key, std::nullopt);
}

std::optional<std::string> HBPreferences::stringForKey(
    const Value& key, const std::optional<std::string>& defaultValue) const {
  auto text = objectForKey(key).text();
  return text ? text : defaultValue;
}

bool HBPreferences::boolForKey(const Value& key) const {
  return boolForKey(key, false);
}

bool HBPreferences::boolForKey(const Value& key, bool defaultValue) const {
  const Value stored = objectForKey(key);
  return isTruthNumber(stored) ? stored.boolValue() : defaultValue;
}

std::int64_t HBPreferences::integerForKey(const Value& key) const {
  const Value stored = objectForKey(key);
  return stored.isNumber() ? stored.intValue() : 0;
}

std::int64_t HBPreferences::integerForKey(const Value& key, std::int64_t defaultValue) const {
  const Value stored = objectForKey(key);
  return stored.isNumber() ? stored.integerValue() : defaultValue;
}

double HBPreferences::floatForKey(const Value& key) const {
  return floatForKey(key, 0.0F);
}

double HBPreferences::floatForKey(const Value& key, float defaultValue) const {
  const Value stored = objectForKey(key);
  return static_cast<double>(stored.isNumber() ? stored.floatValue() : defaultValue);
}

void HBPreferences::registerBool(bool* variable, bool defaultValue, const Value& key) {
  const Value stored = objectForKey(key);
  *variable = stored.isNumber() ? stored.boolValue() : defaultValue;
  if (!stored.isNumber()) setObject(Value::boolean(defaultValue), key);
}

void HBPreferences::registerInteger(std::int64_t* variable, std::int64_t defaultValue,
                                    const Value& key) {
  const Value stored = objectForKey(key);
  if (stored.isNumber()) {
    *variable = stored.integerValue();
  } else {
    setObject(Value::integer(defaultValue), key);
  }
}

void HBPreferences::registerFloat(double* variable, double defaultValue, const Value& key) {
  const Value stored = objectForKey(key);
  if (stored.isNumber()) {
    *variable = static_cast<double>(stored.floatValue());
    return;
  }
  *variable = defaultValue;
  setObject(Value::single(static_cast<float>(defaultValue)), key);
}

}  // namespace zentrova

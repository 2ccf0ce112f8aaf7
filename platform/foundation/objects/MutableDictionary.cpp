#include "platform/foundation/objects/MutableDictionary.h"

#include <utility>

#include "platform/foundation/values/Exception.h"

namespace platform {
namespace {

// Returns the text of a string key. Other objects are not accepted; they raise like an object that
// is asked for its length.
std::string_view textOf(const Value& key) {
  if (const auto text = key.asString()) return *text;
  if (key.asData() != nullptr) {
    raiseUnrecognizedSelector("NSConcreteData", "hasPrefix:");
  }
  static_cast<void>(key.length());
  return {};
}

// A key with "@" is not an entry's key but a key of the dictionary itself.
Value valueIn(const Dictionary& entries, std::string_view key) {
  if (!key.starts_with('@')) return entries.valueForKey(key);
  const std::string_view ownKey = key.substr(1);
  if (ownKey == "count") return static_cast<std::int64_t>(entries.size());
  raiseUndefinedKey("__NSDictionaryM", ownKey, false);
}

}  // namespace

MutableDictionary::MutableDictionary(Dictionary entries) : _entries(std::move(entries)) {}

Value MutableDictionary::valueForKey(const Value& key) const {
  return key.isNone() ? Value() : valueIn(snapshot(), textOf(key));
}

void MutableDictionary::setValueForKey(const Value& value, const Value& key) {
  if (key.isNone()) {
    raiseInvalidArgument("-[__NSDictionaryM setObject:forKey:]: key cannot be nil");
  }
  store(value, textOf(key));
}

void MutableDictionary::removeObjectForKey(const Value& key) {
  if (key.isNone()) {
    raiseInvalidArgument("-[__NSDictionaryM removeObjectForKey:]: key cannot be nil");
  }
  store(Value(), textOf(key));
}

std::size_t MutableDictionary::count() const {
  return snapshot().size();
}

Dictionary MutableDictionary::snapshot() const {
  const std::lock_guard lock(_mutex);
  return _entries;
}

void MutableDictionary::replaceAll(Dictionary entries) {
  const std::lock_guard setter(_setterMutex);
  const std::lock_guard lock(_mutex);
  std::swap(_entries, entries);
}

// The replaced value is destroyed after all locks are released, because the destructor of an object
// may call this dictionary.
void MutableDictionary::store(const Value& value, std::string_view key) {
  Value replaced;
  Dictionary previous;
  const std::lock_guard setter(_setterMutex);
  if (storeInPlace(value, key, replaced)) return;
  previous = snapshot();
  replaced = previous.valueForKey(key);
  Dictionary changed = previous.with(key, value);
  const std::lock_guard lock(_mutex);
  std::swap(_entries, changed);
}

// If there is no snapshot, nobody else uses the entries, so they can be changed without a copy.
// Returns false if there is one.
bool MutableDictionary::storeInPlace(const Value& value, std::string_view key, Value& replaced) {
  const std::lock_guard lock(_mutex);
  if (!_entries.ownsAlone()) return false;
  replaced = _entries.valueForKey(key);
  _entries = std::move(_entries).with(key, value);
  return true;
}

bool MutableDictionary::writeEntries(const std::function<bool(const Dictionary&)>& write) const {
  const std::lock_guard writer(_writerMutex);
  return write(snapshot());
}

Value MutableDictionary::valueForKey(std::string_view key) {
  return valueIn(snapshot(), key);
}

void MutableDictionary::setValueForKey(const Value& value, std::string_view key) {
  store(value, key);
}

std::string MutableDictionary::description() const {
  return Value(snapshot()).description();
}

}  // namespace platform

#include "platform/foundation/objects/MutableDictionary.h"

#include <utility>

#include "platform/foundation/values/Exception.h"

namespace platform {
namespace {

// The text of a key that is a string. Other objects are not accepted as keys; they fail as an
// object does that is asked for its length.
std::string_view textOf(const Value& key) {
  if (const auto text = key.asString()) return *text;
  if (key.asData() != nullptr) {
    raiseUnrecognizedSelector("NSConcreteData", "hasPrefix:");
  }
  static_cast<void>(key.length());
  return {};
}

// What follows an "@" is no entry's key but one of the dictionary's own.
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

// What a setter replaces is destroyed after all locks are gone, since an object's end may come
// back here.
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

// Nobody else sees the entries where no snapshot is alive, so that they need no copy. False where
// one is.
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

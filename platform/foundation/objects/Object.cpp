#include "platform/foundation/objects/Object.h"

#include <array>
#include <cstdio>
#include <vector>

#include "platform/foundation/objects/Class.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Exception.h"

namespace platform {

namespace {

// Global instead of per process, because only tests read it.
std::atomic<std::int64_t> aliveObjects{0};

std::string classAndAddress(const Object& object) {
  std::array<char, 32> address{};
  std::snprintf(address.data(), address.size(), " %p", static_cast<const void*>(&object));
  return std::string(object.className()) + address.data();
}

std::string_view classNameOfValue(const Value& value) {
  if (value.isNumber()) return "__NSCFNumber";
  if (value.isString()) return "__NSCFString";
  return value.asData() != nullptr ? "NSConcreteData" : "__NSDate";
}

Value valueOfStep(const Value& from, std::string_view key) {
  if (from.isNone()) return {};
  if (const Dictionary* dictionary = from.asDictionary()) return dictionary->valueForKey(key);
  if (const auto object = from.asObject()) return object->valueForKey(key);
  if (from.asArray() == nullptr) raiseUndefinedKey(classNameOfValue(from), key, false);
  std::vector<Value> answers;
  for (const Value& element : *from.asArray()) answers.push_back(valueOfStep(element, key));
  return Array(std::move(answers));
}

// Removes the first step of the path and returns it.
std::string_view takeStep(std::string_view& keyPath) {
  const std::size_t dot = keyPath.find('.');
  const std::string_view step = keyPath.substr(0, dot);
  keyPath = dot == std::string_view::npos ? std::string_view() : keyPath.substr(dot + 1);
  return step;
}

}  // namespace

Object::Object() {
  aliveObjects.fetch_add(1, std::memory_order_relaxed);
}

Object::~Object() {
  aliveObjects.fetch_sub(1, std::memory_order_relaxed);
}

std::int64_t Object::liveCount() noexcept {
  return aliveObjects.load(std::memory_order_relaxed);
}

const Class& Object::objectClass() const {
  return _class != nullptr ? *_class : Process::current().classes().classOf(*this);
}

std::string Object::description() const {
  std::array<char, 32> address{};
  std::snprintf(address.data(), address.size(), ": %p>", static_cast<const void*>(this));
  return "<" + std::string(className()) + address.data();
}

bool Object::respondsToSelector(std::string_view selector) const {
  return objectClass().operation(selector) != nullptr;
}

Value Object::perform(std::string_view selector, std::span<const Value> arguments) {
  const Operation* operation = objectClass().operation(selector);
  if (operation == nullptr) raiseUnrecognizedSelector(className(), selector);
  return (*operation)(this, arguments);
}

Value Object::perform(std::string_view selector, std::initializer_list<Value> arguments) {
  return perform(selector, std::span<const Value>(arguments.begin(), arguments.size()));
}

Value Object::valueForKey(std::string_view key) {
  const Operation* getter = objectClass().getter(key);
  if (getter == nullptr) raiseUndefinedKey(classAndAddress(*this), key, false);
  return (*getter)(this);
}

void Object::setValueForKey(const Value& value, std::string_view key) {
  const Operation* setter = objectClass().setter(key);
  if (setter == nullptr) raiseUndefinedKey(classAndAddress(*this), key, true);
  (*setter)(this, {&value, 1});
}

Value Object::valueForKeyPath(std::string_view keyPath) {
  Value value = valueForKey(takeStep(keyPath));
  while (!keyPath.empty()) value = valueOfStep(value, takeStep(keyPath));
  return value;
}

void Object::setValueForKeyPath(const Value& value, std::string_view keyPath) {
  const std::size_t lastDot = keyPath.rfind('.');
  if (lastDot == std::string_view::npos) return setValueForKey(value, keyPath);
  const Value owner = valueForKeyPath(keyPath.substr(0, lastDot));
  const std::string_view key = keyPath.substr(lastDot + 1);
  if (owner.isNone()) return;
  const auto object = owner.asObject();
  if (!object && owner.asDictionary() != nullptr) {
    raiseInvalidArgument(
        "-[__NSDictionaryI setObject:forKey:]: unrecognized selector sent to "
        "instance");
  }
  if (!object) raiseUndefinedKey(classNameOfValue(owner), key, true);
  object->setValueForKey(value, key);
}

}  // namespace platform

#include "platform/foundation/objects/Class.h"

#include <algorithm>
#include <mutex>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/values/Exception.h"

namespace platform {

namespace {

std::size_t depthOf(const Class& type) {
  std::size_t depth = 0;
  for (const Class* each = type.base(); each != nullptr; each = each->base()) ++depth;
  return depth;
}

Class rootClass() {
  ClassBuilder<Object> builder("");
  builder.property("description", &Object::description)
      .operation("respondsToSelector:", &Object::respondsToSelector)
      .operation("valueForKeyPath:", &Object::valueForKeyPath)
      .operation("setValue:forKeyPath:", &Object::setValueForKeyPath)
      .operation("valueForKey:", &Object::valueForKey)
      .operation("setValue:forKey:", &Object::setValueForKey);
  return builder.build();
}

}  // namespace

Class::Class(std::string_view name, std::string_view baseName, bool (*isInstance)(const Object&))
    : _name(name), _baseName(baseName), _isInstance(isInstance) {}

Class::Class(Class&&) noexcept = default;

Class::~Class() = default;

void Class::addOperation(std::string_view selector, const Operation& operation) {
  _operations.insert_or_assign(std::string(selector), operation);
}

void Class::addClassOperation(std::string_view selector, const Operation& operation) {
  _classOperations.insert_or_assign(std::string(selector), operation);
}

void Class::addGetter(std::string_view key, const Operation& getter) {
  _getters.insert_or_assign(std::string(key), getter);
}

void Class::addSetter(std::string_view key, const Operation& setter) {
  _setters.insert_or_assign(std::string(key), setter);
  std::string selector = "set" + std::string(key) + ":";
  if (selector[3] >= 'a' && selector[3] <= 'z') selector[3] = static_cast<char>(selector[3] - 32);
  addOperation(selector, setter);
}

bool Class::isSubclassOf(std::string_view className) const noexcept {
  for (const Class* each = this; each != nullptr; each = each->_base) {
    if (each->_name == className) return true;
  }
  return false;
}

std::shared_ptr<Object> Class::allocate() const {
  if (!_factory) {
    raiseInvalidArgument("+[" + _name + " alloc]: an abstract class has no instances");
  }
  std::shared_ptr<Object> object = _factory();
  object->_class = this;
  return object;
}

std::shared_ptr<Object> Class::makeInstance() const {
  std::shared_ptr<Object> object = allocate();
  return object->init() ? object : nullptr;
}

std::shared_ptr<Object> Class::makeInstance(std::string_view initialiser,
                                            std::initializer_list<Value> arguments) const {
  std::shared_ptr<Object> object = allocate();
  return object->perform(initialiser, arguments).boolValue() ? object : nullptr;
}

const Operation* Class::nearest(Operations Class::*table, std::string_view name) const {
  for (const Class* each = this; each != nullptr; each = each->_base) {
    const Operations& operations = each->*table;
    if (const auto found = operations.find(name); found != operations.end()) return &found->second;
  }
  return nullptr;
}

const Operation* Class::operation(std::string_view selector) const {
  return nearest(&Class::_operations, selector);
}

const Operation* Class::classOperation(std::string_view selector) const {
  return nearest(&Class::_classOperations, selector);
}

const Operation* Class::getter(std::string_view key) const {
  return nearest(&Class::_getters, key);
}

const Operation* Class::setter(std::string_view key) const {
  return nearest(&Class::_setters, key);
}

Value Class::perform(std::string_view selector, std::span<const Value> arguments) const {
  const Operation* operation = classOperation(selector);
  if (operation == nullptr) raiseUnrecognizedClassSelector(_name, selector);
  return (*operation)(nullptr, arguments);
}

Value Class::perform(std::string_view selector, std::initializer_list<Value> arguments) const {
  return perform(selector, std::span<const Value>(arguments.begin(), arguments.size()));
}

ClassRegistry::ClassRegistry() {
  auto root = std::make_unique<Class>(rootClass());
  _classes.emplace(root->name(), std::move(root));
}

ClassRegistry::~ClassRegistry() = default;

const Class& ClassRegistry::add(Class definition) {
  const std::unique_lock lock(_mutex);
  if (_classes.contains(definition._name)) {
    raiseInvalidArgument("a class named " + definition._name + " is already registered");
  }
  const auto base = _classes.find(definition._baseName);
  if (base == _classes.end()) {
    raiseInvalidArgument("the base class " + definition._baseName + " of " + definition._name +
                         " is not registered");
  }
  definition._base = base->second.get();
  auto added = std::make_unique<Class>(std::move(definition));
  return *_classes.emplace(added->name(), std::move(added)).first->second;
}

const Class* ClassRegistry::find(std::string_view name) const {
  const std::shared_lock lock(_mutex);
  const auto found = _classes.find(name);
  return found == _classes.end() ? nullptr : found->second.get();
}

void ClassRegistry::remove(std::string_view name) {
  const std::unique_lock lock(_mutex);
  const auto found = _classes.find(name);
  if (found == _classes.end()) return;
  _removed.push_back(std::move(found->second));
  _classes.erase(found);
}

std::vector<std::string> ClassRegistry::names() const {
  const std::shared_lock lock(_mutex);
  std::vector<std::string> names;
  names.reserve(_classes.size());
  for (const auto& [name, type] : _classes) names.push_back(name);
  return names;
}

const Class& ClassRegistry::classOf(const Object& object) const {
  const Class* named = find(object.className());
  if (named != nullptr && named->_isInstance(object)) return *named;
  const std::shared_lock lock(_mutex);
  const Class* best = nullptr;
  for (const auto& [name, type] : _classes) {
    if (!type->_isInstance(object)) continue;
    if (best == nullptr || depthOf(*type) > depthOf(*best)) best = type.get();
  }
  if (best == nullptr) {
    throw Exception(std::string(internalInconsistencyException),
                    "no class is registered for " + std::string(object.className()));
  }
  return *best;
}

}  // namespace platform

#include "platform/foundation/objects/Class.h"

#include <algorithm>
#include <mutex>

#include "platform/foundation/values/Exception.h"

namespace platform {

namespace {

// The nearest entry of a name, in the tables of a class and of those above it.
template <class Table>
const typename Table::mapped_type* nearest(const Class* start, std::string_view name,
                                           const Table& (*tableOf)(const Class&)) {
  for (const Class* each = start; each != nullptr; each = each->base()) {
    const Table& table = tableOf(*each);
    if (const auto found = table.find(name); found != table.end()) return &found->second;
  }
  return nullptr;
}

std::size_t depthOf(const Class& type) {
  std::size_t depth = 0;
  for (const Class* each = type.base(); each != nullptr; each = each->base()) ++depth;
  return depth;
}

Class rootClass() {
  ClassBuilder<Object> builder("");
  builder.key("description", &Object::description)
      .operation("description", &Object::description)
      .operation("respondsToSelector:", &Object::respondsToSelector)
      .operation("valueForKeyPath:", &Object::valueForKeyPath)
      .operation("setValue:forKeyPath:", &Object::setValueForKeyPath)
      .operation("valueForKey:", &Object::valueForKey)
      .operation("setValue:forKey:", &Object::setValueForKey);
  return builder.build();
}

}  // namespace

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

const Class::Operation* Class::operation(std::string_view selector) const {
  using Table = decltype(_operations);
  return nearest<Table>(this, selector,
                        [](const Class& each) -> const Table& { return each._operations; });
}

const Class::ClassOperation* Class::classOperation(std::string_view selector) const {
  using Table = decltype(_classOperations);
  return nearest<Table>(this, selector,
                        [](const Class& each) -> const Table& { return each._classOperations; });
}

const Class::Getter* Class::getter(std::string_view key) const {
  using Table = decltype(_getters);
  return nearest<Table>(this, key, [](const Class& each) -> const Table& { return each._getters; });
}

const Class::Setter* Class::setter(std::string_view key) const {
  using Table = decltype(_setters);
  return nearest<Table>(this, key, [](const Class& each) -> const Table& { return each._setters; });
}

Value Class::perform(std::string_view selector, std::span<const Value> arguments) const {
  const ClassOperation* operation = classOperation(selector);
  if (operation == nullptr) raiseUnrecognizedClassSelector(_name, selector);
  return (*operation)(*this, arguments);
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
    raiseInvalidArgument("a class named " + definition._name + " is registered already");
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

#include "platform/preferences/PSSpecifier.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace platform {

PSSpecifier::PSSpecifier() {
  _fields.properties = std::make_shared<MutableDictionary>();
}

std::shared_ptr<PSSpecifier> PSSpecifier::preferenceSpecifierNamed(
    const std::optional<std::string>& name, const std::shared_ptr<Object>& target,
    const std::optional<std::string>& set, const std::optional<std::string>& get,
    const std::optional<std::string>& detail, PSCellType cell,
    const std::optional<std::string>& edit) {
  auto specifier = std::make_shared<PSSpecifier>();
  specifier->_fields.name = name;
  specifier->_fields.target = target;
  specifier->_fields.setter = set;
  specifier->_fields.getter = get;
  specifier->_fields.detail = detail;
  specifier->_fields.cellType = cell;
  specifier->_fields.edit = edit;
  return specifier;
}

std::shared_ptr<PSSpecifier> PSSpecifier::groupSpecifierWithName(
    const std::optional<std::string>& name) {
  return preferenceSpecifierNamed(name, nullptr, {}, {}, {}, PSGroupCell, {});
}

std::shared_ptr<PSSpecifier> PSSpecifier::emptyGroupSpecifier() {
  return groupSpecifierWithName(std::nullopt);
}

template <class T>
void PSSpecifier::write(T Fields::*field, T value) {
  // The old value is released after the lock, since its destructor may call back.
  const std::lock_guard lock(_mutex);
  std::swap(_fields.*field, value);
}

std::optional<std::string> PSSpecifier::name() const {
  return read(&Fields::name);
}
void PSSpecifier::setName(const std::optional<std::string>& name) {
  write(&Fields::name, name);
}

std::optional<std::string> PSSpecifier::title() const {
  auto text = name();
  return text ? text : propertyForKey("title").text();
}

std::optional<std::string> PSSpecifier::identifier() const {
  const Dictionary entries = properties()->snapshot();
  if (auto text = entries.valueForKey("id").text()) return text;
  if (auto text = entries.valueForKey("key").text()) return text;
  return name();
}

void PSSpecifier::setIdentifier(const std::optional<std::string>& identifier) {
  setProperty(identifier, "id");
}

PSCellType PSSpecifier::cellType() const {
  return read(&Fields::cellType);
}
void PSSpecifier::setCellType(PSCellType type) {
  write(&Fields::cellType, type);
}

Value PSSpecifier::propertyForKey(const std::string& key) const {
  return properties()->snapshot().valueForKey(key);
}

void PSSpecifier::setProperty(const Value& value, const std::string& key) {
  properties()->setValueForKey(value, Value(key));
}

void PSSpecifier::removePropertyForKey(const std::string& key) {
  properties()->removeObjectForKey(Value(key));
}

std::shared_ptr<MutableDictionary> PSSpecifier::properties() const {
  return read(&Fields::properties);
}

void PSSpecifier::setProperties(const std::shared_ptr<MutableDictionary>& properties) {
  write(&Fields::properties, properties ? properties : std::make_shared<MutableDictionary>());
}

std::shared_ptr<Object> PSSpecifier::target() const {
  return read(&Fields::target).lock();
}
void PSSpecifier::setTarget(const std::shared_ptr<Object>& target) {
  write(&Fields::target, std::weak_ptr<Object>(target));
}

std::optional<std::string> PSSpecifier::setter() const {
  return read(&Fields::setter);
}
void PSSpecifier::setSetter(const std::optional<std::string>& selector) {
  write(&Fields::setter, selector);
}

std::optional<std::string> PSSpecifier::getter() const {
  return read(&Fields::getter);
}
void PSSpecifier::setGetter(const std::optional<std::string>& selector) {
  write(&Fields::getter, selector);
}

std::optional<std::string> PSSpecifier::buttonAction() const {
  return read(&Fields::buttonAction);
}
void PSSpecifier::setButtonAction(const std::optional<std::string>& selector) {
  write(&Fields::buttonAction, selector);
}

std::optional<std::string> PSSpecifier::detailControllerClass() const {
  return read(&Fields::detail);
}
void PSSpecifier::setDetailControllerClass(const std::optional<std::string>& className) {
  write(&Fields::detail, className);
}

std::optional<std::string> PSSpecifier::editPaneClass() const {
  return read(&Fields::edit);
}

Value PSSpecifier::performGetter() {
  const auto receiver = target();
  const auto selector = getter();
  if (!receiver || !selector || !receiver->respondsToSelector(*selector)) return {};
  return performAction(*receiver, *selector, {Value(self<PSSpecifier>())});
}

void PSSpecifier::performSetterWithValue(const Value& value) {
  const auto receiver = target();
  const auto selector = setter();
  if (!receiver || !selector) return;
  performAction(*receiver, *selector, {value, Value(self<PSSpecifier>())});
}

Array PSSpecifier::validValues() const {
  const Value values = propertyForKey("validValues");
  return values.asArray() ? *values.asArray() : Array();
}

Array PSSpecifier::validTitles() const {
  const Value titles = propertyForKey("validTitles");
  return titles.asArray() ? *titles.asArray() : Array();
}

std::optional<std::size_t> PSSpecifier::indexOfValue(const Value& value) const {
  const Array values = validValues();
  const auto* found = std::find(values.begin(), values.end(), value);
  if (found == values.end()) return std::nullopt;
  return static_cast<std::size_t>(found - values.begin());
}

std::optional<std::string> PSSpecifier::titleForValue(const Value& value) const {
  const auto index = indexOfValue(value);
  if (!index) return std::nullopt;
  const Array titles = validTitles();
  return *index < titles.size() ? titles[*index].description() : value.description();
}

bool PSSpecifier::isEnabled() const {
  const Value enabled = propertyForKey("enabled");
  return !enabled.isNumber() || enabled.boolValue();
}

std::optional<std::string> PSSpecifier::problem() const {
  return read(&Fields::problem);
}
void PSSpecifier::setProblem(const std::optional<std::string>& problem) {
  write(&Fields::problem, problem);
}

std::string PSSpecifier::origin() const {
  auto origin = read(&Fields::origin);
  return origin ? *origin : "row \"" + title().value_or("") + "\"";
}
void PSSpecifier::setOrigin(const std::optional<std::string>& origin) {
  write(&Fields::origin, origin);
}

std::string PSSpecifier::description() const {
  std::string text = Object::description();
  text.pop_back();
  return text + " ID: " + identifier().value_or("(null)") + ", name: " + name().value_or("(null)") +
         ">";
}

Value performAction(Object& target, const std::string& selector,
                    std::initializer_list<Value> arguments) {
  const auto colons = static_cast<std::size_t>(std::ranges::count(selector, ':'));
  std::vector<Value> sent(arguments);
  sent.resize(colons);
  return target.perform(selector, std::span<const Value>(sent));
}

}  // namespace platform

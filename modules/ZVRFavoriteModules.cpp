#include "modules/ZVRFavoriteModules.h"

#include <utility>

#include "modules/InstalledModules.h"
#include "modules/Membership.h"
#include "modules/ModuleConfiguration.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/MutableDictionary.h"

namespace zentrova {

using platform::Array;
using platform::Value;

namespace {

constexpr std::string_view groupedKey = "groupedIdentifiers";
constexpr std::size_t fewestFavorites = 3;
constexpr std::size_t mostFavorites = 4;

}  // namespace

std::optional<MutableList> ZVRFavoriteModules::all() const {
  return _allIdentifiers ? _allIdentifiers : usableModuleIdentifiers();
}

MutableList* ZVRFavoriteModules::grouped() {
  if (!_groupedIdentifiers && _preferences) {
    _groupedIdentifiers = mutableListOf(_preferences->objectForKey(groupedKey));
  }
  return _groupedIdentifiers ? &*_groupedIdentifiers : nullptr;
}

std::size_t ZVRFavoriteModules::groupedCount() {
  const auto* const favorites = grouped();
  return favorites ? favorites->size() : 0;
}

const MutableList& ZVRFavoriteModules::updateNonGrouped() {
  const auto* const favorites = grouped();
  const Membership active(favorites ? *favorites : MutableList());
  _nonGroupedIdentifiers = all().value_or(MutableList());
  std::erase_if(_nonGroupedIdentifiers, [&](const Value& each) { return active.contains(each); });
  return _nonGroupedIdentifiers;
}

Value ZVRFavoriteModules::allIdentifiers() {
  return valueOf(all());
}

void ZVRFavoriteModules::setAllIdentifiers(const Value& identifiers) {
  _allIdentifiers = mutableListOf(identifiers);
}

Value ZVRFavoriteModules::enabledIdentifiers() {
  if (!_enabledIdentifiers) _enabledIdentifiers = loadedModuleIdentifiers();
  return valueOf(_enabledIdentifiers);
}

void ZVRFavoriteModules::setEnabledIdentifiers(const Value& identifiers) {
  _enabledIdentifiers = mutableListOf(identifiers);
}

Value ZVRFavoriteModules::disabledIdentifiers() {
  return valueOf(_disabledIdentifiers);
}

void ZVRFavoriteModules::setDisabledIdentifiers(const Value& identifiers) {
  _disabledIdentifiers = mutableListOf(identifiers);
}

Value ZVRFavoriteModules::groupedIdentifiers() {
  grouped();
  return valueOf(_groupedIdentifiers);
}

void ZVRFavoriteModules::setGroupedIdentifiers(const Value& identifiers) {
  _groupedIdentifiers = mutableListOf(identifiers);
}

Value ZVRFavoriteModules::nonGroupedIdentifiers() {
  return Array(updateNonGrouped());
}

void ZVRFavoriteModules::setNonGroupedIdentifiers(const Value& identifiers) {
  _nonGroupedIdentifiers = mutableListOf(identifiers).value_or(MutableList());
}

Value ZVRFavoriteModules::moduleDescriptionByIdentifier() {
  if (!_moduleDescriptionByIdentifier) _moduleDescriptionByIdentifier = moduleDescriptions();
  return _moduleDescriptionByIdentifier;
}

void ZVRFavoriteModules::setModuleDescriptionByIdentifier(const Value& descriptions) {
  _moduleDescriptionByIdentifier = descriptions;
}

Value ZVRFavoriteModules::descriptionOf(const Value& identifier) {
  const Value descriptions = moduleDescriptionByIdentifier();
  const auto key = identifier.asString();
  if (!key) return {};
  if (const auto* const dictionary = descriptions.asDictionary())
    return dictionary->valueForKey(*key);
  const auto mutableDescriptions = descriptions.as<platform::MutableDictionary>();
  return mutableDescriptions ? mutableDescriptions->snapshot().valueForKey(*key) : Value();
}

void ZVRFavoriteModules::saveSettings() {
  const auto* const favorites = grouped();
  const auto count = groupedCount();
  if (_preferences && (count == mostFavorites || count == fewestFavorites)) {
    _preferences->setObject(Array(*favorites), groupedKey);
  }
  addLoadedModules(favorites ? *favorites : MutableList());
}

void ZVRFavoriteModules::reload() {
  if (_tableView) _tableView->reloadData();
}

void ZVRFavoriteModules::reorder(std::int64_t from, std::int64_t to) {
  if (auto* const favorites = grouped()) {
    const Value moved = takeElementAt(*favorites, from);
    insertElementAt(*favorites, to, moved);
  }
  saveSettings();
}

// Only a removal that leaves exactly three is stored.
void ZVRFavoriteModules::removeFavorite(std::int64_t row) {
  auto* const favorites = grouped();
  if (!favorites) return;
  takeElementAt(*favorites, row);
  if (favorites->size() == fewestFavorites) saveSettings();
}

// Inserts at the row, or at the end. A module that has disappeared since the table was loaded is
// ignored.
void ZVRFavoriteModules::addFavorite(std::int64_t availableRow, std::optional<std::int64_t> row) {
  if (groupedCount() >= mostFavorites) return;
  const auto& available = updateNonGrouped();
  if (!hasElementAt(available, availableRow)) return;
  if (auto* const favorites = grouped()) {
    insertElementAt(*favorites, row.value_or(static_cast<std::int64_t>(favorites->size())),
                    elementAt(available, availableRow));
  }
  saveSettings();
}

void ZVRFavoriteModules::registerClass(platform::ClassRegistry& registry) {
  using Page = ZVRFavoriteModules;
  registry.add(
      platform::ClassBuilder<Page>("UIViewController")
          .operation("saveSettings", &Page::saveSettings)
          .property("allIdentifiers", &Page::allIdentifiers, &Page::setAllIdentifiers)
          .property("enabledIdentifiers", &Page::enabledIdentifiers, &Page::setEnabledIdentifiers)
          .property("disabledIdentifiers", &Page::disabledIdentifiers,
                    &Page::setDisabledIdentifiers)
          .property("groupedIdentifiers", &Page::groupedIdentifiers, &Page::setGroupedIdentifiers)
          .property("nonGroupedIdentifiers", &Page::nonGroupedIdentifiers,
                    &Page::setNonGroupedIdentifiers)
          .property("moduleDescriptionByIdentifier", &Page::moduleDescriptionByIdentifier,
                    &Page::setModuleDescriptionByIdentifier)
          .property("tableView", &Page::tableView, &Page::setTableView)
          .build());
}

}  // namespace zentrova

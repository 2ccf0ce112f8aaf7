#include "modules/ZVRArrangeModulesViewController.h"

#include <utility>

#include "modules/EditingPage.h"
#include "modules/ModuleCatalogue.h"
#include "modules/ZVRManageModuleViewController.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/views/UIImageView.h"

namespace zentrova {

using platform::Array;
using platform::UITableViewCell;
using platform::UITableViewCellEditingStyle;
using platform::Value;

namespace {

constexpr std::string_view moduleConfigKey = "moduleConfig";

// The power module is disabled until the user enables it.
Array defaultModules() {
  return {connectivityEntry, displaySliderEntry, audioSliderEntry, mediaEntry};
}

// Shows a chevron if the module has settings; otherwise removes the one that a reused cell has.
void showChevron(UITableViewCell& cell, bool hasSettings) {
  if (hasSettings) {
    cell.setEditingAccessoryView(
        platform::make(&platform::UIImageView::initWithImage, cell.disclosureChevronImage()));
    return;
  }
  if (const auto view = cell.editingAccessoryView()) view->removeFromSuperview();
  cell.setEditingAccessoryView(nullptr);
}

}  // namespace

Array ZVRArrangeModulesViewController::zvModuleIdentifiers() {
  MutableList identifiers;
  for (const auto& entry : moduleCatalogue()) identifiers.emplace_back(entry.identifier);
  return Array(std::move(identifiers));
}

bool ZVRArrangeModulesViewController::moduleHasSettingsWithID(const Value& identifier) const {
  const auto* const entry = catalogueEntry(identifier);
  return entry && entry->hasSettings;
}

std::optional<std::string> ZVRArrangeModulesViewController::moduleDisplayNameForIdentifier(
    const Value& identifier) const {
  const auto* const entry = catalogueEntry(identifier);
  if (!entry) return std::nullopt;
  return std::string(entry->displayName);
}

void ZVRArrangeModulesViewController::setPreferences(std::shared_ptr<HBPreferences> preferences) {
  _preferences = std::move(preferences);
}

MutableList* ZVRArrangeModulesViewController::enabled() {
  if (!_enabledModuleIdentifiers && _preferences) {
    const Value stored = _preferences->objectForKey(moduleConfigKey, defaultModules());
    // A stored value that is not an array counts as missing.
    auto& list = _enabledModuleIdentifiers.emplace(
        mutableListOf(stored).value_or(defaultModules().mutableCopy()));
    if (!containsElement(list, connectivityEntry)) list.insert(list.begin(), connectivityEntry);
  }
  return _enabledModuleIdentifiers ? &*_enabledModuleIdentifiers : nullptr;
}

MutableList& ZVRArrangeModulesViewController::disabled() {
  if (_disabledModuleIdentifiers) return *_disabledModuleIdentifiers;
  auto& list = _disabledModuleIdentifiers.emplace();
  const auto* const present = enabled();
  for (const auto& entry : moduleCatalogue()) {
    if (!present || !containsElement(*present, entry.identifier)) {
      list.emplace_back(entry.identifier);
    }
  }
  return list;
}

const Value& ZVRArrangeModulesViewController::entryAt(IndexPath indexPath) {
  static const MutableList nothing;
  const auto* const entries = list(indexPath.section);
  return elementAt(entries ? *entries : nothing, indexPath.row);
}

Value ZVRArrangeModulesViewController::enabledModuleIdentifiers() {
  enabled();
  return valueOf(_enabledModuleIdentifiers);
}

void ZVRArrangeModulesViewController::setEnabledModuleIdentifiers(const Value& identifiers) {
  _enabledModuleIdentifiers = mutableListOf(identifiers);
}

Value ZVRArrangeModulesViewController::disabledModuleIdentifiers() {
  return Array(disabled());
}

void ZVRArrangeModulesViewController::setDisabledModuleIdentifiers(const Value& identifiers) {
  _disabledModuleIdentifiers = mutableListOf(identifiers);
}

void ZVRArrangeModulesViewController::saveSettings() {
  if (_preferences) _preferences->_setObject(enabledModuleIdentifiers(), moduleConfigKey);
}

void ZVRArrangeModulesViewController::viewDidLoad() {
  UIViewController::viewDidLoad();
  _preferences = platform::make(&HBPreferences::initWithIdentifier, preferencesDomain);
  // The product shows the title with this spelling.
  prepareEditingPage(*this, "Arrage modules");
  const auto page = self<ZVRArrangeModulesViewController>();
  _tableView = makeEditingTable(page, page, SelectionDuringEditing::yes);
  showEditingTable(*this, _tableView);
}

void ZVRArrangeModulesViewController::reload() {
  if (_tableView) _tableView->reloadData();
}

std::int64_t ZVRArrangeModulesViewController::numberOfSectionsInTableView(const Table&) {
  return 2;
}

std::int64_t ZVRArrangeModulesViewController::numberOfRowsInSection(const Table&,
                                                                    std::int64_t section) {
  const auto* const entries = list(section);
  return entries ? static_cast<std::int64_t>(entries->size()) : 0;
}

std::shared_ptr<UITableViewCell> ZVRArrangeModulesViewController::cellForRowAtIndexPath(
    const Table& tableView, IndexPath indexPath) {
  auto cell = tableView->dequeueReusableCellWithIdentifier(moduleCellIdentifier, indexPath);
  const auto& entry = entryAt(indexPath);
  cell->textLabel()->setText(moduleDisplayNameForIdentifier(entry));
  showChevron(*cell, moduleHasSettingsWithID(entry));
  return cell;
}

std::optional<std::string> ZVRArrangeModulesViewController::titleForHeaderInSection(
    const Table&, std::int64_t section) {
  return section == 0 ? "Enabled modules:" : "Disabled modules:";
}

UITableViewCellEditingStyle ZVRArrangeModulesViewController::editingStyleForRowAtIndexPath(
    const Table&, IndexPath indexPath) {
  return indexPath.section == 0 ? UITableViewCellEditingStyle::deletion
                                : UITableViewCellEditingStyle::insertion;
}

bool ZVRArrangeModulesViewController::canEditRowAtIndexPath(const Table&, IndexPath) {
  return true;
}

// Every row can be dragged. A rejected move is undone when the table is reloaded.
bool ZVRArrangeModulesViewController::canMoveRowAtIndexPath(const Table&, IndexPath) {
  return true;
}

void ZVRArrangeModulesViewController::didSelectRowAtIndexPath(const Table& tableView,
                                                              IndexPath indexPath) {
  tableView->deselectRowAtIndexPath(indexPath, true);
  const auto& entry = entryAt(indexPath);
  const auto navigation = navigationController();
  if (!moduleHasSettingsWithID(entry) || !navigation) return;
  navigation->pushViewController(
      platform::make(&ZVRManageModuleViewController::initWithIdentifier, entry), true);
}

// Every style except deletion inserts. The pinned entry is never disabled.
bool ZVRArrangeModulesViewController::changeList(UITableViewCellEditingStyle style,
                                                 std::int64_t row) {
  auto* const present = enabled();
  if (!present) return false;
  if (style != UITableViewCellEditingStyle::deletion) {
    present->push_back(takeElementAt(disabled(), row));
    return true;
  }
  if (isPinnedEntry(elementAt(*present, row))) return false;
  auto& absent = disabled();
  absent.push_back(takeElementAt(*present, row));
  return true;
}

void ZVRArrangeModulesViewController::commitEditingStyle(const Table&,
                                                         UITableViewCellEditingStyle style,
                                                         IndexPath indexPath) {
  if (changeList(style, indexPath.row)) saveSettings();
  reload();
}

// The order of the disabled list cannot be changed.
bool ZVRArrangeModulesViewController::moveEntry(IndexPath from, IndexPath to) {
  if (from.section == 1 && to.section == 1) return false;
  auto* const source = list(from.section);
  auto* const target = list(to.section);
  if (!source || !target) return false;
  const Value entry = elementAt(*source, from.row);
  if (to.section == 1 && isPinnedEntry(entry)) return false;
  if (source == target) takeElementAt(*source, from.row);
  insertElementAt(*target, to.row, entry);
  if (source != target) takeElementAt(*source, from.row);
  return true;
}

void ZVRArrangeModulesViewController::moveRowAtIndexPath(const Table&, IndexPath from,
                                                         IndexPath to) {
  const auto known = [](std::int64_t section) { return section == 0 || section == 1; };
  if (!known(from.section) || !known(to.section)) return;
  const bool moved = moveEntry(from, to);
  reload();
  if (moved) saveSettings();
}

Value ZVRArrangeModulesViewController::identityForRowAtIndexPath(const Table&,
                                                                 IndexPath indexPath) {
  return entryAt(indexPath);
}

void ZVRArrangeModulesViewController::registerClass(platform::ClassRegistry& registry) {
  using Page = ZVRArrangeModulesViewController;
  registry.add(
      platform::ClassBuilder<Page>("UIViewController")
          .classOperation("zvModuleIdentifiers", &Page::zvModuleIdentifiers)
          .operation("moduleHasSettingsWithID:", &Page::moduleHasSettingsWithID)
          .operation("moduleDisplayNameForIdentifier:", &Page::moduleDisplayNameForIdentifier)
          .operation("saveSettings", &Page::saveSettings)
          .property("tableView", &Page::tableView, &Page::setTableView)
          .property("preferences", &Page::preferences, &Page::setPreferences)
          .property("enabledModuleIdentifiers", &Page::enabledModuleIdentifiers,
                    &Page::setEnabledModuleIdentifiers)
          .property("disabledModuleIdentifiers", &Page::disabledModuleIdentifiers,
                    &Page::setDisabledModuleIdentifiers)
          .build());
}

}  // namespace zentrova

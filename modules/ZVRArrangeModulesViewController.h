#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "modules/MutableList.h"
#include "platform/foundation/values/Collections.h"
#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/tables/UITableView.h"
#include "prefs/HBPreferences.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// The page where the user chooses which of the product's own modules are shown, and their order.
// Every accepted change is stored at once under "moduleConfig": the enabled entries, in order. The
// disabled list is never stored. The pinned entry is never disabled.
//
// Both lists are built on first use and kept for the life of the page; the store is not read again.
// Until the page has a store, the enabled list is none and the disabled list holds the whole
// catalogue.
//
// Threads: main.
class ZVRArrangeModulesViewController : public platform::UIViewController,
                                        public platform::UITableViewDataSource,
                                        public platform::UITableViewDelegate {
  PLATFORM_CLASS(ZVRArrangeModulesViewController)

 public:
  using Table = std::shared_ptr<platform::UITableView>;
  using IndexPath = platform::IndexPath;

  static void registerClass(platform::ClassRegistry& registry);

  // The catalogue's identifiers in catalogue order.
  static platform::Array zvModuleIdentifiers();
  bool moduleHasSettingsWithID(const platform::Value& identifier) const;
  // Nothing if the value is not a catalogue entry.
  std::optional<std::string> moduleDisplayNameForIdentifier(
      const platform::Value& identifier) const;

  const Table& tableView() const noexcept { return _tableView; }
  void setTableView(Table tableView) { _tableView = std::move(tableView); }
  const std::shared_ptr<HBPreferences>& preferences() const noexcept { return _preferences; }
  void setPreferences(std::shared_ptr<HBPreferences> preferences);

  // Section 0. The stored list. If the pinned entry is missing, it is inserted at the front (in
  // memory; the next save stores it). Strings that are not catalogue entries keep their places.
  platform::Value enabledModuleIdentifiers();
  void setEnabledModuleIdentifiers(const platform::Value& identifiers);
  // Section 1. Initially the catalogue entries that are not enabled, in catalogue order.
  platform::Value disabledModuleIdentifiers();
  void setDisabledModuleIdentifiers(const platform::Value& identifiers);

  // Stores the enabled list.
  void saveSettings();

  void viewDidLoad() override;

  std::int64_t numberOfSectionsInTableView(const Table& tableView) override;
  std::int64_t numberOfRowsInSection(const Table& tableView, std::int64_t section) override;
  std::shared_ptr<platform::UITableViewCell> cellForRowAtIndexPath(const Table& tableView,
                                                                   IndexPath indexPath) override;
  std::optional<std::string> titleForHeaderInSection(const Table& tableView,
                                                     std::int64_t section) override;
  platform::UITableViewCellEditingStyle editingStyleForRowAtIndexPath(const Table& tableView,
                                                                      IndexPath indexPath) override;
  bool canEditRowAtIndexPath(const Table& tableView, IndexPath indexPath) override;
  bool canMoveRowAtIndexPath(const Table& tableView, IndexPath indexPath) override;
  void didSelectRowAtIndexPath(const Table& tableView, IndexPath indexPath) override;
  void commitEditingStyle(const Table& tableView, platform::UITableViewCellEditingStyle style,
                          IndexPath indexPath) override;
  void moveRowAtIndexPath(const Table& tableView, IndexPath from, IndexPath to) override;
  platform::Value identityForRowAtIndexPath(const Table& tableView, IndexPath indexPath) override;

 private:
  MutableList* enabled();  // null if there is no list
  MutableList& disabled();
  MutableList* list(std::int64_t section) { return section == 0 ? enabled() : &disabled(); }
  const platform::Value& entryAt(IndexPath indexPath);
  // Both return whether the lists have changed.
  bool changeList(platform::UITableViewCellEditingStyle style, std::int64_t row);
  bool moveEntry(IndexPath from, IndexPath to);
  void reload();

  Table _tableView;
  std::shared_ptr<HBPreferences> _preferences;
  std::optional<MutableList> _enabledModuleIdentifiers;
  std::optional<MutableList> _disabledModuleIdentifiers;
};

}  // namespace zentrova

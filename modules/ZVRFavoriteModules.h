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

// The page where the user chooses three or four installed Control Center modules as favourites, and
// their order. The favourites are stored under "groupedIdentifiers" and added to the modules that
// Control Center loads.
//
// There are at most four favourites. A removal is stored only if it leaves exactly three. With
// fewer, the page and the file differ until there are three or four again and a change stores them.
// If nothing is stored, there is no list of favourites, and nothing can be added.
//
// The favourites and the descriptions are read once and kept. The installed modules are looked up
// on every query of the table.
//
// Threads: main.
class ZVRFavoriteModules : public platform::UIViewController,
                           public platform::UITableViewDataSource,
                           public platform::UITableViewDelegate {
  PLATFORM_CLASS(ZVRFavoriteModules)

 public:
  using Table = std::shared_ptr<platform::UITableView>;
  using IndexPath = platform::IndexPath;
  using Value = platform::Value;

  static void registerClass(platform::ClassRegistry& registry);

  // The installed, usable modules: the list that was set, otherwise looked up on each call. None
  // before system version 15.0.
  Value allIdentifiers();
  void setAllIdentifiers(const Value& identifiers);
  // The modules that Control Center loads, read once. None if the file does not list them.
  Value enabledIdentifiers();
  void setEnabledIdentifiers(const Value& identifiers);
  // Not used by the page itself.
  Value disabledIdentifiers();
  void setDisabledIdentifiers(const Value& identifiers);
  // The favourites, in order. None if nothing is stored.
  Value groupedIdentifiers();
  void setGroupedIdentifiers(const Value& identifiers);
  // The usable modules that are not favourites, computed on each call.
  Value nonGroupedIdentifiers();
  void setNonGroupedIdentifiers(const Value& identifiers);
  // The descriptions by module identifier, looked up once.
  Value moduleDescriptionByIdentifier();
  void setModuleDescriptionByIdentifier(const Value& descriptions);
  const Table& tableView() const noexcept { return _tableView; }
  void setTableView(Table tableView) { _tableView = std::move(tableView); }

  // Stores the favourites if there are three or four. Always adds them to the modules that Control
  // Center loads.
  void saveSettings();

  void viewDidLoad() override;

  std::int64_t numberOfSectionsInTableView(const Table& tableView) override;
  std::int64_t numberOfRowsInSection(const Table& tableView, std::int64_t section) override;
  std::shared_ptr<platform::UITableViewCell> cellForRowAtIndexPath(const Table& tableView,
                                                                   IndexPath indexPath) override;
  std::optional<std::string> titleForHeaderInSection(const Table& tableView,
                                                     std::int64_t section) override;
  std::optional<std::string> titleForFooterInSection(const Table& tableView,
                                                     std::int64_t section) override;
  platform::UITableViewCellEditingStyle editingStyleForRowAtIndexPath(const Table& tableView,
                                                                      IndexPath indexPath) override;
  bool canEditRowAtIndexPath(const Table& tableView, IndexPath indexPath) override;
  bool canMoveRowAtIndexPath(const Table& tableView, IndexPath indexPath) override;
  void commitEditingStyle(const Table& tableView, platform::UITableViewCellEditingStyle style,
                          IndexPath indexPath) override;
  void moveRowAtIndexPath(const Table& tableView, IndexPath from, IndexPath to) override;
  Value identityForRowAtIndexPath(const Table& tableView, IndexPath indexPath) override;

 private:
  std::optional<MutableList> all() const;
  MutableList* grouped();  // null if there is no list
  const MutableList& updateNonGrouped();
  std::size_t groupedCount();
  // None if modules have disappeared since the table counted them.
  Value elementOf(IndexPath indexPath);
  Value descriptionOf(const Value& identifier);
  void reorder(std::int64_t from, std::int64_t to);
  void removeFavorite(std::int64_t row);
  void addFavorite(std::int64_t availableRow, std::optional<std::int64_t> row);
  void reload();

  std::shared_ptr<HBPreferences> _preferences;
  std::optional<MutableList> _allIdentifiers;
  std::optional<MutableList> _enabledIdentifiers;
  std::optional<MutableList> _disabledIdentifiers;
  std::optional<MutableList> _groupedIdentifiers;
  MutableList _nonGroupedIdentifiers;
  Value _moduleDescriptionByIdentifier;
  Table _tableView;
};

}  // namespace zentrova

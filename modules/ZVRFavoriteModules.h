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

// The page on which the user chooses three or four installed Control Center modules as favourites,
// and their order. The favourites are stored under "groupedIdentifiers", and added to the modules
// that Control Center loads.
//
// Nothing is added once there are four. A removal is stored only when it leaves exactly three; with
// fewer, what is shown and what is stored differ until there are three or four again and a later
// change stores them. Without a stored value there is no list of favourites at all: nothing can be
// added to it.
//
// The favourites and the descriptions are read once and kept; the installed modules are asked for
// at every query of the table.
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

  // The installed, usable modules: what was set, else asked for at each call. None before system
  // version 15.0.
  Value allIdentifiers();
  void setAllIdentifiers(const Value& identifiers);
  // The modules that Control Center loads, read once; none where the file does not say.
  Value enabledIdentifiers();
  void setEnabledIdentifiers(const Value& identifiers);
  // Kept for whoever sets it; the page does not use it.
  Value disabledIdentifiers();
  void setDisabledIdentifiers(const Value& identifiers);
  // The favourites, in order; none where nothing is stored.
  Value groupedIdentifiers();
  void setGroupedIdentifiers(const Value& identifiers);
  // The usable modules that are no favourites, computed at each call.
  Value nonGroupedIdentifiers();
  void setNonGroupedIdentifiers(const Value& identifiers);
  // From module identifier to description, asked for once.
  Value moduleDescriptionByIdentifier();
  void setModuleDescriptionByIdentifier(const Value& descriptions);
  const Table& tableView() const noexcept { return _tableView; }
  void setTableView(Table tableView) { _tableView = std::move(tableView); }

  // Stores the favourites where there are three or four, and in every case adds them to the
  // modules that Control Center loads.
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
  MutableList* grouped();  // null where there is no list
  const MutableList& updateNonGrouped();
  std::size_t groupedCount();
  // None where the modules have become fewer since the table counted them.
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

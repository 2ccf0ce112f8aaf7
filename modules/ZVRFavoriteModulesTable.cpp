// The table of the favourites page.

#include "modules/EditingPage.h"
#include "modules/InstalledModules.h"
#include "modules/ZVRFavoriteModules.h"
#include "platform/foundation/log/LogFormat.h"
#include "platform/foundation/objects/NSLog.h"
#include "platform/uikit/views/UIImageView.h"

namespace zentrova {

using platform::UITableViewCell;
using platform::UITableViewCellEditingStyle;
using platform::Value;

namespace {

Value elementOrNone(const MutableList& list, std::int64_t index) {
  return hasElementAt(list, index) ? elementAt(list, index) : Value();
}

}  // namespace

void ZVRFavoriteModules::viewDidLoad() {
  UIViewController::viewDidLoad();
  _preferences = platform::make(&HBPreferences::initWithIdentifier, preferencesDomain);
  prepareEditingPage(*this, "Favorite modules");
  const auto page = self<ZVRFavoriteModules>();
  _tableView = makeEditingTable(page, page, SelectionDuringEditing::no);
  showEditingTable(*this, _tableView);
}

std::int64_t ZVRFavoriteModules::numberOfSectionsInTableView(const Table&) {
  return 2;
}

std::int64_t ZVRFavoriteModules::numberOfRowsInSection(const Table&, std::int64_t section) {
  return static_cast<std::int64_t>(section == 0 ? groupedCount() : updateNonGrouped().size());
}

Value ZVRFavoriteModules::elementOf(IndexPath indexPath) {
  if (indexPath.section != 0) return elementOrNone(updateNonGrouped(), indexPath.row);
  const auto* const favorites = grouped();
  return favorites ? elementOrNone(*favorites, indexPath.row) : Value();
}

std::shared_ptr<UITableViewCell> ZVRFavoriteModules::cellForRowAtIndexPath(const Table& tableView,
                                                                           IndexPath indexPath) {
  auto cell = tableView->dequeueReusableCellWithIdentifier(moduleCellIdentifier, indexPath);
  const Value identifier = elementOf(indexPath);
  const Value description = descriptionOf(identifier);
  if (description) {
    cell->textLabel()->setText(displayNameOf(description));
  } else if (indexPath.section == 0) {
    // A module that is no longer installed stays a favourite until the user removes it.
    cell->textLabel()->setText(platform::formatString("%@ (not installed)", {identifier}));
  }
  cell->imageView()->setImage(iconImageOf(description));
  return cell;
}

std::optional<std::string> ZVRFavoriteModules::titleForHeaderInSection(const Table&,
                                                                       std::int64_t section) {
  return section == 0 ? "Active modules (min 3, max 4)" : "Available modules";
}

std::optional<std::string> ZVRFavoriteModules::titleForFooterInSection(const Table&,
                                                                       std::int64_t section) {
  if (section == 1 && updateNonGrouped().empty()) {
    return "Nothing here? Please try doing a ldrestart.";
  }
  return "";
}

UITableViewCellEditingStyle ZVRFavoriteModules::editingStyleForRowAtIndexPath(const Table&,
                                                                              IndexPath indexPath) {
  return indexPath.section == 0 ? UITableViewCellEditingStyle::deletion
                                : UITableViewCellEditingStyle::insertion;
}

bool ZVRFavoriteModules::canEditRowAtIndexPath(const Table&, IndexPath) {
  return true;
}

bool ZVRFavoriteModules::canMoveRowAtIndexPath(const Table&, IndexPath) {
  return true;
}

// Depends on the section, not on the style.
void ZVRFavoriteModules::commitEditingStyle(const Table&, UITableViewCellEditingStyle,
                                            IndexPath indexPath) {
  if (indexPath.section == 0) {
    removeFavorite(indexPath.row);
  } else {
    addFavorite(indexPath.row, std::nullopt);
  }
  reload();
}

void ZVRFavoriteModules::moveRowAtIndexPath(const Table&, IndexPath from, IndexPath to) {
  if (from.section == 0 && to.section == 0) {
    platform::NSLog("[Zentrova] source: %@", {elementOf(from)});
    platform::NSLog("[Zentrova] destination: %@", {elementOf(to)});
    reorder(from.row, to.row);
  } else if (from.section == 0) {
    // The target row does not matter: the available list has its own order.
    removeFavorite(from.row);
  } else if (to.section == 0) {
    addFavorite(from.row, to.row);
  }
  reload();
}

// Uses the list of the last count, since a table asks this for every row.
Value ZVRFavoriteModules::identityForRowAtIndexPath(const Table&, IndexPath indexPath) {
  if (indexPath.section == 0) return elementOf(indexPath);
  return elementOrNone(_nonGroupedIdentifiers, indexPath.row);
}

}  // namespace zentrova

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "platform/preferences/PSSections.h"
#include "platform/preferences/PSSpecifier.h"
#include "platform/preferences/PSSpecifierRows.h"
#include "platform/preferences/PSTableCell.h"
#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/tables/UITableView.h"

namespace platform {

// Why a page could not be loaded, as shown to people.
struct PSPageProblem {
  std::string title;
  std::string text;
};

// A settings page: a table whose rows are specifiers. It keeps one cell per specifier, made when
// the row is first visible, and reuses it for that row.
//
// Threads: main, except for the functions on rows (keeping, finding, inserting, removing), which
// may be called from any thread. Each of these is atomic. The table is updated on the main thread.
class PSListController : public UIViewController,
                         public UITableViewDataSource,
                         public UITableViewDelegate {
  PLATFORM_CLASS(PSListController)

 public:
  // --- The list ---

  // The page's rows; an empty pointer if there is no list yet. The base returns the kept list. A
  // page overrides this: if no list is kept, it builds one, keeps it (keepSpecifiers) and returns
  // it. Called when the view is loaded and whenever the table needs rows.
  virtual PSSpecifiers specifiers();
  // The kept list, the field "_specifiers"; an empty pointer if there is none.
  PSSpecifiers keptSpecifiers() const { return _rows.snapshot(); }
  // Sets the field without updating the table. For overrides of specifiers().
  void keepSpecifiers(PSSpecifiers specifiers) { _rows.assign(std::move(specifiers)); }
  // The result of specifiers() as a value, for callers by name.
  Value specifiersValue();
  // Keeps the list and shows it.
  void setSpecifiers(const PSSpecifiers& specifiers);
  // Drops the rows and calls specifiers() again.
  virtual void reloadSpecifiers();

  // Reads "<name>.plist" of the page's bundle. `target` is the rows' target (held weakly). Sets the
  // page's title if the list has one. Never returns an empty pointer: a missing or damaged list
  // gives no rows and sets problem(), and a bad item gives a row that shows the problem
  // (PSSpecifier::problem).
  PSSpecifiers loadSpecifiersFromPlistName(const std::optional<std::string>& name,
                                           const std::shared_ptr<Object>& target);
  // Why the last list could not be loaded. Empty if it was loaded.
  const std::optional<PSPageProblem>& problem() const noexcept { return _problem; }

  // The folder on the device where the pages' resources are: that of the process's BundleInfo.
  // Empty if there is none.
  static std::optional<std::string> bundlePath();

  // --- Rows. An identifier finds its first row. Unknown rows and identifiers are ignored. ---

  std::shared_ptr<PSSpecifier> specifierForID(const std::string& identifier) const;
  std::optional<std::size_t> indexOfSpecifier(const std::shared_ptr<PSSpecifier>& specifier) const;
  std::optional<std::size_t> indexOfSpecifierID(const std::string& identifier) const;
  std::shared_ptr<PSSpecifier> specifierAtIndex(std::size_t index) const;

  void addSpecifier(const std::shared_ptr<PSSpecifier>& specifier, bool animated = false);
  void insertSpecifier(const std::shared_ptr<PSSpecifier>& specifier,
                       const std::shared_ptr<PSSpecifier>& afterSpecifier, bool animated);
  void insertSpecifier(const std::shared_ptr<PSSpecifier>& specifier,
                       const std::string& afterSpecifierID, bool animated);
  void insertSpecifier(const std::shared_ptr<PSSpecifier>& specifier, std::size_t atIndex,
                       bool animated);
  void insertContiguousSpecifiers(const PSSpecifierList& specifiers, std::size_t atIndex,
                                  bool animated);
  void insertContiguousSpecifiers(const PSSpecifierList& specifiers,
                                  const std::shared_ptr<PSSpecifier>& afterSpecifier,
                                  bool animated);
  void removeSpecifier(const std::shared_ptr<PSSpecifier>& specifier, bool animated);
  void removeSpecifierID(const std::string& identifier, bool animated);
  // The given rows, if they are adjacent and in this order.
  void removeContiguousSpecifiers(const PSSpecifierList& specifiers, bool animated);
  void replaceContiguousSpecifiers(const PSSpecifierList& specifiers, const PSSpecifierList& by,
                                   bool animated);

  // Updates the row from its specifier: name, value and height; for a group, the titles.
  void reloadSpecifier(const std::shared_ptr<PSSpecifier>& specifier, bool animated = false);
  void reloadSpecifierID(const std::string& identifier, bool animated = false);

  // --- Positions in the table ---

  std::shared_ptr<PSSpecifier> specifierAtIndexPath(IndexPath indexPath);
  std::optional<IndexPath> indexPathForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);
  // The group that starts the section. Empty for the rows before the first group.
  std::shared_ptr<PSSpecifier> groupForSection(std::int64_t section);

  // The row's cell. Empty until the row has been visible.
  std::shared_ptr<PSTableCell> cachedCellForSpecifier(
      const std::shared_ptr<PSSpecifier>& specifier) const;
  std::shared_ptr<PSTableCell> cachedCellForSpecifierID(const std::string& identifier) const;

  // The field "_table"; empty before the view is loaded.
  const std::shared_ptr<UITableView>& table() const noexcept { return _table; }

  // --- Where the page comes from ---

  // The row that opened this page, and the page of that row (held weakly).
  const std::shared_ptr<PSSpecifier>& specifier() const noexcept { return _specifier; }
  virtual void setSpecifier(const std::shared_ptr<PSSpecifier>& specifier);
  std::shared_ptr<PSListController> parentController() const { return _parentController.lock(); }
  void setParentController(const std::shared_ptr<PSListController>& controller) {
    _parentController = controller;
  }

  // --- Values ---

  // The base reads the value under the specifier's "key" from the preference file of its
  // "defaults"; otherwise returns the specifier's "default".
  virtual Value readPreferenceValue(const std::shared_ptr<PSSpecifier>& specifier);
  // The base writes the value to that file (none removes the key) and posts the notification named
  // by "PostNotification". A file that exists but cannot be read is not written; this is logged.
  virtual void setPreferenceValue(const Value& value,
                                  const std::shared_ptr<PSSpecifier>& specifier);

  // --- Taps ---

  // Handles a tap on the row: asks for confirmation if the specifier has a "confirmation", then
  // opens the page behind the row or performs its action. If it has neither, opens its property
  // "url" (a string or an NSURL) in the application. Does nothing for a row that is disabled or has
  // a problem.
  void performActionForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);
  // Opens a page of the specifier's detail class.
  void pushDetailForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);

  // --- Data source and delegate of the table; overrides call these ---

  std::int64_t numberOfSectionsInTableView(const std::shared_ptr<UITableView>& tableView) override;
  std::int64_t numberOfRowsInSection(const std::shared_ptr<UITableView>& tableView,
                                     std::int64_t section) override;
  std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(
      const std::shared_ptr<UITableView>& tableView, IndexPath indexPath) override;
  std::optional<std::string> titleForHeaderInSection(const std::shared_ptr<UITableView>& tableView,
                                                     std::int64_t section) override;
  std::optional<std::string> titleForFooterInSection(const std::shared_ptr<UITableView>& tableView,
                                                     std::int64_t section) override;
  bool canEditRowAtIndexPath(const std::shared_ptr<UITableView>& tableView,
                             IndexPath indexPath) override;
  Value identityForRowAtIndexPath(const std::shared_ptr<UITableView>& tableView,
                                  IndexPath indexPath) override;
  double heightForRowAtIndexPath(const std::shared_ptr<UITableView>& tableView,
                                 IndexPath indexPath) override;
  bool shouldHighlightRowAtIndexPath(const std::shared_ptr<UITableView>& tableView,
                                     IndexPath indexPath) override;
  void didSelectRowAtIndexPath(const std::shared_ptr<UITableView>& tableView,
                               IndexPath indexPath) override;

  void loadView() override;
  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;

 private:
  struct CachedCell {
    std::shared_ptr<PSSpecifier> specifier;
    std::shared_ptr<PSTableCell> cell;
  };

  const PSSections& sections();
  void rowsDidChange(const PSSpecifierRows::Change& change, bool animated);
  void showChange(const PSSpecifierRows::Change& change, bool animated);
  void forgetCellsOfGoneRows();
  std::shared_ptr<PSTableCell> makeCell(const std::shared_ptr<PSSpecifier>& specifier);
  std::shared_ptr<PSTableCell> makeCellOfClass(const std::string& className,
                                               const std::shared_ptr<PSSpecifier>& specifier);
  void refuseRow(const std::shared_ptr<PSSpecifier>& specifier, const std::string& problem);
  void askThenAct(const std::shared_ptr<PSSpecifier>& specifier, const Dictionary& confirmation);
  void act(const std::shared_ptr<PSSpecifier>& specifier);
  void openLink(const std::shared_ptr<PSSpecifier>& specifier);

  PSSpecifierRows _rows;
  std::shared_ptr<const PSSections> _sections;
  std::unordered_map<const PSSpecifier*, CachedCell> _cells;
  std::shared_ptr<UITableView> _table;
  std::shared_ptr<PSSpecifier> _specifier;
  std::weak_ptr<PSListController> _parentController;
  std::optional<PSPageProblem> _problem;
};

}  // namespace platform

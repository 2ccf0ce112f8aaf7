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

// Why a page could not be loaded, for people.
struct PSPageProblem {
  std::string title;
  std::string text;
};

// A page of a settings list: a table whose rows are specifiers. It keeps one cell per specifier,
// made when its row comes into sight, and hands the same one out again.
//
// Threads: main, but for the functions on rows (specifiers kept, found, inserted, removed), which
// any thread may call; each is whole by itself, and a table that another thread's change concerns
// is told on the main thread.
class PSListController : public UIViewController,
                         public UITableViewDataSource,
                         public UITableViewDelegate {
  PLATFORM_CLASS(PSListController)

 public:
  // --- The list ---

  // The page's rows; an empty pointer where there is no list yet. The base gives what is kept;
  // a page overrides it, builds its list where none is kept, keeps it (keepSpecifiers) and returns
  // it. The controller asks when the view is loaded and whenever the table needs rows.
  virtual PSSpecifiers specifiers();
  // The list that is kept, the field "_specifiers"; an empty pointer: none.
  PSSpecifiers keptSpecifiers() const { return _rows.snapshot(); }
  // Sets the field and tells nobody: for overrides of specifiers().
  void keepSpecifiers(PSSpecifiers specifiers) { _rows.assign(std::move(specifiers)); }
  // What specifiers() gives, as a value: for those who ask by name.
  Value specifiersValue();
  // Keeps the list and shows it.
  void setSpecifiers(const PSSpecifiers& specifiers);
  // Drops the rows and asks specifiers() for them again.
  virtual void reloadSpecifiers();

  // Reads "<name>.plist" of the page's bundle; the target is that of the rows (held weakly). Sets
  // the page's title where the list has one. Never an empty pointer: a list that is missing or
  // damaged gives no rows and sets problem(); an item that has something wrong gives a row that
  // says so (PSSpecifier::problem).
  PSSpecifiers loadSpecifiersFromPlistName(const std::optional<std::string>& name,
                                           const std::shared_ptr<Object>& target);
  // Why the list loaded last could not be; empty where it could.
  const std::optional<PSPageProblem>& problem() const noexcept { return _problem; }

  // The folder on the device where the pages' resources are: that of the process's BundleInfo.
  // Empty if there is none.
  static std::optional<std::string> bundlePath();

  // --- Rows. An identifier finds its first row; what is not there changes nothing. ---

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
  // The given rows, where they stand together in this order.
  void removeContiguousSpecifiers(const PSSpecifierList& specifiers, bool animated);
  void replaceContiguousSpecifiers(const PSSpecifierList& specifiers, const PSSpecifierList& by,
                                   bool animated);

  // Shows the row's specifier anew: its name, its value, its height; for a group its titles.
  void reloadSpecifier(const std::shared_ptr<PSSpecifier>& specifier, bool animated = false);
  void reloadSpecifierID(const std::string& identifier, bool animated = false);

  // --- Places in the table ---

  std::shared_ptr<PSSpecifier> specifierAtIndexPath(IndexPath indexPath);
  std::optional<IndexPath> indexPathForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);
  // The group that starts a section; empty for rows before the first group.
  std::shared_ptr<PSSpecifier> groupForSection(std::int64_t section);

  // The row's cell, where it has been in sight; else empty.
  std::shared_ptr<PSTableCell> cachedCellForSpecifier(
      const std::shared_ptr<PSSpecifier>& specifier) const;
  std::shared_ptr<PSTableCell> cachedCellForSpecifierID(const std::string& identifier) const;

  // The field "_table"; empty before the view is loaded.
  const std::shared_ptr<UITableView>& table() const noexcept { return _table; }

  // --- Where the page comes from ---

  // The row that opened the page, and the page with that row (held weakly).
  const std::shared_ptr<PSSpecifier>& specifier() const noexcept { return _specifier; }
  virtual void setSpecifier(const std::shared_ptr<PSSpecifier>& specifier);
  std::shared_ptr<PSListController> parentController() const { return _parentController.lock(); }
  void setParentController(const std::shared_ptr<PSListController>& controller) {
    _parentController = controller;
  }

  // --- Values ---

  // The base reads the value under the specifier's "key" from the preference file of its
  // "defaults"; else the specifier's "default".
  virtual Value readPreferenceValue(const std::shared_ptr<PSSpecifier>& specifier);
  // The base writes the value into that file (none removes it) and posts the notification that
  // "PostNotification" names. A file that is there but cannot be read is not written; the log
  // says so.
  virtual void setPreferenceValue(const Value& value,
                                  const std::shared_ptr<PSSpecifier>& specifier);

  // --- Taps ---

  // What a tap on the row does: asks first where the specifier has a "confirmation", then opens the
  // page behind the row, performs its action, or, where it has neither, hands its property "url" (a
  // text or an NSURL) to the application. Nothing for a row that is disabled or has a problem.
  void performActionForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);
  // Opens the page of the class that the specifier names as its detail.
  void pushDetailForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);

  // --- The table's questions; pages override them and call these ---

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

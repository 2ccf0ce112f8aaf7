// A list page as the data source and delegate of its table, and taps on its rows.

#include "platform/foundation/objects/NSLog.h"
#include "platform/foundation/objects/Process.h"
#include "platform/preferences/PSItemRules.h"
#include "platform/preferences/PSListController.h"
#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/controllers/UIApplication.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/drawing/UIDevice.h"

namespace platform {

namespace {

UITableViewCellStyle cellStyleFor(const PSSpecifier& specifier) {
  if (specifier.problem()) return UITableViewCellStyle::subtitle;
  switch (specifier.cellType()) {
    case PSTitleValueCell:
    case PSLinkListCell:
      return UITableViewCellStyle::value1;
    default:
      return UITableViewCellStyle::standard;
  }
}

// The class of the row's cell: its own if it names one and has no problem, otherwise that of its
// kind. A disabled row whose class does not exist is shown by its kind.
std::string cellClassNameFor(const PSSpecifier& specifier) {
  const auto own = specifier.propertyForKey("cellClass").text();
  const bool usable = own && (specifier.isEnabled() || !problemOfCellClass(*own));
  if (usable && !specifier.problem()) return *own;
  return std::string(cellClassNameForCellType(specifier.cellType()));
}

bool hasLink(const PSSpecifier& specifier) {
  const Value url = specifier.propertyForKey("url");
  return url.isString() || url.as<NSURL>();
}

bool hasAction(const PSSpecifier& specifier) {
  return specifier.cellType() == PSLinkListCell || specifier.buttonAction() ||
         specifier.detailControllerClass() || hasLink(specifier);
}

}  // namespace

std::int64_t PSListController::numberOfSectionsInTableView(const std::shared_ptr<UITableView>&) {
  return static_cast<std::int64_t>(sections().count());
}

std::int64_t PSListController::numberOfRowsInSection(const std::shared_ptr<UITableView>&,
                                                     std::int64_t section) {
  const PSSections& all = sections();
  const auto index = static_cast<std::size_t>(section);
  return section >= 0 && index < all.count() ? static_cast<std::int64_t>(all[index].rowCount) : 0;
}

std::optional<std::string> PSListController::titleForHeaderInSection(
    const std::shared_ptr<UITableView>&, std::int64_t section) {
  const auto group = groupForSection(section);
  return group ? group->name() : std::nullopt;
}

std::optional<std::string> PSListController::titleForFooterInSection(
    const std::shared_ptr<UITableView>&, std::int64_t section) {
  const auto group = groupForSection(section);
  return group ? group->propertyForKey("footerText").text() : std::nullopt;
}

bool PSListController::canEditRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {
  return false;
}

Value PSListController::identityForRowAtIndexPath(const std::shared_ptr<UITableView>&,
                                                  IndexPath indexPath) {
  return Value(specifierAtIndexPath(indexPath));
}

double PSListController::heightForRowAtIndexPath(const std::shared_ptr<UITableView>&,
                                                 IndexPath indexPath) {
  const auto specifier = specifierAtIndexPath(indexPath);
  const Value height = specifier ? specifier->propertyForKey("height") : Value();
  return height.isNumber() && height.doubleValue() > 0 ? height.doubleValue() : automaticDimension;
}

// --- Cells ---

std::shared_ptr<UITableViewCell> PSListController::cellForRowAtIndexPath(
    const std::shared_ptr<UITableView>&, IndexPath indexPath) {
  const auto specifier = specifierAtIndexPath(indexPath);
  if (!specifier) return nullptr;
  auto cell = cachedCellForSpecifier(specifier);
  if (!cell) {
    cell = makeCell(specifier);
    _cells.insert_or_assign(specifier.get(), CachedCell{specifier, cell});
  }
  cell->refreshCellContentsWithSpecifier(specifier);
  return cell;
}

std::shared_ptr<PSTableCell> PSListController::makeCell(
    const std::shared_ptr<PSSpecifier>& specifier) {
  const std::string className = cellClassNameFor(*specifier);
  auto problem = problemOfCellClass(className);
  if (!problem) {
    if (auto cell = makeCellOfClass(className, specifier)) return cell;
    problem = "the cell class \"" + className + "\" could not be initialized";
  }
  specifier->setProblem(specifier->origin() + ": " + *problem);
  auto cell = std::make_shared<PSTableCell>();
  cell->initWithStyle(UITableViewCellStyle::subtitle, className, specifier);
  return cell;
}

std::shared_ptr<PSTableCell> PSListController::makeCellOfClass(
    const std::string& className, const std::shared_ptr<PSSpecifier>& specifier) {
  const Class* found = NSClassFromString(className);
  auto cell = found->allocateAs<PSTableCell>();
  const auto style = cellStyleFor(*specifier);
  return cell && cell->initWithStyle(style, className, specifier) ? cell : nullptr;
}

// --- Taps ---

bool PSListController::shouldHighlightRowAtIndexPath(const std::shared_ptr<UITableView>&,
                                                     IndexPath indexPath) {
  const auto specifier = specifierAtIndexPath(indexPath);
  if (!specifier || specifier->problem() || !specifier->isEnabled()) return false;
  const auto cell = cachedCellForSpecifier(specifier);
  if (cell && cell->cellTarget() && cell->cellAction()) return true;
  return hasAction(*specifier) && !(cell && cell->control());
}

void PSListController::didSelectRowAtIndexPath(const std::shared_ptr<UITableView>& tableView,
                                               IndexPath indexPath) {
  const auto specifier = specifierAtIndexPath(indexPath);
  if (!specifier) return;
  const bool opensPage =
      specifier->cellType() == PSLinkListCell || specifier->detailControllerClass();
  // A row that opens a page stays selected until the user returns.
  if (!opensPage && tableView) tableView->deselectRowAtIndexPath(indexPath, true);
  performActionForSpecifier(specifier);
}

void PSListController::performActionForSpecifier(const std::shared_ptr<PSSpecifier>& specifier) {
  if (!specifier || specifier->problem() || !specifier->isEnabled()) return;
  if (const auto cell = cachedCellForSpecifier(specifier)) {
    const auto target = cell->cellTarget();
    const auto action = cell->cellAction();
    if (target && action) {
      performAction(*target, *action, {Value(specifier)});
      return;
    }
    if (cell->control()) return;
  }
  const Value confirmation = specifier->propertyForKey("confirmation");
  if (confirmation.asDictionary()) {
    askThenAct(specifier, *confirmation.asDictionary());
  } else {
    act(specifier);
  }
}

void PSListController::askThenAct(const std::shared_ptr<PSSpecifier>& specifier,
                                  const Dictionary& confirmation) {
  const auto textOr = [&](std::string_view key, const char* standard) {
    return confirmation.valueForKey(key).text().value_or(standard);
  };
  const bool isPad = UIDevice::currentDevice()->userInterfaceIdiom() == UserInterfaceIdiom::pad;
  const auto alert = UIAlertController::alertControllerWithTitle(
      confirmation.valueForKey("title").text(), confirmation.valueForKey("prompt").text(),
      isPad ? UIAlertControllerStyle::alert : UIAlertControllerStyle::actionSheet);
  const Value destructive = specifier->propertyForKey("isDestructive");
  const auto style = destructive.isNumber() && destructive.boolValue()
                         ? UIAlertActionStyle::destructive
                         : UIAlertActionStyle::standard;
  alert->addAction(UIAlertAction::actionWithTitle(
      textOr("okTitle", "OK"), style,
      [page = weakSelf<PSListController>(), specifier](const std::shared_ptr<UIAlertAction>&) {
        if (const auto controller = page.lock()) controller->act(specifier);
      }));
  alert->addAction(UIAlertAction::actionWithTitle(textOr("cancelTitle", "Cancel"),
                                                  UIAlertActionStyle::cancel, nullptr));
  presentViewController(alert, true);
}

void PSListController::act(const std::shared_ptr<PSSpecifier>& specifier) {
  if (specifier->cellType() == PSLinkListCell || specifier->detailControllerClass()) {
    pushDetailForSpecifier(specifier);
    return;
  }
  const auto cell = cachedCellForSpecifier(specifier);
  const auto target = cell ? cell->target() : specifier->target();
  const auto action = cell ? cell->action() : specifier->buttonAction();
  if (target && action) {
    performAction(*target, *action, {Value(specifier)});
  } else if (hasLink(*specifier)) {
    openLink(specifier);
  }
}

void PSListController::openLink(const std::shared_ptr<PSSpecifier>& specifier) {
  const Value value = specifier->propertyForKey("url");
  const auto url = value.isString() ? NSURL::URLWithString(*value.asString()) : value.as<NSURL>();
  if (url) {
    UIApplication::sharedApplication()->openURL(url);
  } else {
    refuseRow(specifier, "\"url\" is not an address");
  }
}

void PSListController::pushDetailForSpecifier(const std::shared_ptr<PSSpecifier>& specifier) {
  const auto className = specifier->detailControllerClass().value_or("PSListItemsController");
  const Class* found = NSClassFromString(className);
  if (!found || !found->isSubclassOf("UIViewController")) {
    refuseRow(specifier, "the page class \"" + className + "\" does not exist");
    return;
  }
  const auto made = std::dynamic_pointer_cast<UIViewController>(found->makeInstance());
  if (!made) {
    refuseRow(specifier, "the page class \"" + className + "\" could not be initialized");
    return;
  }
  if (const auto list = std::dynamic_pointer_cast<PSListController>(made)) {
    list->setParentController(self<PSListController>());
    list->setSpecifier(specifier);
  }
  if (!made->title()) made->setTitle(specifier->title());
  if (const auto navigation = navigationController()) navigation->pushViewController(made, true);
}

void PSListController::refuseRow(const std::shared_ptr<PSSpecifier>& specifier,
                                 const std::string& problem) {
  specifier->setProblem(specifier->origin() + ": " + problem);
  NSLog("[Preferences] %@", {specifier->problem()});
  _cells.erase(specifier.get());
  reloadSpecifier(specifier);
}

}  // namespace platform

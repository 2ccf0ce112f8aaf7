#include "platform/preferences/PSListController.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/objects/NSLog.h"
#include "platform/foundation/objects/Process.h"
#include "platform/preferences/BundleInfo.h"
#include "platform/preferences/DarwinNotifications.h"
#include "platform/preferences/PSPreferenceFile.h"
#include "platform/preferences/PSSpecifierFile.h"
#include "platform/uikit/drawing/UITraits.h"

namespace platform {

// --- The list ---

PSSpecifiers PSListController::specifiers() {
  return keptSpecifiers();
}

Value PSListController::specifiersValue() {
  return valueOfSpecifiers(specifiers());
}

void PSListController::setSpecifiers(const PSSpecifiers& specifiers) {
  keepSpecifiers(specifiers);
  forgetCellsOfGoneRows();
  if (_table) _table->reloadData();
}

void PSListController::reloadSpecifiers() {
  keepSpecifiers(nullptr);
  setSpecifiers(specifiers());
}

PSSpecifiers PSListController::loadSpecifiersFromPlistName(const std::optional<std::string>& name,
                                                           const std::shared_ptr<Object>& target) {
  PSSpecifierFile file = readSpecifierFile(name, bundlePath(), target);
  _problem.reset();
  if (file.problem) _problem = PSPageProblem{"This page cannot be shown", *file.problem};
  if (file.title) setTitle(file.title);
  return makeSpecifiers(std::move(file.specifiers));
}

std::optional<std::string> PSListController::bundlePath() {
  const auto info = Process::current().serviceOrNull<BundleInfo>();
  return info ? std::optional(info->path) : std::nullopt;
}

// --- Life ---

void PSListController::loadView() {
  UIViewController::loadView();
  const bool isInset = currentTraits().systemVersion.isAtLeast(15);
  const auto style = isInset ? UITableViewStyle::insetGrouped : UITableViewStyle::grouped;
  _table = std::make_shared<UITableView>();
  _table->initWithFrame(viewIfLoaded()->bounds(), style);
  _table->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  _table->setDataSource(self<PSListController>());
  _table->setDelegate(self<PSListController>());
  viewIfLoaded()->addSubview(_table);
}

void PSListController::viewDidLoad() {
  UIViewController::viewDidLoad();
  sections();
}

void PSListController::viewWillAppear(bool animated) {
  UIViewController::viewWillAppear(animated);
  if (const auto selected = _table->indexPathForSelectedRow()) {
    _table->deselectRowAtIndexPath(*selected, animated);
  }
}

void PSListController::setSpecifier(const std::shared_ptr<PSSpecifier>& specifier) {
  _specifier = specifier;
}

// --- Values ---

Value PSListController::readPreferenceValue(const std::shared_ptr<PSSpecifier>& specifier) {
  if (!specifier) return {};
  const auto domain = specifier->propertyForKey("defaults").text();
  const auto key = specifier->propertyForKey("key").text();
  const Value stored = domain && key ? valueInDomain(*domain, *key) : Value();
  return stored ? stored : specifier->propertyForKey("default");
}

void PSListController::setPreferenceValue(const Value& value,
                                          const std::shared_ptr<PSSpecifier>& specifier) {
  if (!specifier) return;
  const auto domain = specifier->propertyForKey("defaults").text();
  const auto key = specifier->propertyForKey("key").text();
  if (!domain || !key) return;
  if (const auto problem = setValueInDomain(*domain, *key, value)) {
    NSLog("[Preferences] %@ of %@ was not written: %@", {*key, *domain, *problem});
    return;
  }
  const auto notification = specifier->propertyForKey("PostNotification").text();
  const auto center = Process::current().serviceOrNull<DarwinNotifications>();
  if (notification && center) center->post(*notification);
}

}  // namespace platform

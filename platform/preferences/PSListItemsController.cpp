#include "platform/preferences/PSListItemsController.h"

#include <utility>

#include "platform/preferences/PSValueTableCell.h"

namespace platform {

PSSpecifiers PSListItemsController::specifiers() {
  if (auto kept = keptSpecifiers()) return kept;
  if (!specifier()) return nullptr;
  PSSpecifierList rows{PSSpecifier::emptyGroupSpecifier()};
  rows.front()->setProperty(specifier()->propertyForKey("footerText"), "footerText");
  for (const Value& value : specifier()->validValues()) {
    rows.push_back(PSSpecifier::preferenceSpecifierNamed(specifier()->titleForValue(value), nullptr,
                                                         {}, {}, {}, PSListItemCell, {}));
    rows.back()->setProperty(value, "value");
  }
  keepSpecifiers(makeSpecifiers(std::move(rows)));
  return keptSpecifiers();
}

std::optional<std::size_t> PSListItemsController::chosenIndex() {
  if (!specifier()) return std::nullopt;
  const Value value = specifier()->getter() ? specifier()->performGetter() : _chosen;
  return value ? specifier()->indexOfValue(value) : std::nullopt;
}

std::shared_ptr<UITableViewCell> PSListItemsController::cellForRowAtIndexPath(
    const std::shared_ptr<UITableView>& tableView, IndexPath indexPath) {
  auto cell = PSListController::cellForRowAtIndexPath(tableView, indexPath);
  if (const auto item = std::dynamic_pointer_cast<PSListItemTableCell>(cell)) {
    item->setChecked(chosenIndex() == static_cast<std::size_t>(indexPath.row));
  }
  return cell;
}

bool PSListItemsController::shouldHighlightRowAtIndexPath(const std::shared_ptr<UITableView>&,
                                                          IndexPath indexPath) {
  return specifierAtIndexPath(indexPath) != nullptr;
}

void PSListItemsController::didSelectRowAtIndexPath(const std::shared_ptr<UITableView>& tableView,
                                                    IndexPath indexPath) {
  const auto row = specifierAtIndexPath(indexPath);
  if (tableView) tableView->deselectRowAtIndexPath(indexPath, true);
  if (!row || !specifier() || chosenIndex() == static_cast<std::size_t>(indexPath.row)) return;
  _chosen = row->propertyForKey("value");
  specifier()->performSetterWithValue(_chosen);
  showTicks();
  if (const auto opener = parentController()) opener->reloadSpecifier(specifier());
}

void PSListItemsController::showTicks() {
  const auto chosen = chosenIndex();
  for (std::size_t index = 0; const auto& row : *specifiers()) {
    if (row->cellType() == PSGroupCell) continue;
    const auto cell = std::dynamic_pointer_cast<PSListItemTableCell>(cachedCellForSpecifier(row));
    if (cell) cell->setChecked(chosen == index);
    ++index;
  }
}

}  // namespace platform

// The rows of a list page, and the table updates when they change.

#include <algorithm>
#include <utility>

#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/preferences/PSListController.h"

namespace platform {

namespace {

using Change = PSSpecifierRows::Change;

bool hasGroup(const PSSpecifiers& rows, std::size_t index, std::size_t count) {
  const auto first = rows->begin() + static_cast<PSSpecifierList::difference_type>(index);
  return std::any_of(first, first + static_cast<PSSpecifierList::difference_type>(count),
                     [](const auto& row) { return row->cellType() == PSGroupCell; });
}

// Whether the run of specifiers consists of whole sections: from a group to another or to the end.
bool isWholeSections(const PSSpecifiers& rows, std::size_t index, std::size_t count) {
  const auto isGroupOrEnd = [&](std::size_t at) {
    return at == rows->size() || (*rows)[at]->cellType() == PSGroupCell;
  };
  return count > 0 && (*rows)[index]->cellType() == PSGroupCell && isGroupOrEnd(index + count);
}

std::vector<IndexPath> pathsOf(const PSSections& sections, std::size_t index, std::size_t count) {
  std::vector<IndexPath> paths;
  for (std::size_t at = index; at < index + count; ++at) {
    const auto position = sections.positionOf(at);
    if (position) {
      paths.push_back(
          {static_cast<std::int64_t>(position->section), static_cast<std::int64_t>(position->row)});
    }
  }
  return paths;
}

std::vector<std::int64_t> sectionsOf(const PSSections& sections, std::size_t index,
                                     std::size_t count) {
  std::vector<std::int64_t> found;
  for (std::size_t at = index; at < index + count; ++at) {
    if ((*sections.rows())[at]->cellType() != PSGroupCell) continue;
    found.push_back(static_cast<std::int64_t>(*sections.sectionOf(at)));
  }
  return found;
}

bool changesRowsOnly(const Change& change, const PSSections& before, const PSSections& after) {
  return before.count() == after.count() &&
         !hasGroup(change.before, change.index, change.removed) &&
         !hasGroup(change.after, change.index, change.inserted);
}

void changeRows(UITableView& table, const Change& change, const PSSections& before,
                const PSSections& after, UITableViewRowAnimation animation) {
  const auto gone = pathsOf(before, change.index, change.removed);
  const auto come = pathsOf(after, change.index, change.inserted);
  table.beginUpdates();
  if (!gone.empty()) table.deleteRowsAtIndexPaths(gone, animation);
  if (!come.empty()) table.insertRowsAtIndexPaths(come, animation);
  table.endUpdates();
}

void changeTable(UITableView& table, const Change& change, UITableViewRowAnimation animation) {
  const PSSections before(change.before);
  const PSSections after(change.after);
  if (changesRowsOnly(change, before, after)) {
    changeRows(table, change, before, after, animation);
  } else if (change.removed == 0 && isWholeSections(change.after, change.index, change.inserted)) {
    table.insertSections(sectionsOf(after, change.index, change.inserted), animation);
  } else if (change.inserted == 0 && isWholeSections(change.before, change.index, change.removed)) {
    table.deleteSections(sectionsOf(before, change.index, change.removed), animation);
  } else {
    table.reloadData();
  }
}

bool isMainThread() {
  const auto scheduler = Process::current().serviceOrNull<Scheduler>();
  return !scheduler || scheduler->isMainThread();
}

}  // namespace

// --- Finding ---

std::shared_ptr<PSSpecifier> PSListController::specifierForID(const std::string& identifier) const {
  const PSSpecifiers rows = _rows.snapshot();
  const auto index = platform::indexOfSpecifierID(rows, identifier);
  return index ? (*rows)[*index] : nullptr;
}

std::optional<std::size_t> PSListController::indexOfSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier) const {
  return platform::indexOfSpecifier(_rows.snapshot(), specifier.get());
}

std::optional<std::size_t> PSListController::indexOfSpecifierID(
    const std::string& identifier) const {
  return platform::indexOfSpecifierID(_rows.snapshot(), identifier);
}

std::shared_ptr<PSSpecifier> PSListController::specifierAtIndex(std::size_t index) const {
  const PSSpecifiers rows = _rows.snapshot();
  return rows && index < rows->size() ? (*rows)[index] : nullptr;
}

const PSSections& PSListController::sections() {
  PSSpecifiers rows = keptSpecifiers();
  if (!rows) {
    rows = specifiers();
    keepSpecifiers(rows);
  }
  if (!_sections || _sections->rows() != rows) _sections = std::make_shared<PSSections>(rows);
  return *_sections;
}

std::shared_ptr<PSSpecifier> PSListController::specifierAtIndexPath(IndexPath indexPath) {
  if (indexPath.section < 0 || indexPath.row < 0) return nullptr;
  return sections().specifierAt(static_cast<std::size_t>(indexPath.section),
                                static_cast<std::size_t>(indexPath.row));
}

std::shared_ptr<PSSpecifier> PSListController::groupForSection(std::int64_t section) {
  return section < 0 ? nullptr : sections().groupAt(static_cast<std::size_t>(section));
}

std::optional<IndexPath> PSListController::indexPathForSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier) {
  const PSSections& all = sections();
  const auto index = platform::indexOfSpecifier(all.rows(), specifier.get());
  const auto position = index ? all.positionOf(*index) : std::nullopt;
  if (!position) return std::nullopt;
  return IndexPath{static_cast<std::int64_t>(position->section),
                   static_cast<std::int64_t>(position->row)};
}

// --- Changing ---

void PSListController::addSpecifier(const std::shared_ptr<PSSpecifier>& specifier, bool animated) {
  if (specifier) rowsDidChange(_rows.insertAtEnd({specifier}), animated);
}

void PSListController::insertSpecifier(const std::shared_ptr<PSSpecifier>& specifier,
                                       const std::shared_ptr<PSSpecifier>& afterSpecifier,
                                       bool animated) {
  insertContiguousSpecifiers({specifier}, afterSpecifier, animated);
}

void PSListController::insertSpecifier(const std::shared_ptr<PSSpecifier>& specifier,
                                       const std::string& afterSpecifierID, bool animated) {
  if (specifier) rowsDidChange(_rows.insertAfterID({specifier}, afterSpecifierID), animated);
}

void PSListController::insertSpecifier(const std::shared_ptr<PSSpecifier>& specifier,
                                       std::size_t atIndex, bool animated) {
  insertContiguousSpecifiers({specifier}, atIndex, animated);
}

void PSListController::insertContiguousSpecifiers(const PSSpecifierList& specifiers,
                                                  std::size_t atIndex, bool animated) {
  if (std::ranges::find(specifiers, nullptr) != specifiers.end()) return;
  rowsDidChange(_rows.insert(specifiers, atIndex), animated);
}

void PSListController::insertContiguousSpecifiers(
    const PSSpecifierList& specifiers, const std::shared_ptr<PSSpecifier>& afterSpecifier,
    bool animated) {
  if (std::ranges::find(specifiers, nullptr) != specifiers.end()) return;
  rowsDidChange(_rows.insertAfter(specifiers, afterSpecifier.get()), animated);
}

void PSListController::removeSpecifier(const std::shared_ptr<PSSpecifier>& specifier,
                                       bool animated) {
  rowsDidChange(_rows.remove(specifier.get()), animated);
}

void PSListController::removeSpecifierID(const std::string& identifier, bool animated) {
  rowsDidChange(_rows.removeID(identifier), animated);
}

void PSListController::removeContiguousSpecifiers(const PSSpecifierList& specifiers,
                                                  bool animated) {
  rowsDidChange(_rows.replaceContiguous(specifiers, {}), animated);
}

void PSListController::replaceContiguousSpecifiers(const PSSpecifierList& specifiers,
                                                   const PSSpecifierList& by, bool animated) {
  if (std::ranges::find(by, nullptr) != by.end()) return;
  rowsDidChange(_rows.replaceContiguous(specifiers, by), animated);
}

void PSListController::rowsDidChange(const PSSpecifierRows::Change& change, bool animated) {
  if (!change) return;
  if (isMainThread()) {
    showChange(change, animated);
    return;
  }
  // The rows may have changed again by then, so the table reloads all of them.
  Process::current().service<Scheduler>().asyncMain([controller = weakSelf<PSListController>()] {
    const auto page = controller.lock();
    if (!page) return;
    page->forgetCellsOfGoneRows();
    if (page->_table) page->_table->reloadData();
  });
}

void PSListController::showChange(const PSSpecifierRows::Change& change, bool animated) {
  forgetCellsOfGoneRows();
  if (!_table) return;
  // Another thread may have changed the rows since.
  if (keptSpecifiers() != change.after) {
    _table->reloadData();
    return;
  }
  changeTable(*_table, change,
              animated ? UITableViewRowAnimation::automatic : UITableViewRowAnimation::none);
}

// --- Reloading ---

void PSListController::reloadSpecifierID(const std::string& identifier, bool animated) {
  reloadSpecifier(specifierForID(identifier), animated);
}

void PSListController::reloadSpecifier(const std::shared_ptr<PSSpecifier>& specifier,
                                       bool animated) {
  if (!specifier || !_table) return;
  const auto animation =
      animated ? UITableViewRowAnimation::automatic : UITableViewRowAnimation::none;
  if (const auto path = indexPathForSpecifier(specifier)) {
    if (const auto cell = cachedCellForSpecifier(specifier)) {
      cell->refreshCellContentsWithSpecifier(specifier);
    }
    _table->reloadRowsAtIndexPaths({*path}, animation);
  } else if (const auto index = indexOfSpecifier(specifier)) {
    _table->reloadSections(sectionsOf(sections(), *index, 1), animation);
  }
}

// --- Cells ---

std::shared_ptr<PSTableCell> PSListController::cachedCellForSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier) const {
  const auto found = _cells.find(specifier.get());
  return found == _cells.end() ? nullptr : found->second.cell;
}

std::shared_ptr<PSTableCell> PSListController::cachedCellForSpecifierID(
    const std::string& identifier) const {
  return cachedCellForSpecifier(specifierForID(identifier));
}

void PSListController::forgetCellsOfGoneRows() {
  const PSSpecifiers rows = keptSpecifiers();
  std::erase_if(_cells,
                [&](const auto& entry) { return !platform::indexOfSpecifier(rows, entry.first); });
}

}  // namespace platform

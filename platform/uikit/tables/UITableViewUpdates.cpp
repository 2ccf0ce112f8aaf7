#include <algorithm>

#include "platform/foundation/values/Exception.h"
#include "platform/uikit/tables/UITableView.h"

// Insertion, deletion and moves of rows and sections.
namespace platform {
namespace {

constexpr double rowAnimationDuration = 0.3;  // in seconds

template <class T>
void append(std::vector<T>& list, const std::vector<T>& more) {
  list.insert(list.end(), more.begin(), more.end());
}

}  // namespace

template <class F>
void UITableView::update(UITableViewRowAnimation animation, F record) {
  beginUpdates();
  record(_updates);
  if (animation != UITableViewRowAnimation::none) _updatesAnimated = true;
  endUpdates();
}

void UITableView::insertRowsAtIndexPaths(const std::vector<IndexPath>& paths,
                                         UITableViewRowAnimation animation) {
  update(animation, [&](TableUpdates& updates) { append(updates.insertedRows, paths); });
}

void UITableView::deleteRowsAtIndexPaths(const std::vector<IndexPath>& paths,
                                         UITableViewRowAnimation animation) {
  update(animation, [&](TableUpdates& updates) { append(updates.deletedRows, paths); });
}

void UITableView::reloadRowsAtIndexPaths(const std::vector<IndexPath>& paths,
                                         UITableViewRowAnimation animation) {
  update(animation, [&](TableUpdates& updates) { append(updates.reloadedRows, paths); });
}

void UITableView::moveRowAtIndexPath(IndexPath from, IndexPath to) {
  update(UITableViewRowAnimation::automatic,
         [&](TableUpdates& updates) { updates.movedRows.emplace_back(from, to); });
}

void UITableView::insertSections(const std::vector<std::int64_t>& sections,
                                 UITableViewRowAnimation animation) {
  update(animation, [&](TableUpdates& updates) { append(updates.insertedSections, sections); });
}

void UITableView::deleteSections(const std::vector<std::int64_t>& sections,
                                 UITableViewRowAnimation animation) {
  update(animation, [&](TableUpdates& updates) { append(updates.deletedSections, sections); });
}

void UITableView::reloadSections(const std::vector<std::int64_t>& sections,
                                 UITableViewRowAnimation animation) {
  update(animation, [&](TableUpdates& updates) { append(updates.reloadedSections, sections); });
}

void UITableView::beginUpdates() {
  ++_updateDepth;
}

void UITableView::endUpdates() {
  if (_updateDepth == 0 || --_updateDepth > 0) return;
  applyUpdates();
}

void UITableView::applyUpdates() {
  const TableUpdates updates = std::exchange(_updates, {});
  const bool animated = std::exchange(_updatesAnimated, false);
  if (!_loaded) return;  // nothing is loaded yet: loading reads the current state
  if (animated) {
    animateWithDuration(rowAnimationDuration, [&] { applyBatch(updates); });
  } else {
    applyBatch(updates);
  }
}

void UITableView::applyBatch(const TableUpdates& updates) {
  const TableTokens before = tokensBefore(updates);
  std::optional<std::string> problem = _model.apply(updates);
  std::set<std::uint64_t> freshSections = before.reloadedSections;
  for (const TableSection& section : _model.sections()) {
    if (!before.sections.contains(section.token)) freshSections.insert(section.token);
  }
  if (!problem) problem = countMismatch(freshSections);
  ++_generation;
  retireCellsWithoutRow(before.cells);
  if (problem) {
    loadModel();
    throw Exception(std::string(internalInconsistencyException), "Invalid update: " + *problem);
  }
  refreshRows(freshSections, before);
  placeContent();
  setNeedsLayout();
  noteChange();
}

TableTokens UITableView::tokensBefore(const TableUpdates& updates) {
  TableTokens tokens;
  forEachRow([&](const TableRow& row, IndexPath) {
    tokens.rows.insert(row.token);
    if (row.cell) tokens.cells.push_back(row.cell);
  });
  for (const TableSection& section : _model.sections()) tokens.sections.insert(section.token);
  for (const std::int64_t index : updates.reloadedSections) {
    const TableSection* section = _model.section(index);
    if (section != nullptr) tokens.reloadedSections.insert(section->token);
  }
  for (const IndexPath path : updates.reloadedRows) {
    const TableRow* row = _model.row(path);
    if (row != nullptr) tokens.reloadedRows.insert(row->token);
  }
  return tokens;
}

void UITableView::retireCellsWithoutRow(
    const std::vector<std::shared_ptr<UITableViewCell>>& cells) {
  for (const auto& cell : cells) {
    bool isShown = false;
    forEachRow([&](const TableRow& row, IndexPath) { isShown = isShown || row.cell == cell; });
    if (!isShown) retire(cell, 0);
  }
}

std::optional<std::string> UITableView::countMismatch(
    const std::set<std::uint64_t>& freshSections) {
  const auto source = dataSource();
  if (!source) return std::nullopt;
  const auto table = self<UITableView>();
  const auto& sections = _model.sections();
  const std::int64_t count = std::max<std::int64_t>(source->numberOfSectionsInTableView(table), 0);
  if (count != static_cast<std::int64_t>(sections.size())) {
    return "the table has " + std::to_string(sections.size()) +
           " sections after the update, and its data source has " + std::to_string(count);
  }
  for (std::int64_t index = 0; index < count; ++index) {
    const TableSection& section = sections[static_cast<std::size_t>(index)];
    if (freshSections.contains(section.token)) continue;
    const std::int64_t rows =
        std::max<std::int64_t>(source->numberOfRowsInSection(table, index), 0);
    if (rows != static_cast<std::int64_t>(section.rows.size())) {
      return "section " + std::to_string(index) + " has " + std::to_string(section.rows.size()) +
             " rows after the update, and its data source has " + std::to_string(rows);
    }
  }
  return std::nullopt;
}

// Requests new rows, and the heights and titles of all rows, because they may depend on each other.
void UITableView::refreshRows(const std::set<std::uint64_t>& freshSections,
                              const TableTokens& before) {
  auto& sections = _model.sections();
  for (std::size_t index = 0; index < sections.size(); ++index) {
    TableSection& section = sections[index];
    const auto number = static_cast<std::int64_t>(index);
    if (freshSections.contains(section.token)) {
      refreshSection(section, number);
    } else {
      for (std::size_t row = 0; row < section.rows.size(); ++row) {
        refreshRow(section.rows[row], {number, static_cast<std::int64_t>(row)}, before);
      }
    }
    askTitles(section, number);
  }
}

void UITableView::refreshRow(TableRow& row, IndexPath path, const TableTokens& before) {
  if (before.reloadedRows.contains(row.token)) {
    retireCell(row);
    row.problem.reset();
  }
  if (before.rows.contains(row.token)) {
    askRowHeight(row, path);
    return;
  }
  const std::uint64_t token = row.token;
  row = askRow(path);
  row.token = token;
}

// Requests the rows of a new or fully reloaded section.
void UITableView::refreshSection(TableSection& section, std::int64_t index) {
  for (TableRow& row : section.rows) retireCell(row);
  const auto previous = std::exchange(section.rows, askSection(index).rows);
  for (std::size_t row = 0; row < section.rows.size(); ++row) {
    section.rows[row].token =
        row < previous.size() ? previous[row].token : UIKitState::current().makeNodeIdentifier();
  }
}

}  // namespace platform

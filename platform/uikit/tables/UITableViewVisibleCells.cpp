#include <algorithm>

#include "platform/foundation/objects/Process.h"
#include "platform/foundation/values/Exception.h"
#include "platform/uikit/tables/FlagWhile.h"
#include "platform/uikit/tables/UITableView.h"

// Assignment of cells to visible rows.
namespace platform {

void UITableView::registerClass(std::string_view className, std::string_view identifier) {
  _registeredClasses.insert_or_assign(std::string(identifier), std::string(className));
}

std::shared_ptr<UITableViewCell> UITableView::dequeueReusableCellWithIdentifier(
    std::string_view identifier) {
  return dequeueCell(identifier, 0);
}

std::shared_ptr<UITableViewCell> UITableView::dequeueCell(std::string_view identifier,
                                                          std::uint64_t row) {
  const auto registered = _registeredClasses.find(identifier);
  if (registered == _registeredClasses.end()) return nullptr;
  _waitingRows.erase(row);
  if (auto cell = _pool.take(identifier, row, _waitingRows)) {
    cell->prepareForReuse();
    return cell;
  }
  const Class* found = NSClassFromString(registered->second);
  auto cell = found ? found->allocateAs<UITableViewCell>() : nullptr;
  if (!cell) {
    raiseInvalidArgument("the class " + registered->second + " registered for the identifier " +
                         registered->first + " is not a class of cells");
  }
  return cell->initWithStyle(UITableViewCellStyle::standard, registered->first) ? cell : nullptr;
}

std::shared_ptr<UITableViewCell> UITableView::dequeueReusableCellWithIdentifier(
    std::string_view identifier, IndexPath indexPath) {
  if (!_registeredClasses.contains(identifier)) {
    throw Exception(std::string(internalInconsistencyException),
                    "unable to dequeue a cell with identifier " + std::string(identifier) +
                        " - must register a class for the identifier");
  }
  const TableRow* row = _model.row(indexPath);
  return dequeueCell(identifier, row ? row->token : 0);
}

std::optional<IndexPath> UITableView::indexPathForCell(
    const std::shared_ptr<UITableViewCell>& cell) {
  updateIfNeeded();
  std::optional<IndexPath> found;
  if (!cell) return found;
  forEachRow([&](const TableRow& row, IndexPath path) {
    if (row.cell == cell) found = path;
  });
  return found;
}

std::shared_ptr<UITableViewCell> UITableView::cellForRowAtIndexPath(IndexPath indexPath) {
  updateIfNeeded();
  const TableRow* row = _model.row(indexPath);
  return row ? row->cell : nullptr;
}

std::vector<std::shared_ptr<UITableViewCell>> UITableView::visibleCells() {
  updateIfNeeded();
  std::vector<std::shared_ptr<UITableViewCell>> cells;
  forEachRow([&](const TableRow& row, IndexPath) {
    if (row.cell) cells.push_back(row.cell);
  });
  return cells;
}

void UITableView::contentOffsetDidChange() {
  setNeedsLayout();
}

void UITableView::layoutSubviews() {
  loadIfNeeded();
  placeContent();
  updateVisibleCells();
}

void UITableView::updateIfNeeded() {
  loadIfNeeded();
  if (needsLayout() && !_loading) updateVisibleCells();
}

void UITableView::updateVisibleCells() {
  if (_updatingCells) return;
  const FlagWhile updating(_updatingCells);
  retireRowsOutOfSight();
  findWaitingRows();
  if (!showVisibleRows()) setNeedsLayout();  // the rows changed in the meantime: repeat
  _waitingRows.clear();
  placeCells();
  removeRetiredCells();
}

void UITableView::findWaitingRows() {
  _waitingRows.clear();
  forEachRow([&](const TableRow& row, IndexPath) {
    if (!row.cell && isInViewport(row)) _waitingRows.insert(row.token);
  });
}

bool UITableView::showVisibleRows() {
  for (std::int64_t section = 0; _model.section(section) != nullptr; ++section) {
    for (IndexPath path{section, 0}; _model.row(path) != nullptr; ++path.row) {
      if (!updateVisibleRow(path)) return false;
    }
  }
  return true;
}

// Returns false if the data source changed the rows during the call.
bool UITableView::updateVisibleRow(IndexPath path) {
  const TableRow& row = *_model.row(path);
  if (row.cell || row.problem || !isInViewport(row) || _dataSource.expired()) return true;
  const std::uint64_t generation = _generation;
  const auto cell = askCell(path);
  return generation == _generation && showCell(path, cell);
}

bool UITableView::isInViewport(const TableRow& row) const {
  const Rect visible = bounds();
  return visible.height > 0 && row.y + row.height > visible.y - _overscan &&
         row.y < visible.maxY() + _overscan;
}

std::shared_ptr<UITableViewCell> UITableView::askCell(IndexPath path) {
  const std::uint64_t generation = _generation;
  try {
    const auto source = dataSource();
    auto cell = source->cellForRowAtIndexPath(self<UITableView>(), path);
    if (cell) return cell;
    throw Exception(std::string(internalInconsistencyException),
                    "UITableView failed to obtain a cell from its dataSource for row " +
                        std::to_string(path.row) + " of section " + std::to_string(path.section));
  } catch (const Exception& exception) {
    // Not requested again on every layout, so that the other rows remain usable.
    if (generation == _generation) _model.row(path)->problem = exception.reason();
    throw;
  }
}

bool UITableView::showCell(IndexPath path, const std::shared_ptr<UITableViewCell>& cell) {
  forEachRow([&](TableRow& row, IndexPath) {
    if (row.cell == cell) row.cell.reset();  // a cell shows only one row
  });
  std::erase(_retired, cell);
  _pool.remove(cell);
  TableRow& row = *_model.row(path);
  row.cell = cell;
  cell->setEditing(_editing);
  cell->setSelected(_selectedToken == row.token);
  const std::uint64_t generation = _generation;
  if (const auto told = tableDelegate()) told->willDisplayCell(self<UITableView>(), cell, path);
  if (generation != _generation) return false;
  if (cell->superview().get() != this) addSubview(cell);
  sizeRowByCell(*_model.row(path));
  noteChange();
  return true;
}

void UITableView::sizeRowByCell(TableRow& row) {
  if (!row.selfSizing || !row.cell) return;
  const double height = row.cell->heightThatFitsWidth(contentWidth());
  if (height == row.height) return;
  row.height = height;
  placeContent();
}

void UITableView::placeCells() {
  forEachRow([&](const TableRow& row, IndexPath) {
    if (row.cell) row.cell->setFrame({sideInset(), row.y, contentWidth(), row.height});
  });
}

void UITableView::retireCell(TableRow& row) {
  if (!row.cell) return;
  retire(row.cell, row.token);
  row.cell.reset();
}

void UITableView::retire(const std::shared_ptr<UITableViewCell>& cell, std::uint64_t row) {
  _retired.push_back(cell);
  const auto& identifier = cell->reuseIdentifier();
  if (identifier && _registeredClasses.contains(*identifier)) _pool.put(*identifier, cell, row);
  noteChange();
}

void UITableView::retireRowsOutOfSight() {
  forEachRow([&](TableRow& row, IndexPath) {
    if (!isInViewport(row)) retireCell(row);
  });
}

void UITableView::retireAllCells() {
  forEachRow([&](TableRow& row, IndexPath) { retireCell(row); });
}

void UITableView::removeRetiredCells() {
  const auto retired = std::exchange(_retired, {});
  for (const auto& cell : retired) {
    if (cell->superview().get() == this) cell->removeFromSuperview();
  }
}

}  // namespace platform

#include <algorithm>

#include "platform/uikit/tables/UITableView.h"

// Selection and editing.
namespace platform {

void UITableView::setAllowsSelection(bool allows) {
  assign(_allowsSelection, allows);
}

void UITableView::setAllowsSelectionDuringEditing(bool allows) {
  assign(_allowsSelectionDuringEditing, allows);
}

void UITableView::selectRowAtIndexPath(IndexPath indexPath, bool animated) {
  if (!hasRow(indexPath)) return;
  const std::uint64_t token = rowToken(indexPath);
  if (_selectedToken == token) return;
  if (const auto selected = indexPathForSelectedRow()) deselectRowAtIndexPath(*selected, animated);
  _selectedToken = token;
  noteChange();
  if (const auto& cell = _model.row(indexPath)->cell) cell->setSelected(true, animated);
}

void UITableView::deselectRowAtIndexPath(IndexPath indexPath, bool animated) {
  if (!hasRow(indexPath)) return;
  const TableRow& row = *_model.row(indexPath);
  if (_selectedToken == row.token) {
    _selectedToken.reset();
    noteChange();
  }
  if (row.cell) row.cell->setSelected(false, animated);
}

std::optional<IndexPath> UITableView::indexPathForSelectedRow() {
  loadIfNeeded();
  return _selectedToken ? _model.pathOfToken(*_selectedToken) : std::nullopt;
}

bool UITableView::canUserSelectRow(IndexPath indexPath) {
  if (!hasRow(indexPath) || !acceptsTouches()) return false;
  if (_editing ? !_allowsSelectionDuringEditing : !_allowsSelection) return false;
  const auto cell = _model.row(indexPath)->cell;
  if (cell && !cell->acceptsTouches()) return false;
  const auto asked = tableDelegate();
  return !asked || asked->shouldHighlightRowAtIndexPath(self<UITableView>(), indexPath);
}

bool UITableView::userTapRow(IndexPath indexPath) {
  if (!canUserSelectRow(indexPath)) return false;
  const auto table = self<UITableView>();
  const auto told = tableDelegate();
  std::optional<IndexPath> chosen = indexPath;
  if (told) chosen = told->willSelectRowAtIndexPath(table, indexPath);
  if (!chosen || !hasRow(*chosen)) return false;
  const auto previous = indexPathForSelectedRow();
  selectRowAtIndexPath(*chosen);
  if (!told) return true;
  if (previous && *previous != *chosen) told->didDeselectRowAtIndexPath(table, *previous);
  told->didSelectRowAtIndexPath(table, *chosen);
  return true;
}

void UITableView::setEditing(bool editing, bool animated) {
  if (!assign(_editing, editing)) return;
  forEachRow([&](TableRow& row, IndexPath) {
    if (row.cell) row.cell->setEditing(editing, animated);
  });
  setNeedsLayout();
}

UITableViewCellEditingStyle UITableView::editingStyleForRow(IndexPath indexPath) {
  const auto source = dataSource();
  if (!_editing || !source || !hasRow(indexPath)) return UITableViewCellEditingStyle::none;
  const auto table = self<UITableView>();
  if (!source->canEditRowAtIndexPath(table, indexPath)) return UITableViewCellEditingStyle::none;
  const auto asked = tableDelegate();
  return asked ? asked->editingStyleForRowAtIndexPath(table, indexPath)
               : UITableViewCellEditingStyle::deletion;
}

bool UITableView::canMoveRow(IndexPath indexPath) {
  const auto source = dataSource();
  return _editing && source && hasRow(indexPath) &&
         source->canMoveRowAtIndexPath(self<UITableView>(), indexPath);
}

bool UITableView::userCommitRow(IndexPath indexPath) {
  if (!acceptsTouches()) return false;
  const UITableViewCellEditingStyle style = editingStyleForRow(indexPath);
  if (style == UITableViewCellEditingStyle::none) return false;
  dataSource()->commitEditingStyle(self<UITableView>(), style, indexPath);
  return true;
}

bool UITableView::userMoveRow(IndexPath from, IndexPath to) {
  if (!acceptsTouches() || !canMoveRow(from)) return false;
  if (from == to) return true;
  if (!_model.moveRow(from, to)) return false;
  const std::uint64_t generation = ++_generation;
  noteChange();
  placeContent();
  setNeedsLayout();
  dataSource()->moveRowAtIndexPath(self<UITableView>(), from, to);
  // If the data source neither followed the move nor reloaded, its counts differ now.
  if (generation == _generation && countMismatch({})) reloadData();
  return true;
}

}  // namespace platform

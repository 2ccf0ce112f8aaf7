#include <algorithm>

#include "platform/uikit/drawing/TextMeasurer.h"
#include "platform/uikit/drawing/UIFont.h"
#include "platform/uikit/tables/FlagWhile.h"
#include "platform/uikit/tables/UITableView.h"

// Requests to the data source and delegate, and the layout of rows.
namespace platform {

void UITableView::loadIfNeeded() {
  if (_loading) return;
  const bool sourceHasDied = _dataSource.expired() && !_model.sections().empty();
  if (!_loaded || sourceHasDied) loadModel();
}

void UITableView::reloadData() {
  if (_loading) return;
  _selectedToken.reset();
  loadModel();
}

void UITableView::loadModel() {
  _loaded = true;  // after an exception, the data source is asked again only after a reload
  _updates = {};
  ++_generation;
  retireAllCells();
  std::vector<TableSection> sections;
  if (const auto source = dataSource()) {
    const FlagWhile loading(_loading);
    const std::int64_t count = source->numberOfSectionsInTableView(self<UITableView>());
    for (std::int64_t index = 0; index < count; ++index) sections.push_back(askSection(index));
  }
  _model.replace(std::move(sections));
  placeContent();
  setNeedsLayout();
  noteChange();
}

TableSection UITableView::askSection(std::int64_t index) {
  TableSection section;
  const auto source = dataSource();
  if (!source) return section;
  const std::int64_t rows = source->numberOfRowsInSection(self<UITableView>(), index);
  for (IndexPath path{index, 0}; path.row < rows; ++path.row) {
    section.rows.push_back(askRow(path));
  }
  askTitles(section, index);
  return section;
}

void UITableView::askTitles(TableSection& section, std::int64_t index) {
  const auto source = dataSource();
  if (!source) return;
  section.headerTitle = source->titleForHeaderInSection(self<UITableView>(), index);
  section.footerTitle = source->titleForFooterInSection(self<UITableView>(), index);
  measureSection(section, index);
}

TableRow UITableView::askRow(IndexPath path) {
  TableRow row;
  if (const auto source = dataSource()) {
    row.identity = source->identityForRowAtIndexPath(self<UITableView>(), path);
  }
  askRowHeight(row, path);
  return row;
}

void UITableView::askRowHeight(TableRow& row, IndexPath path) {
  double height = automaticDimension;
  if (const auto asked = tableDelegate()) {
    height = asked->heightForRowAtIndexPath(self<UITableView>(), path);
  }
  if (!(height >= 0)) height = _rowHeight;  // NaN counts as automatic
  row.selfSizing = height < 0;
  if (!row.selfSizing) {
    row.height = height;
  } else if (row.cell) {
    row.height = row.cell->heightThatFitsWidth(contentWidth());
  } else if (row.height <= 0) {
    row.height = UITableViewCell::standardHeight;
  }
}

void UITableView::measureSection(TableSection& section, std::int64_t index) {
  section.headerHeight = automaticDimension;
  section.footerHeight = automaticDimension;
  if (const auto asked = tableDelegate()) {
    const auto table = self<UITableView>();
    section.headerHeight = asked->heightForHeaderInSection(table, index);
    section.footerHeight = asked->heightForFooterInSection(table, index);
  }
  if (!(section.headerHeight >= 0)) {
    section.headerHeight = measuredHeight(section.headerTitle, true, index);
  }
  if (!(section.footerHeight >= 0)) {
    section.footerHeight = measuredHeight(section.footerTitle, false, index);
  }
}

double UITableView::measuredHeight(const std::optional<std::string>& title, bool isHeader,
                                   std::int64_t section) const {
  constexpr double titleSize = 13;
  constexpr double plainHeight = 28;
  constexpr double groupGap = 18;  // above and below the rows of a group
  constexpr double firstGap = 35;  // above the first group
  constexpr double paddingAboveRows = 22;
  constexpr double paddingBelowRows = 14;
  const bool isPlain = _style == UITableViewStyle::plain;
  if (!title || title->empty()) {
    if (isPlain) return 0;
    return isHeader && section == 0 ? firstGap : groupGap;
  }
  const double width = contentWidth() - 2 * UITableViewCell::margin;
  const double text =
      textMeasurer()
          .sizeOfText(*title, UIFont(titleSize, UIFontWeight::regular), std::max(width, 1.0), 0)
          .height;
  if (isPlain) return std::max(plainHeight, text + paddingBelowRows);
  return text + (isHeader ? paddingAboveRows : paddingBelowRows);
}

void UITableView::boundsSizeDidChange(Size previous) {
  if (!_loaded || previous.width == frame().width) return;
  auto& sections = _model.sections();
  for (std::size_t index = 0; index < sections.size(); ++index) {
    measureSection(sections[index], static_cast<std::int64_t>(index));
  }
  forEachRow([&](TableRow& row, IndexPath) {
    if (row.selfSizing && row.cell) row.height = row.cell->heightThatFitsWidth(contentWidth());
  });
  placeContent();
}

void UITableView::placeContent() {
  const double width = frame().width;
  double top = 0;
  if (_tableHeaderView) {
    top = _tableHeaderView->frame().height;
    _tableHeaderView->setFrame({0, 0, width, top});
  }
  top = _model.place(top);
  if (_tableFooterView) {
    const double height = _tableFooterView->frame().height;
    _tableFooterView->setFrame({0, top, width, height});
    top += height;
  }
  setContentSize({width, top});
  placeCells();
}

}  // namespace platform

#include "platform/uikit/tables/UITableView.h"

#include <algorithm>

// Properties and queries of a table.
namespace platform {

bool UITableView::initWithFrame(Rect frame, UITableViewStyle style) {
  _style = style;
  return UIScrollView::initWithFrame(frame);
}

void UITableView::setDataSource(const std::shared_ptr<UITableViewDataSource>& dataSource) {
  _dataSource = dataSource;
  _loaded = false;
  setNeedsLayout();
}

void UITableView::setDataSourceObject(const std::shared_ptr<Object>& dataSource) {
  setDataSource(std::dynamic_pointer_cast<UITableViewDataSource>(dataSource));
}

std::shared_ptr<UITableViewDelegate> UITableView::tableDelegate() const {
  return std::dynamic_pointer_cast<UITableViewDelegate>(delegate());
}

void UITableView::delegateDidChange() {
  _loaded = false;  // the delegate determines the heights
  setNeedsLayout();
}

std::int64_t UITableView::numberOfSections() {
  loadIfNeeded();
  return static_cast<std::int64_t>(_model.sections().size());
}

std::int64_t UITableView::numberOfRowsInSection(std::int64_t section) {
  loadIfNeeded();
  const TableSection* found = _model.section(section);
  return found ? static_cast<std::int64_t>(found->rows.size()) : 0;
}

bool UITableView::hasRow(IndexPath indexPath) {
  loadIfNeeded();
  return _model.row(indexPath) != nullptr;
}

Rect UITableView::rectForRowAtIndexPath(IndexPath indexPath) {
  loadIfNeeded();
  const TableRow* row = _model.row(indexPath);
  return row ? Rect{sideInset(), row->y, contentWidth(), row->height} : Rect{};
}

double UITableView::heightOfRow(IndexPath indexPath) {
  return rectForRowAtIndexPath(indexPath).height;
}

std::optional<IndexPath> UITableView::indexPathForRowAtPoint(Point point) {
  loadIfNeeded();
  return _model.pathAtY(point.y);
}

void UITableView::scrollToRowAtIndexPath(IndexPath indexPath, bool animated) {
  if (hasRow(indexPath)) scrollRectToVisible(rectForRowAtIndexPath(indexPath), animated);
}

std::uint64_t UITableView::rowToken(IndexPath indexPath) {
  loadIfNeeded();
  const TableRow* row = _model.row(indexPath);
  return row ? row->token : 0;
}

std::optional<std::string> UITableView::rowProblem(IndexPath indexPath) {
  loadIfNeeded();
  const TableRow* row = _model.row(indexPath);
  return row ? row->problem : std::nullopt;
}

std::uint64_t UITableView::sectionToken(std::int64_t section) {
  loadIfNeeded();
  const TableSection* found = _model.section(section);
  return found ? found->token : 0;
}

std::optional<IndexPath> UITableView::indexPathForRowToken(std::uint64_t token) {
  loadIfNeeded();
  return _model.pathOfToken(token);
}

std::optional<std::string> UITableView::headerTitle(std::int64_t section) {
  loadIfNeeded();
  const TableSection* found = _model.section(section);
  return found ? found->headerTitle : std::nullopt;
}

std::optional<std::string> UITableView::footerTitle(std::int64_t section) {
  loadIfNeeded();
  const TableSection* found = _model.section(section);
  return found ? found->footerTitle : std::nullopt;
}

double UITableView::headerHeight(std::int64_t section) {
  loadIfNeeded();
  const TableSection* found = _model.section(section);
  return found ? found->headerHeight : 0;
}

double UITableView::footerHeight(std::int64_t section) {
  loadIfNeeded();
  const TableSection* found = _model.section(section);
  return found ? found->footerHeight : 0;
}

void UITableView::setRowHeight(double height) {
  if (!assign(_rowHeight, height >= 0 ? height : automaticDimension)) return;
  _loaded = false;
  setNeedsLayout();
}

void UITableView::setTableHeaderView(std::shared_ptr<UIView> view) {
  replaceEdgeView(_tableHeaderView, std::move(view));
}

void UITableView::setTableFooterView(std::shared_ptr<UIView> view) {
  replaceEdgeView(_tableFooterView, std::move(view));
}

void UITableView::replaceEdgeView(std::shared_ptr<UIView>& field, std::shared_ptr<UIView> view) {
  const auto previous = field;
  if (!assign(field, std::move(view))) return;
  if (previous && previous->superview().get() == this) previous->removeFromSuperview();
  addSubview(field);
  placeContent();
  setNeedsLayout();
}

void UITableView::setOverscan(double points) {
  if (assign(_overscan, points > 0 ? points : 0)) setNeedsLayout();
}

double UITableView::sideInset() const noexcept {
  constexpr double insetGroupedMargin = 16;
  return _style == UITableViewStyle::insetGrouped ? insetGroupedMargin : 0;
}

double UITableView::contentWidth() const noexcept {
  return std::max(frame().width - 2 * sideInset(), 0.0);
}

}  // namespace platform

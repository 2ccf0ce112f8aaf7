#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/foundation/objects/Class.h"
#include "platform/uikit/tables/NSIndexPath.h"
#include "platform/uikit/tables/TableCellPool.h"
#include "platform/uikit/tables/TableModel.h"
#include "platform/uikit/tables/UITableViewCell.h"
#include "platform/uikit/tables/UITableViewDataSource.h"
#include "platform/uikit/tables/UITableViewDelegate.h"
#include "platform/uikit/views/UIScrollView.h"

namespace platform {

enum class UITableViewStyle : std::uint8_t { plain = 0, grouped = 1, insetGrouped = 2 };

enum class UITableViewRowAnimation : std::uint8_t {
  fade = 0,
  right = 1,
  left = 2,
  top = 3,
  bottom = 4,
  none = 5,
  middle = 6,
  automatic = 100,
};

// A list of rows in sections. Rows that lie within the bounds (and the overscan around them) have
// a cell, the others have none; cells are asked for when layout runs. Data source and delegate are
// not kept alive; without a data source, or when it has died, the table has no rows.
//
// Threads: main.
class UITableView : public UIScrollView {
  PLATFORM_CLASS(UITableView)

 public:
  static constexpr double automaticDimension = UITableViewDelegate::automaticDimension;

  using UIScrollView::initWithFrame;
  virtual bool initWithFrame(Rect frame, UITableViewStyle style);
  UITableViewStyle style() const noexcept { return _style; }

  void setDataSource(const std::shared_ptr<UITableViewDataSource>& dataSource);
  std::shared_ptr<UITableViewDataSource> dataSource() const { return _dataSource.lock(); }
  // For those who have an object only: one that is no data source clears it.
  void setDataSourceObject(const std::shared_ptr<Object>& dataSource);
  // The scroll view's delegate, where it is a table's delegate too.
  std::shared_ptr<UITableViewDelegate> tableDelegate() const;

  // Rows. A count below 0 counts as 0. An index path outside of the rows gives nothing, an empty
  // rectangle or 0.
  std::int64_t numberOfSections();
  std::int64_t numberOfRowsInSection(std::int64_t section);
  bool hasRow(IndexPath indexPath);
  Rect rectForRowAtIndexPath(IndexPath indexPath);
  double heightOfRow(IndexPath indexPath);
  std::optional<IndexPath> indexPathForRowAtPoint(Point point);
  std::optional<IndexPath> indexPathForCell(const std::shared_ptr<UITableViewCell>& cell);
  // The cell of a row in sight, else empty.
  std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(IndexPath indexPath);
  std::vector<std::shared_ptr<UITableViewCell>> visibleCells();
  void scrollToRowAtIndexPath(IndexPath indexPath, bool animated = false);

  // Identities of rows and sections for presenters: node identifiers that stay through insertions,
  // deletions, moves and reloads as long as the row or section lives. 0 where there is none.
  std::uint64_t rowToken(IndexPath indexPath);
  // Why the row has no cell though it is in sight: the reason of the exception that was raised
  // when its cell was asked for. It is asked for again after a reload only.
  std::optional<std::string> rowProblem(IndexPath indexPath);
  std::uint64_t sectionToken(std::int64_t section);
  std::optional<IndexPath> indexPathForRowToken(std::uint64_t token);
  // The titles as they were asked for at the last reload or update, with their heights in points.
  std::optional<std::string> headerTitle(std::int64_t section);
  std::optional<std::string> footerTitle(std::int64_t section);
  double headerHeight(std::int64_t section);
  double footerHeight(std::int64_t section);

  // Reuse. Only cells whose identifier is registered are recycled. A cell that is dequeued is an
  // earlier one of that identifier, as it was left but for prepareForReuse, or a new one. A row
  // gets the cell back that it had, where that is still there.
  void registerClass(std::string_view className, std::string_view identifier);
  // Empty where no class is registered for the identifier; raises NSInvalidArgumentException where
  // the registered class is not known.
  std::shared_ptr<UITableViewCell> dequeueReusableCellWithIdentifier(std::string_view identifier);
  // The same, raising NSInternalInconsistencyException where no class is registered.
  std::shared_ptr<UITableViewCell> dequeueReusableCellWithIdentifier(std::string_view identifier,
                                                                     IndexPath indexPath);

  // Changes. The data source has changed before; what it says afterwards must fit what the calls
  // say, else NSInternalInconsistencyException is raised and the table shows what the data source
  // says. Between beginUpdates and endUpdates the changes are one batch. Titles are asked for anew.
  void reloadData();
  void beginUpdates();
  void endUpdates();
  void insertRowsAtIndexPaths(const std::vector<IndexPath>& paths,
                              UITableViewRowAnimation animation);
  void deleteRowsAtIndexPaths(const std::vector<IndexPath>& paths,
                              UITableViewRowAnimation animation);
  void reloadRowsAtIndexPaths(const std::vector<IndexPath>& paths,
                              UITableViewRowAnimation animation);
  void moveRowAtIndexPath(IndexPath from, IndexPath to);
  void insertSections(const std::vector<std::int64_t>& sections, UITableViewRowAnimation animation);
  void deleteSections(const std::vector<std::int64_t>& sections, UITableViewRowAnimation animation);
  void reloadSections(const std::vector<std::int64_t>& sections, UITableViewRowAnimation animation);

  // Selection by the program tells the delegate nothing.
  void selectRowAtIndexPath(IndexPath indexPath, bool animated = false);
  void deselectRowAtIndexPath(IndexPath indexPath, bool animated = false);
  std::optional<IndexPath> indexPathForSelectedRow();
  bool allowsSelection() const noexcept { return _allowsSelection; }
  void setAllowsSelection(bool allows);
  bool allowsSelectionDuringEditing() const noexcept { return _allowsSelectionDuringEditing; }
  void setAllowsSelectionDuringEditing(bool allows);

  // Editing.
  bool isEditing() const noexcept { return _editing; }
  void setEditing(bool editing, bool animated = false);
  // None while the table is not being edited, or where the row cannot be.
  UITableViewCellEditingStyle editingStyleForRow(IndexPath indexPath);
  bool canMoveRow(IndexPath indexPath);

  // The user's hand. Each answers false, and does nothing, where the row is not there or cannot.
  bool canUserSelectRow(IndexPath indexPath);
  bool userTapRow(IndexPath indexPath);
  bool userCommitRow(IndexPath indexPath);         // the insert or delete control
  bool userMoveRow(IndexPath from, IndexPath to);  // `to` as after the row has left its place

  // Looks and measures.
  double rowHeight() const noexcept { return _rowHeight; }
  void setRowHeight(double height);  // points, or automaticDimension
  const std::shared_ptr<UIView>& tableHeaderView() const noexcept { return _tableHeaderView; }
  // Gets the table's width; its height is its own.
  void setTableHeaderView(std::shared_ptr<UIView> view);
  const std::shared_ptr<UIView>& tableFooterView() const noexcept { return _tableFooterView; }
  void setTableFooterView(std::shared_ptr<UIView> view);
  // How far beyond its bounds, in points, the presenter wants cells.
  void setOverscan(double points);
  double overscan() const noexcept { return _overscan; }
  // The content's margin at either side, in points.
  double sideInset() const noexcept;
  // Itself: what "_scrollView" names.
  std::shared_ptr<UIScrollView> scrollView() { return self<UIScrollView>(); }

  void layoutSubviews() override;

 protected:
  void boundsSizeDidChange(Size previous) override;
  void contentOffsetDidChange() override;
  void delegateDidChange() override;

 private:
  // The rows.
  void loadIfNeeded();
  void loadModel();
  TableSection askSection(std::int64_t index);
  void askTitles(TableSection& section, std::int64_t index);
  TableRow askRow(IndexPath path);
  void askRowHeight(TableRow& row, IndexPath path);
  void measureSection(TableSection& section, std::int64_t index);
  double measuredHeight(const std::optional<std::string>& title, bool isHeader,
                        std::int64_t section) const;
  double contentWidth() const noexcept;
  void placeContent();

  // The cells.
  void updateIfNeeded();
  void updateVisibleCells();
  bool updateVisibleRow(IndexPath path);
  bool showVisibleRows();
  bool isInViewport(const TableRow& row) const;
  std::shared_ptr<UITableViewCell> askCell(IndexPath path);
  std::shared_ptr<UITableViewCell> dequeueCell(std::string_view identifier, std::uint64_t row);
  void findWaitingRows();
  bool showCell(IndexPath path, const std::shared_ptr<UITableViewCell>& cell);
  void sizeRowByCell(TableRow& row);
  void placeCells();
  void retireCell(TableRow& row);
  void retire(const std::shared_ptr<UITableViewCell>& cell, std::uint64_t row);
  void retireRowsOutOfSight();
  void retireAllCells();
  void removeRetiredCells();
  template <class F>
  void forEachRow(F function);

  // The batches.
  template <class F>
  void update(UITableViewRowAnimation animation, F record);
  void applyUpdates();
  void applyBatch(const TableUpdates& updates);
  TableTokens tokensBefore(const TableUpdates& updates);
  void retireCellsWithoutRow(const std::vector<std::shared_ptr<UITableViewCell>>& cells);
  std::optional<std::string> countMismatch(const std::set<std::uint64_t>& freshSections);
  void refreshRows(const std::set<std::uint64_t>& freshSections, const TableTokens& before);
  void refreshRow(TableRow& row, IndexPath path, const TableTokens& before);
  void refreshSection(TableSection& section, std::int64_t index);
  void replaceEdgeView(std::shared_ptr<UIView>& field, std::shared_ptr<UIView> view);

  UITableViewStyle _style = UITableViewStyle::plain;
  std::weak_ptr<UITableViewDataSource> _dataSource;
  TableModel _model;
  TableUpdates _updates;
  int _updateDepth = 0;
  bool _updatesAnimated = false;
  std::uint64_t _generation = 0;  // of the model; grows when rows come or go
  bool _loaded = false;
  bool _loading = false;
  bool _updatingCells = false;
  bool _editing = false;
  bool _allowsSelection = true;
  bool _allowsSelectionDuringEditing = false;
  double _rowHeight = automaticDimension;
  double _overscan = 0;
  std::optional<std::uint64_t> _selectedToken;
  std::shared_ptr<UIView> _tableHeaderView;
  std::shared_ptr<UIView> _tableFooterView;
  std::map<std::string, std::string, std::less<>> _registeredClasses;
  TableCellPool _pool;
  std::unordered_set<std::uint64_t> _waitingRows;  // in sight, and not asked for their cell yet
  std::vector<std::shared_ptr<UITableViewCell>> _retired;  // still subviews until layout ends
};

// The function gets each row with its index path and must not change which rows there are.
template <class F>
void UITableView::forEachRow(F function) {
  auto& sections = _model.sections();
  for (std::size_t section = 0; section < sections.size(); ++section) {
    auto& rows = sections[section].rows;
    for (std::size_t row = 0; row < rows.size(); ++row) {
      function(rows[row],
               IndexPath{static_cast<std::int64_t>(section), static_cast<std::int64_t>(row)});
    }
  }
}

}  // namespace platform

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

// A list of rows in sections. Only rows within the bounds, extended by the overscan, have cells,
// which are requested during layout. Does not keep the data source and delegate alive. Without a
// data source, or after its death, the table has no rows.
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
  // For callers that have only an object. An object that is not a data source clears it.
  void setDataSourceObject(const std::shared_ptr<Object>& dataSource);
  // The scroll view's delegate, if it is also a table delegate.
  std::shared_ptr<UITableViewDelegate> tableDelegate() const;

  // Rows. Negative counts become 0. For an invalid index path, functions return nothing, an empty
  // rectangle or 0.
  std::int64_t numberOfSections();
  std::int64_t numberOfRowsInSection(std::int64_t section);
  bool hasRow(IndexPath indexPath);
  Rect rectForRowAtIndexPath(IndexPath indexPath);
  double heightOfRow(IndexPath indexPath);
  std::optional<IndexPath> indexPathForRowAtPoint(Point point);
  std::optional<IndexPath> indexPathForCell(const std::shared_ptr<UITableViewCell>& cell);
  // Returns the cell of a visible row; otherwise empty.
  std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(IndexPath indexPath);
  std::vector<std::shared_ptr<UITableViewCell>> visibleCells();
  void scrollToRowAtIndexPath(IndexPath indexPath, bool animated = false);

  // Identities of rows and sections for presenters: node identifiers that survive insertions,
  // deletions, moves and reloads as long as the row or section exists. 0 if there is none.
  std::uint64_t rowToken(IndexPath indexPath);
  // Returns why a visible row has no cell: the reason of the exception that was raised when the
  // cell was requested. The cell is requested again only after a reload.
  std::optional<std::string> rowProblem(IndexPath indexPath);
  std::uint64_t sectionToken(std::int64_t section);
  std::optional<IndexPath> indexPathForRowToken(std::uint64_t token);
  // The titles from the last reload or update, and their heights in points.
  std::optional<std::string> headerTitle(std::int64_t section);
  std::optional<std::string> footerTitle(std::int64_t section);
  double headerHeight(std::int64_t section);
  double footerHeight(std::int64_t section);

  // Reuse. Only cells with a registered identifier are recycled. A dequeued cell is a recycled one
  // after prepareForReuse, or a new one. A row gets its previous cell if that is still available.
  void registerClass(std::string_view className, std::string_view identifier);
  // Returns an empty pointer if no class is registered for the identifier. Raises
  // NSInvalidArgumentException if the registered class is unknown.
  std::shared_ptr<UITableViewCell> dequeueReusableCellWithIdentifier(std::string_view identifier);
  // Like above, but raises NSInternalInconsistencyException if no class is registered.
  std::shared_ptr<UITableViewCell> dequeueReusableCellWithIdentifier(std::string_view identifier,
                                                                     IndexPath indexPath);

  // Changes. The caller changes the data source first. If the new counts do not match the calls,
  // the table shows the data source's state and raises NSInternalInconsistencyException. The calls
  // between beginUpdates and endUpdates are one batch. Titles are requested again.
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

  // Selection by the program does not notify the delegate.
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
  // None while the table is not being edited, or if the row is not editable.
  UITableViewCellEditingStyle editingStyleForRow(IndexPath indexPath);
  bool canMoveRow(IndexPath indexPath);

  // User input. Each function does nothing and returns false if the row does not exist or does not
  // allow it.
  bool canUserSelectRow(IndexPath indexPath);
  bool userTapRow(IndexPath indexPath);
  bool userCommitRow(IndexPath indexPath);         // the insert or delete control
  bool userMoveRow(IndexPath from, IndexPath to);  // `to` counts without the moved row

  // Appearance and measures.
  double rowHeight() const noexcept { return _rowHeight; }
  void setRowHeight(double height);  // points, or automaticDimension
  const std::shared_ptr<UIView>& tableHeaderView() const noexcept { return _tableHeaderView; }
  // The header view gets the table's width and keeps its height.
  void setTableHeaderView(std::shared_ptr<UIView> view);
  const std::shared_ptr<UIView>& tableFooterView() const noexcept { return _tableFooterView; }
  void setTableFooterView(std::shared_ptr<UIView> view);
  // The distance beyond the bounds, in points, in which the presenter wants cells.
  void setOverscan(double points);
  double overscan() const noexcept { return _overscan; }
  // The margin of the content on each side, in points.
  double sideInset() const noexcept;
  // Returns the table itself, for the key "_scrollView".
  std::shared_ptr<UIScrollView> scrollView() { return self<UIScrollView>(); }

  void layoutSubviews() override;

 protected:
  void boundsSizeDidChange(Size previous) override;
  void contentOffsetDidChange() override;
  void delegateDidChange() override;

 private:
  // Rows.
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

  // Cells.
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

  // Batches.
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
  std::uint64_t _generation = 0;  // of the model; increases when rows are inserted or removed
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
  std::unordered_set<std::uint64_t> _waitingRows;  // visible rows whose cells are not requested yet
  std::vector<std::shared_ptr<UITableViewCell>> _retired;  // remain subviews until layout ends
};

// Calls the function with each row and its index path. It must not change the set of rows.
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

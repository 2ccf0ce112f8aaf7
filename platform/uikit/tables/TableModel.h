#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/values/Value.h"
#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/tables/NSIndexPath.h"

namespace platform {

class UITableViewCell;

// A row with the data that its table keeps.
struct TableRow {
  std::uint64_t token = 0;  // the row's identity, a node identifier
  Value identity;           // what the row represents, from the data source
  double height = 0;
  bool selfSizing = false;                // the cell determines the height, once it exists
  double y = 0;                           // of its top, in the content
  std::shared_ptr<UITableViewCell> cell;  // only while visible
  std::optional<std::string> problem;     // why the cell could not be made; not retried
};

struct TableSection {
  std::uint64_t token = 0;
  std::optional<std::string> headerTitle;
  std::optional<std::string> footerTitle;
  double headerHeight = 0;
  double footerHeight = 0;
  double y = 0;  // of the header's top, in the content
  std::vector<TableRow> rows;
};

// The changes of a batch. Indices of removed items refer to the state before the batch, those of
// inserted items to the state after it.
struct TableUpdates {
  std::vector<IndexPath> deletedRows;
  std::vector<IndexPath> insertedRows;
  std::vector<IndexPath> reloadedRows;
  std::vector<std::pair<IndexPath, IndexPath>> movedRows;
  std::vector<std::int64_t> deletedSections;
  std::vector<std::int64_t> insertedSections;
  std::vector<std::int64_t> reloadedSections;
};

// The state before a batch.
struct TableTokens {
  std::set<std::uint64_t> rows;
  std::set<std::uint64_t> sections;
  std::set<std::uint64_t> reloadedRows;
  std::set<std::uint64_t> reloadedSections;
  std::vector<std::shared_ptr<UITableViewCell>> cells;
};

// The sections and rows of a table, their identities and positions. Does not call the data source
// or delegate.
class TableModel {
 public:
  std::vector<TableSection>& sections() noexcept { return _sections; }
  const std::vector<TableSection>& sections() const noexcept { return _sections; }
  const TableSection* section(std::int64_t index) const noexcept;
  TableRow* row(IndexPath path) noexcept;
  const TableRow* row(IndexPath path) const noexcept;
  std::optional<IndexPath> pathOfToken(std::uint64_t token) const noexcept;

  // Replaces the sections and keeps the tokens of existing rows and sections. Rows are matched by
  // identity if they have one, otherwise by position. New ones get new tokens.
  void replace(std::vector<TableSection> sections);
  // Applies a batch to the tokens. Inserted rows and sections have only their tokens. If an index
  // is out of range or duplicated, returns the reason and changes nothing.
  std::optional<std::string> apply(const TableUpdates& updates);
  // Moves a row and keeps its identity. Returns false if a position does not exist.
  bool moveRow(IndexPath from, IndexPath to);

  // Lays out all sections below `top`. Returns the bottom of the last one.
  double place(double top);
  std::optional<IndexPath> pathAtY(double y) const noexcept;

 private:
  std::vector<TableSection> _sections;
};

}  // namespace platform

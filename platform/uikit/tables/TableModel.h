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

// A row as its table knows it.
struct TableRow {
  std::uint64_t token = 0;  // the row's identity, a node identifier
  Value identity;           // what the data source says the row stands for
  double height = 0;
  bool selfSizing = false;                // the cell decides, once there is one
  double y = 0;                           // of its top in the content
  std::shared_ptr<UITableViewCell> cell;  // only while in sight
  std::optional<std::string> problem;     // why no cell could be made; not tried again then
};

struct TableSection {
  std::uint64_t token = 0;
  std::optional<std::string> headerTitle;
  std::optional<std::string> footerTitle;
  double headerHeight = 0;
  double footerHeight = 0;
  double y = 0;  // of its header's top in the content
  std::vector<TableRow> rows;
};

// The changes of one batch. Indices of what goes count as before the batch, of what comes as after.
struct TableUpdates {
  std::vector<IndexPath> deletedRows;
  std::vector<IndexPath> insertedRows;
  std::vector<IndexPath> reloadedRows;
  std::vector<std::pair<IndexPath, IndexPath>> movedRows;
  std::vector<std::int64_t> deletedSections;
  std::vector<std::int64_t> insertedSections;
  std::vector<std::int64_t> reloadedSections;
};

// What there was before a batch.
struct TableTokens {
  std::set<std::uint64_t> rows;
  std::set<std::uint64_t> sections;
  std::set<std::uint64_t> reloadedRows;
  std::set<std::uint64_t> reloadedSections;
  std::vector<std::shared_ptr<UITableViewCell>> cells;
};

// The sections and rows of a table, their identities and where they lie. Asks nobody.
class TableModel {
 public:
  std::vector<TableSection>& sections() noexcept { return _sections; }
  const std::vector<TableSection>& sections() const noexcept { return _sections; }
  const TableSection* section(std::int64_t index) const noexcept;
  TableRow* row(IndexPath path) noexcept;
  const TableRow* row(IndexPath path) const noexcept;
  std::optional<IndexPath> pathOfToken(std::uint64_t token) const noexcept;

  // Takes the place of the sections; rows and sections keep the tokens of those before them: a row
  // by what it stands for where it says so, else by its place; what is new gets new tokens.
  void replace(std::vector<TableSection> sections);
  // Applies a batch to the tokens; rows and sections that come are empty but for their tokens.
  // The reason where an index is out of range or given twice; the model is unchanged then.
  std::optional<std::string> apply(const TableUpdates& updates);
  // Takes the row out and puts it in again, its identity kept. False where there is no such place.
  bool moveRow(IndexPath from, IndexPath to);

  // Places everything below `top`; gives the bottom of the last section.
  double place(double top);
  std::optional<IndexPath> pathAtY(double y) const noexcept;

 private:
  std::vector<TableSection> _sections;
};

}  // namespace platform

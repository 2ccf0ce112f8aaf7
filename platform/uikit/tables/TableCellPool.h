#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

namespace platform {

class UITableViewCell;

// Unused cells of a table, by reuse identifier. A row gets its previous cell, so that a reloaded
// table shows the same cells in the same places.
class TableCellPool {
 public:
  using Cell = std::shared_ptr<UITableViewCell>;

  // `row` is the token of the row that the cell showed.
  void put(std::string_view identifier, const Cell& cell, std::uint64_t row);
  // Returns a cell for the row with that token (0 if unknown): its previous cell, otherwise the
  // oldest that no row in `waiting` may reclaim. Empty if there is none.
  Cell take(std::string_view identifier, std::uint64_t row,
            const std::unordered_set<std::uint64_t>& waiting);
  void remove(const Cell& cell);

 private:
  struct Entry {
    Cell cell;
    std::uint64_t row = 0;
  };
  std::map<std::string, std::deque<Entry>, std::less<>> _entries;
};

}  // namespace platform

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

// The cells of a table that have left their rows, by reuse identifier. A row gets the cell back
// that it had, so that a table that is loaded again shows the same cells in the same places.
class TableCellPool {
 public:
  using Cell = std::shared_ptr<UITableViewCell>;

  // `row` is the token of the row that the cell has shown.
  void put(std::string_view identifier, const Cell& cell, std::uint64_t row);
  // For the row of that token (0: not known): its own cell, else the oldest one that no row of
  // `waiting` has a claim to. Empty where there is none.
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

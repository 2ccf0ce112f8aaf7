#include "platform/uikit/tables/TableCellPool.h"

#include <algorithm>

namespace platform {

void TableCellPool::put(std::string_view identifier, const Cell& cell, std::uint64_t row) {
  auto found = _entries.find(identifier);
  if (found == _entries.end()) found = _entries.try_emplace(std::string(identifier)).first;
  found->second.push_back({cell, row});
}

TableCellPool::Cell TableCellPool::take(std::string_view identifier, std::uint64_t row,
                                        const std::unordered_set<std::uint64_t>& waiting) {
  const auto found = _entries.find(identifier);
  if (found == _entries.end()) return nullptr;
  auto& entries = found->second;
  auto entry = row == 0 ? entries.end() : std::ranges::find(entries, row, &Entry::row);
  if (entry == entries.end()) {
    entry = std::ranges::find_if(entries,
                                 [&](const Entry& each) { return !waiting.contains(each.row); });
  }
  if (entry == entries.end()) return nullptr;
  Cell cell = std::move(entry->cell);
  entries.erase(entry);
  return cell;
}

void TableCellPool::remove(const Cell& cell) {
  for (auto& [identifier, entries] : _entries) {
    std::erase_if(entries, [&](const Entry& entry) { return entry.cell == cell; });
  }
}

}  // namespace platform

#include "platform/preferences/PSSpecifierRows.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace platform {

PSSpecifiers makeSpecifiers(PSSpecifierList list) {
  return std::make_shared<const PSSpecifierList>(std::move(list));
}

Value valueOfSpecifiers(const PSSpecifiers& specifiers) {
  if (!specifiers) return {};
  return Array(std::vector<Value>(specifiers->begin(), specifiers->end()));
}

std::optional<std::size_t> indexOfSpecifier(const PSSpecifiers& rows,
                                            const PSSpecifier* specifier) {
  if (!rows || !specifier) return std::nullopt;
  const auto found =
      std::ranges::find_if(*rows, [&](const auto& row) { return row.get() == specifier; });
  if (found == rows->end()) return std::nullopt;
  return static_cast<std::size_t>(found - rows->begin());
}

std::optional<std::size_t> indexOfSpecifierID(const PSSpecifiers& rows,
                                              std::string_view identifier) {
  if (!rows) return std::nullopt;
  const auto found =
      std::ranges::find_if(*rows, [&](const auto& row) { return row->identifier() == identifier; });
  if (found == rows->end()) return std::nullopt;
  return static_cast<std::size_t>(found - rows->begin());
}

PSSpecifiers PSSpecifierRows::snapshot() const {
  const std::lock_guard lock(_mutex);
  return _rows;
}

void PSSpecifierRows::assign(PSSpecifiers rows) {
  // `rows` releases the old list after the lock.
  const std::lock_guard lock(_mutex);
  _rows.swap(rows);
}

PSSpecifierRows::Change PSSpecifierRows::splice(std::size_t index, std::size_t removed,
                                                const PSSpecifierList& added) {
  if (!_rows || index > _rows->size() || (removed == 0 && added.empty())) return {};
  const auto at = [&](std::size_t position) {
    return _rows->begin() + static_cast<PSSpecifierList::difference_type>(position);
  };
  PSSpecifierList list(at(0), at(index));
  list.insert(list.end(), added.begin(), added.end());
  list.insert(list.end(), at(index + removed), _rows->end());
  Change change{_rows, makeSpecifiers(std::move(list)), index, removed, added.size()};
  _rows = change.after;
  return change;
}

PSSpecifierRows::Change PSSpecifierRows::insert(const PSSpecifierList& added, std::size_t index) {
  const std::lock_guard lock(_mutex);
  return splice(index, 0, added);
}

PSSpecifierRows::Change PSSpecifierRows::insertAfter(const PSSpecifierList& added,
                                                     const PSSpecifier* anchor) {
  const std::lock_guard lock(_mutex);
  const auto index = indexOfSpecifier(_rows, anchor);
  return index ? splice(*index + 1, 0, added) : Change();
}

PSSpecifierRows::Change PSSpecifierRows::insertAfterID(const PSSpecifierList& added,
                                                       std::string_view identifier) {
  const std::lock_guard lock(_mutex);
  const auto index = indexOfSpecifierID(_rows, identifier);
  return index ? splice(*index + 1, 0, added) : Change();
}

PSSpecifierRows::Change PSSpecifierRows::insertAtEnd(const PSSpecifierList& added) {
  const std::lock_guard lock(_mutex);
  return _rows ? splice(_rows->size(), 0, added) : Change();
}

PSSpecifierRows::Change PSSpecifierRows::remove(const PSSpecifier* specifier) {
  const std::lock_guard lock(_mutex);
  const auto index = indexOfSpecifier(_rows, specifier);
  return index ? splice(*index, 1, {}) : Change();
}

PSSpecifierRows::Change PSSpecifierRows::removeID(std::string_view identifier) {
  const std::lock_guard lock(_mutex);
  const auto index = indexOfSpecifierID(_rows, identifier);
  return index ? splice(*index, 1, {}) : Change();
}

PSSpecifierRows::Change PSSpecifierRows::replaceContiguous(const PSSpecifierList& removed,
                                                           const PSSpecifierList& added) {
  const std::lock_guard lock(_mutex);
  if (removed.empty()) return {};
  const auto first = indexOfSpecifier(_rows, removed.front().get());
  if (!first || _rows->size() - *first < removed.size()) return {};
  const auto begin = _rows->begin() + static_cast<PSSpecifierList::difference_type>(*first);
  if (!std::equal(removed.begin(), removed.end(), begin)) return {};
  return splice(*first, removed.size(), added);
}

}  // namespace platform

#include "platform/uikit/tables/TableModel.h"

#include <algorithm>
#include <deque>
#include <map>

#include "platform/uikit/drawing/UIKitState.h"

namespace platform {
namespace {

std::uint64_t makeToken() {
  return UIKitState::current().makeNodeIdentifier();
}

// Returns equal keys for values that represent the same thing: objects by identity, others by
// description.
std::string identityKey(const Value& identity) {
  if (const auto object = identity.asObject()) {
    return "object " + std::to_string(reinterpret_cast<std::uintptr_t>(object.get()));
  }
  return std::to_string(static_cast<int>(identity.kind())) + " " + identity.description();
}

// The tokens of the previous rows, for new rows with the same identity.
class TokenStore {
 public:
  explicit TokenStore(const std::vector<TableSection>& sections) {
    for (std::size_t section = 0; section < sections.size(); ++section) {
      const auto& rows = sections[section].rows;
      for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].identity.isNone()) {
          _byPlace[{section, row}] = rows[row].token;
        } else {
          _byIdentity[identityKey(rows[row].identity)].push_back(rows[row].token);
        }
      }
    }
  }

  std::uint64_t take(const Value& identity, std::size_t section, std::size_t row) {
    if (identity.isNone()) {
      const auto found = _byPlace.find({section, row});
      return found == _byPlace.end() ? makeToken() : found->second;
    }
    const auto found = _byIdentity.find(identityKey(identity));
    if (found == _byIdentity.end() || found->second.empty()) return makeToken();
    const std::uint64_t token = found->second.front();
    found->second.pop_front();
    return token;
  }

 private:
  std::map<std::pair<std::size_t, std::size_t>, std::uint64_t> _byPlace;
  std::map<std::string, std::deque<std::uint64_t>> _byIdentity;
};

bool isIndex(std::int64_t index, std::size_t size) {
  return index >= 0 && static_cast<std::size_t>(index) < size;
}

}  // namespace

const TableSection* TableModel::section(std::int64_t index) const noexcept {
  return isIndex(index, _sections.size()) ? &_sections[static_cast<std::size_t>(index)] : nullptr;
}

const TableRow* TableModel::row(IndexPath path) const noexcept {
  const TableSection* found = section(path.section);
  if (found == nullptr || !isIndex(path.row, found->rows.size())) return nullptr;
  return &found->rows[static_cast<std::size_t>(path.row)];
}

TableRow* TableModel::row(IndexPath path) noexcept {
  return const_cast<TableRow*>(std::as_const(*this).row(path));
}

std::optional<IndexPath> TableModel::pathOfToken(std::uint64_t token) const noexcept {
  for (std::size_t section = 0; section < _sections.size(); ++section) {
    const auto& rows = _sections[section].rows;
    const auto found = std::ranges::find(rows, token, &TableRow::token);
    if (found != rows.end()) {
      return IndexPath{static_cast<std::int64_t>(section), found - rows.begin()};
    }
  }
  return std::nullopt;
}

void TableModel::replace(std::vector<TableSection> sections) {
  TokenStore tokens(_sections);
  for (std::size_t section = 0; section < sections.size(); ++section) {
    const bool isKnown = section < _sections.size();
    sections[section].token = isKnown ? _sections[section].token : makeToken();
    auto& rows = sections[section].rows;
    for (std::size_t row = 0; row < rows.size(); ++row) {
      rows[row].token = tokens.take(rows[row].identity, section, row);
    }
  }
  _sections = std::move(sections);
}

bool TableModel::moveRow(IndexPath from, IndexPath to) {
  if (row(from) == nullptr || section(to.section) == nullptr) return false;
  auto& source = _sections[static_cast<std::size_t>(from.section)].rows;
  auto& target = _sections[static_cast<std::size_t>(to.section)].rows;
  const std::size_t places = target.size() + (&source == &target ? 0 : 1);
  if (!isIndex(to.row, places)) return false;
  TableRow moved = std::move(source[static_cast<std::size_t>(from.row)]);
  source.erase(source.begin() + from.row);
  target.insert(target.begin() + to.row, std::move(moved));
  return true;
}

double TableModel::place(double top) {
  for (TableSection& section : _sections) {
    section.y = top;
    top += section.headerHeight;
    for (TableRow& row : section.rows) {
      row.y = top;
      top += row.height;
    }
    top += section.footerHeight;
  }
  return top;
}

std::optional<IndexPath> TableModel::pathAtY(double y) const noexcept {
  for (std::size_t section = 0; section < _sections.size(); ++section) {
    const auto& rows = _sections[section].rows;
    const auto found = std::ranges::find_if(
        rows, [y](const TableRow& row) { return y >= row.y && y < row.y + row.height; });
    if (found != rows.end()) {
      return IndexPath{static_cast<std::int64_t>(section), found - rows.begin()};
    }
  }
  return std::nullopt;
}

}  // namespace platform

#include <algorithm>
#include <set>

#include "platform/uikit/drawing/UIKitState.h"
#include "platform/uikit/tables/TableModel.h"

// Batches of insertions, deletions and moves.
namespace platform {
namespace {

std::string describe(IndexPath path) {
  return "row " + std::to_string(path.row) + " of section " + std::to_string(path.section);
}

// Applies a batch to a copy of the sections.
class Batch {
 public:
  Batch(std::vector<TableSection> sections, const TableUpdates& updates)
      : _sections(std::move(sections)), _updates(updates) {}

  // Returns the reason if the batch is invalid.
  std::optional<std::string> apply() {
    takeRowsOut();
    takeSectionsOut();
    putSectionsIn();
    putRowsIn();
    return _problem;
  }
  std::vector<TableSection> takeSections() { return std::move(_sections); }

 private:
  struct Arrival {
    IndexPath path;
    TableRow row;
  };

  std::vector<TableRow>* rowsOf(std::int64_t section) {
    if (section < 0 || section >= static_cast<std::int64_t>(_sections.size())) return nullptr;
    return &_sections[static_cast<std::size_t>(section)].rows;
  }

  void refuse(std::string reason) {
    if (!_problem) _problem = std::move(reason);
  }

  // From last to first, so that the indices remain valid.
  void takeRowsOut() {
    std::set<IndexPath> leaving;
    const auto leave = [&](IndexPath path) {
      const auto* rows = rowsOf(path.section);
      if (rows == nullptr || path.row < 0 || path.row >= static_cast<std::int64_t>(rows->size())) {
        refuse("attempt to delete " + describe(path) + ", which does not exist before the update");
      } else if (!leaving.insert(path).second) {
        refuse("attempt to delete " + describe(path) + " twice");
      }
    };
    for (const IndexPath path : _updates.deletedRows) leave(path);
    for (const auto& [from, to] : _updates.movedRows) leave(from);
    if (_problem) return;
    for (const auto& [from, to] : _updates.movedRows) {
      _arrivals.push_back({to, (*rowsOf(from.section))[static_cast<std::size_t>(from.row)]});
    }
    for (auto path = leaving.rbegin(); path != leaving.rend(); ++path) {
      auto& rows = *rowsOf(path->section);
      rows.erase(rows.begin() + path->row);
    }
  }

  void takeSectionsOut() {
    if (_problem) return;
    const std::set<std::int64_t> leaving(_updates.deletedSections.begin(),
                                         _updates.deletedSections.end());
    for (auto index = leaving.rbegin(); index != leaving.rend(); ++index) {
      if (rowsOf(*index) == nullptr) {
        return refuse("attempt to delete section " + std::to_string(*index) +
                      ", which does not exist before the update");
      }
      _sections.erase(_sections.begin() + *index);
    }
  }

  void putSectionsIn() {
    const std::set<std::int64_t> arriving(_updates.insertedSections.begin(),
                                          _updates.insertedSections.end());
    for (const std::int64_t index : arriving) {
      if (_problem) return;
      if (index < 0 || index > static_cast<std::int64_t>(_sections.size())) {
        return refuse("attempt to insert section " + std::to_string(index) + ", but there are " +
                      std::to_string(_sections.size()) + " sections after the update");
      }
      TableSection section;
      section.token = UIKitState::current().makeNodeIdentifier();
      _sections.insert(_sections.begin() + index, std::move(section));
    }
  }

  // From first to last, because indices refer to the state after the update.
  void putRowsIn() {
    for (const IndexPath path : _updates.insertedRows) {
      TableRow row;
      row.token = UIKitState::current().makeNodeIdentifier();
      _arrivals.push_back({path, std::move(row)});
    }
    std::ranges::stable_sort(_arrivals, {}, &Arrival::path);
    for (Arrival& arrival : _arrivals) {
      if (_problem) return;
      auto* rows = rowsOf(arrival.path.section);
      const std::int64_t count = rows ? static_cast<std::int64_t>(rows->size()) : 0;
      if (rows == nullptr || arrival.path.row < 0 || arrival.path.row > count) {
        return refuse("attempt to insert " + describe(arrival.path) + ", but there are only " +
                      std::to_string(count) + " rows in that section after the update");
      }
      rows->insert(rows->begin() + arrival.path.row, std::move(arrival.row));
    }
  }

  std::vector<TableSection> _sections;
  const TableUpdates& _updates;
  std::vector<Arrival> _arrivals;
  std::optional<std::string> _problem;
};

}  // namespace

std::optional<std::string> TableModel::apply(const TableUpdates& updates) {
  for (const IndexPath path : updates.reloadedRows) {
    if (row(path) == nullptr) {
      return "attempt to reload " + describe(path) + ", which does not exist";
    }
  }
  for (const std::int64_t index : updates.reloadedSections) {
    if (section(index) == nullptr) {
      return "attempt to reload section " + std::to_string(index) + ", which does not exist";
    }
  }
  Batch batch(_sections, updates);
  if (auto problem = batch.apply()) return problem;
  _sections = batch.takeSections();
  return std::nullopt;
}

}  // namespace platform

#include "settings/panes/EditWatch.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "platform/uikit/tables/UITableView.h"
#include "settings/tree/ActionMembers.h"
#include "settings/tree/NodeTarget.h"

namespace settings {

using platform::IndexPath;

namespace {

bool isEdit(const nlohmann::json& action) {
  const auto name = stringMember(action, "action");
  return name == "move" || name == "commit";
}

// The section's header for use inside a sentence: drops the colon of "Enabled modules:".
std::string sectionName(platform::UITableView& table, std::int64_t section) {
  std::string name = table.headerTitle(section).value_or("");
  if (name.ends_with(':')) name.pop_back();
  return name.empty() ? "section " + std::to_string(section + 1) : name;
}

std::string placeText(platform::UITableView& table, IndexPath path) {
  return std::to_string(path.row + 1) + " of " +
         std::to_string(table.numberOfRowsInSection(path.section)) + " in " +
         sectionName(table, path.section);
}

}  // namespace

EditWatch::EditWatch(const nlohmann::json& action, const NodeTarget* target, std::string title)
    : _title(title.empty() ? "The row" : std::move(title)) {
  if (!isEdit(action) || !target || target->kind != "row") return;
  _table = target->as<platform::UITableView>();
  if (!_table) return;
  _row = target->token;
  _before = rows();
}

std::vector<std::vector<std::uint64_t>> EditWatch::rows() const {
  std::vector<std::vector<std::uint64_t>> result;
  for (std::int64_t section = 0; section < _table->numberOfSections(); ++section) {
    auto& tokens = result.emplace_back();
    const std::int64_t count = _table->numberOfRowsInSection(section);
    for (IndexPath path{section, 0}; path.row < count; ++path.row) {
      tokens.push_back(_table->rowToken(path));
    }
  }
  return result;
}

std::optional<std::string> EditWatch::outcome() const {
  if (!_table) return std::nullopt;
  if (rows() == _before) return _title + " stays where it is";
  const auto path = _table->indexPathForRowToken(_row);
  return path ? _title + " is now " + placeText(*_table, *path) : _title + " was removed";
}

}  // namespace settings

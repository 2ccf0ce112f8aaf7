#include "settings/scripting/TreeQuery.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "settings/tree/NodeKinds.h"

namespace settings {

using nlohmann::json;

namespace {

// A page may have thousands of rows; listing them all would hide the message.
constexpr std::size_t mostRowsTold = 50;

std::string kindOf(const FoundNode& found) {
  return found ? TreeQuery::text(*found.node, "kind") : std::string();
}

std::vector<std::string_view> kindsWithValue() {
  std::vector<std::string_view> names;
  for (const NodeKind& kind : nodeKinds().all()) {
    if (kind.shownValue) names.push_back(kind.name);
  }
  return names;
}

}  // namespace

std::string TreeQuery::text(const json& node, std::string_view member) {
  const auto found = node.find(member);
  return found != node.end() && found->is_string() ? found->get<std::string>() : std::string();
}

FoundNode TreeQuery::find(const std::string& id) const {
  const json& nodes = _tree["nodes"];
  const auto found = nodes.find(id);
  if (found == nodes.end()) return {};
  return {id, &*found};
}

std::vector<FoundNode> TreeQuery::children(const FoundNode& node) const {
  std::vector<FoundNode> result;
  if (!node) return result;
  for (const json& child : (*node.node)["children"]) {
    result.push_back(find(child.get_ref<const std::string&>()));
  }
  return result;
}

FoundNode TreeQuery::firstOfKind(const FoundNode& node,
                                 const std::vector<std::string_view>& kinds) const {
  if (!node) return {};
  if (std::ranges::find(kinds, std::string_view(kindOf(node))) != kinds.end()) return node;
  for (const FoundNode& child : children(node)) {
    if (FoundNode found = firstOfKind(child, kinds)) return found;
  }
  return {};
}

FoundNode TreeQuery::outerNavigation() const {
  for (const FoundNode& child : children(find(text(_tree, "root")))) {
    if (kindOf(child) == "navigation") return child;
  }
  return {};
}

FoundNode TreeQuery::presented() const {
  const auto shown = children(find(text(_tree, "root")));
  if (shown.empty() || kindOf(shown.back()) == "navigation") return {};
  return shown.back();
}

FoundNode TreeQuery::innerNavigation() const {
  FoundNode current = outerNavigation();
  for (;;) {
    const auto below = children(current);
    if (below.empty() || kindOf(below.back()) != "navigation") return current;
    current = below.back();
  }
}

FoundNode TreeQuery::page() const {
  return firstOfKind(innerNavigation(), {"page"});
}

FoundNode TreeQuery::table() const {
  return firstOfKind(page(), {"table"});
}

std::vector<FoundNode> TreeQuery::sections() const {
  std::vector<FoundNode> result;
  for (const FoundNode& child : children(table())) {
    if (kindOf(child) == "section") result.push_back(child);
  }
  return result;
}

std::vector<FoundNode> TreeQuery::rows() const {
  std::vector<FoundNode> result;
  for (const FoundNode& section : sections()) {
    for (const FoundNode& row : children(section)) result.push_back(row);
  }
  return result;
}

bool TreeQuery::isNamed(const json& row, const RowAddress& address) {
  const bool byIdentifier = address.by == RowAddress::By::identifier;
  const char* member = byIdentifier ? "identifier" : "title";
  return row.contains(member) && row[member] == address.name;
}

FoundNode TreeQuery::row(const RowAddress& address) const {
  if (address.by == RowAddress::By::position) {
    const auto all = sections();
    if (address.section >= all.size()) return {};
    const auto inSection = children(all[address.section]);
    return address.row < inSection.size() ? inSection[address.row] : FoundNode{};
  }
  std::size_t left = address.occurrence;
  for (const FoundNode& row : rows()) {
    if (isNamed(*row.node, address) && --left == 0) return row;
  }
  return {};
}

FoundNode TreeQuery::section(const RowAddress& address) const {
  const auto all = sections();
  if (address.by != RowAddress::By::position) {
    std::size_t left = address.occurrence;
    for (const FoundNode& section : all) {
      const bool named = address.by == RowAddress::By::identifier
                             ? text(*section.node, "identifier") == address.name
                             : text(*section.node, "header") == address.name;
      if (named && --left == 0) return section;
    }
  }
  const FoundNode found = row(address);
  if (!found) return {};
  const auto index = (*found.node)["section"].get<std::size_t>();
  return index < all.size() ? all[index] : FoundNode{};
}

FoundNode TreeQuery::control(const FoundNode& row) const {
  static const auto kinds = kindsWithValue();
  return firstOfKind(row, kinds);
}

json TreeQuery::shownValue(const FoundNode& row) const {
  if (const FoundNode found = control(row)) {
    return nodeKinds().named(kindOf(found)).shownValue(*found.node);
  }
  const FoundNode cell = firstOfKind(row, {"cell"});
  if (!cell || !cell.node->contains("detail")) return nullptr;
  return (*cell.node)["detail"]["string"];
}

std::string TreeQuery::rowName(const json& row) {
  const std::string identifier = text(row, "identifier");
  return identifier.empty() ? "\"" + text(row, "title") + "\"" : "#" + identifier;
}

std::string TreeQuery::rowNames() const {
  const auto all = rows();
  const std::size_t told = std::min(all.size(), mostRowsTold);
  std::string names;
  for (std::size_t index = 0; index < told; ++index) {
    names += (names.empty() ? "" : ", ") + rowName(*all[index].node);
  }
  if (told < all.size()) names += " and " + std::to_string(all.size() - told) + " more";
  return names.empty() ? "none" : names;
}

}  // namespace settings

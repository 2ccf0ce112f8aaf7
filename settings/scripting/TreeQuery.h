#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/scripting/RowAddress.h"

namespace settings {

// A node of a tree with its identity.
struct FoundNode {
  std::string id;
  const nlohmann::json* node = nullptr;
  explicit operator bool() const noexcept { return node != nullptr; }
};

// Searches a tree (docs/tree.md) for what a user would point at on the screen. Borrows the tree.
class TreeQuery {
 public:
  explicit TreeQuery(const nlohmann::json& tree) : _tree(tree) {}

  FoundNode find(const std::string& id) const;
  std::vector<FoundNode> children(const FoundNode& node) const;
  // The node itself or its nearest descendant of one of the kinds, in display order.
  FoundNode firstOfKind(const FoundNode& node, const std::vector<std::string_view>& kinds) const;

  // The visible presentation over the navigation: an alert, a picker, or a crash report.
  FoundNode presented() const;
  FoundNode outerNavigation() const;
  FoundNode innerNavigation() const;  // the outer one if there is no other
  FoundNode page() const;             // the page on top
  FoundNode table() const;            // of the page; none if it has no table

  // The rows, or the sections, of the page's table, in display order.
  std::vector<FoundNode> rows() const;
  std::vector<FoundNode> sections() const;
  // The row with this address; none if there is no such row.
  FoundNode row(const RowAddress& address) const;
  // Returns whether the row has the identifier, or the label, of the address.
  static bool isNamed(const nlohmann::json& row, const RowAddress& address);
  // The section of a group's identifier or header, or the section that contains the row.
  FoundNode section(const RowAddress& address) const;
  // The control of a row that has a value (NodeKind::shownValue).
  FoundNode control(const FoundNode& row) const;

  // The value that a row shows: a switch's state, the number of a slider, the text of a field, the
  // title of the selected segment, or the detail text. Null if it shows none or is out of sight.
  nlohmann::json shownValue(const FoundNode& row) const;
  // The names of the rows for messages: `#identifier` or label. If there are many, only the first
  // ones.
  std::string rowNames() const;
  static std::string rowName(const nlohmann::json& row);

  static std::string text(const nlohmann::json& node, std::string_view member);

 private:
  const nlohmann::json& _tree;
};

}  // namespace settings

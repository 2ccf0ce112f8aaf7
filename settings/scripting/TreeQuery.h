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

// Finds its way in a tree as docs/tree.md describes it: what a person looking at the screen would
// point at. Borrows the tree.
class TreeQuery {
 public:
  explicit TreeQuery(const nlohmann::json& tree) : _tree(tree) {}

  FoundNode find(const std::string& id) const;
  std::vector<FoundNode> children(const FoundNode& node) const;
  // The node itself or the nearest one below it of one of the kinds, in display order.
  FoundNode firstOfKind(const FoundNode& node, const std::vector<std::string_view>& kinds) const;

  // What is presented over the navigation and can be seen: an alert, a picker, a crash report.
  FoundNode presented() const;
  FoundNode outerNavigation() const;
  FoundNode innerNavigation() const;  // the outer one where there is no other
  FoundNode page() const;             // the page on top
  FoundNode table() const;            // its table, if it has one

  // The rows, or the sections, of the page's table, in display order.
  std::vector<FoundNode> rows() const;
  std::vector<FoundNode> sections() const;
  // The row that the address names; none where there is no such row.
  FoundNode row(const RowAddress& address) const;
  // Whether the row has the identifier, or the label, of the address.
  static bool isNamed(const nlohmann::json& row, const RowAddress& address);
  // The section of a group's identifier or header, or the section that the row stands in.
  FoundNode section(const RowAddress& address) const;
  // The control of a row that holds a value (NodeKind::shownValue).
  FoundNode control(const FoundNode& row) const;

  // What a row shows as its value: a switch's state, the number of a slider, the text of a field,
  // the title of the selected segment, or the detail text. Null where it shows none or is out of
  // sight.
  nlohmann::json shownValue(const FoundNode& row) const;
  // The names of the rows, for messages: `#identifier` or label; of many the first ones.
  std::string rowNames() const;
  static std::string rowName(const nlohmann::json& row);

  static std::string text(const nlohmann::json& node, std::string_view member);

 private:
  const nlohmann::json& _tree;
};

}  // namespace settings

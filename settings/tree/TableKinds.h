#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/foundation/values/Value.h"
#include "platform/uikit/tables/NSIndexPath.h"
#include "settings/tree/NodeKind.h"

namespace platform {
class UITableView;
class UITableViewCell;
}  // namespace platform

namespace settings {

// A row at its present place in its table.
struct RowPlace {
  std::shared_ptr<platform::UITableView> table;
  platform::IndexPath path;
  std::shared_ptr<platform::UITableViewCell> cell;  // empty while it is out of sight
  platform::Value identity;  // what the data source knows it by: a specifier, or a text

  static RowPlace at(const std::shared_ptr<platform::UITableView>& table, platform::IndexPath path);
  // Returns nothing if the node is not a row or the row is gone.
  static std::optional<RowPlace> of(const NodeTarget& target);
};

// Tables, and what lies in them.
std::vector<NodeKind> tableKinds();

}  // namespace settings

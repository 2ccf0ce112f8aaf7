#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/values/Value.h"
#include "platform/uikit/tables/NSIndexPath.h"
#include "platform/uikit/tables/UITableViewCell.h"

namespace platform {

class UITableView;

// Supplies the rows of a table. Except for the first two functions, the defaults behave like a data
// source without the function.
class UITableViewDataSource {
 public:
  virtual ~UITableViewDataSource() = default;

  virtual std::int64_t numberOfRowsInSection(const std::shared_ptr<UITableView>& tableView,
                                             std::int64_t section) = 0;
  virtual std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(
      const std::shared_ptr<UITableView>& tableView, IndexPath indexPath) = 0;

  virtual std::int64_t numberOfSectionsInTableView(const std::shared_ptr<UITableView>&) {
    return 1;
  }
  virtual std::optional<std::string> titleForHeaderInSection(const std::shared_ptr<UITableView>&,
                                                             std::int64_t /*section*/) {
    return std::nullopt;
  }
  virtual std::optional<std::string> titleForFooterInSection(const std::shared_ptr<UITableView>&,
                                                             std::int64_t /*section*/) {
    return std::nullopt;
  }
  virtual bool canEditRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {
    return true;
  }
  // For a data source that implements moveRowAtIndexPath: returns whether the row can be moved.
  virtual bool canMoveRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {
    return false;
  }
  virtual void commitEditingStyle(const std::shared_ptr<UITableView>&, UITableViewCellEditingStyle,
                                  IndexPath) {}
  // The user dragged a row. The table already shows it in its new place. The destination counts
  // without the moved row.
  virtual void moveRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath /*from*/,
                                  IndexPath /*to*/) {}

  // Returns what the row represents, so that it keeps its identity when a reload changes its
  // position. If none, the row is identified by its position.
  virtual Value identityForRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {
    return {};
  }
};

}  // namespace platform

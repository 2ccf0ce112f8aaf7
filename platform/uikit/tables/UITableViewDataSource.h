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

// Where a table gets its rows from. Every operation but the first two has the answer of a data
// source without it.
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
  // A data source that takes moves (moveRowAtIndexPath) says here for which rows.
  virtual bool canMoveRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {
    return false;
  }
  virtual void commitEditingStyle(const std::shared_ptr<UITableView>&, UITableViewCellEditingStyle,
                                  IndexPath) {}
  // The user has dragged a row; the table shows it in its new place already. The destination is
  // counted as after the row has left its old place.
  virtual void moveRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath /*from*/,
                                  IndexPath /*to*/) {}

  // What the row stands for, so that it keeps its identity when the table is reloaded and it
  // stands elsewhere. None: the row is known by its place alone.
  virtual Value identityForRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {
    return {};
  }
};

}  // namespace platform

#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/uikit/tables/NSIndexPath.h"
#include "platform/uikit/tables/UITableViewCell.h"
#include "platform/uikit/views/UIScrollView.h"

namespace platform {

class UITableView;

// What a table asks and tells. Every operation has the answer of a delegate without it.
class UITableViewDelegate : public UIScrollViewDelegate {
 public:
  // Asks the table to take its own height: of a row, what its cell asks for; of a header or
  // footer, what its title takes.
  static constexpr double automaticDimension = -1;

  virtual double heightForRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {
    return automaticDimension;
  }
  virtual double heightForHeaderInSection(const std::shared_ptr<UITableView>&,
                                          std::int64_t /*section*/) {
    return automaticDimension;
  }
  virtual double heightForFooterInSection(const std::shared_ptr<UITableView>&,
                                          std::int64_t /*section*/) {
    return automaticDimension;
  }
  // Whether a tap on the row does something.
  virtual bool shouldHighlightRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {
    return true;
  }
  // The row to select in place of the tapped one; none selects nothing.
  virtual std::optional<IndexPath> willSelectRowAtIndexPath(const std::shared_ptr<UITableView>&,
                                                            IndexPath indexPath) {
    return indexPath;
  }
  virtual void didSelectRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {}
  virtual void didDeselectRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {}
  virtual void willDisplayCell(const std::shared_ptr<UITableView>&,
                               const std::shared_ptr<UITableViewCell>&, IndexPath) {}
  virtual UITableViewCellEditingStyle editingStyleForRowAtIndexPath(
      const std::shared_ptr<UITableView>&, IndexPath) {
    return UITableViewCellEditingStyle::deletion;
  }
};

}  // namespace platform

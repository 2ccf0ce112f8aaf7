#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/uikit/tables/NSIndexPath.h"
#include "platform/uikit/tables/UITableViewCell.h"
#include "platform/uikit/views/UIScrollView.h"

namespace platform {

class UITableView;

// The delegate of a table. The defaults behave like a delegate without the function.
class UITableViewDelegate : public UIScrollViewDelegate {
 public:
  // Lets the table determine the height: that of the cell for a row, that of the title for a header
  // or footer.
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
  // Returns whether a tap on the row has an effect.
  virtual bool shouldHighlightRowAtIndexPath(const std::shared_ptr<UITableView>&, IndexPath) {
    return true;
  }
  // Returns the row to select instead of the tapped one; none to select nothing.
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

#pragma once

#include "platform/preferences/PSControlTableCell.h"
#include "platform/uikit/controls/UISegmentedControl.h"

namespace platform {

// A segmented control in the content view. Writes the element of the specifier's valid values, and
// only if the selection has changed. A value that is not one of them selects no segment.
// Threads: main.
class PSSegmentTableCell : public PSControlTableCell {
  PLATFORM_CLASS(PSSegmentTableCell)

 public:
  void controlChanged(const std::shared_ptr<UIControl>& sender) override;
  void refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier) override;

 protected:
  std::shared_ptr<UIControl> makeControl() override;
  void showValue(const Value& value) override;

 private:
  bool showTitles(const PSSpecifier& shown);
};

}  // namespace platform

#pragma once

#include "platform/preferences/PSControlTableCell.h"
#include "platform/uikit/controls/UISegmentedControl.h"

namespace platform {

// A segmented choice, in the content view. Writes the element of the specifier's valid values, and
// only where another segment was chosen; a value that is not among them selects no segment.
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

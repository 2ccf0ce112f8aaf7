#pragma once

#include "platform/preferences/PSTableCell.h"

namespace platform {

// A title with a value: the value's title if the specifier has valid values, otherwise the value's
// own text. Threads: main.
class PSValueTableCell : public PSTableCell {
  PLATFORM_CLASS(PSValueTableCell)

 public:
  void refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier) override;

 protected:
  void showValue(const Value& value) override;
};

// One choice of a list; the selected one has a checkmark. Threads: main.
class PSListItemTableCell : public PSTableCell {
  PLATFORM_CLASS(PSListItemTableCell)

 public:
  void setChecked(bool checked);
};

}  // namespace platform

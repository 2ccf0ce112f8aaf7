#pragma once

#include "platform/preferences/PSTableCell.h"

namespace platform {

// A title with a value behind it: the value's title where the specifier has valid values, else the
// value's own text. Threads: main.
class PSValueTableCell : public PSTableCell {
  PLATFORM_CLASS(PSValueTableCell)

 public:
  void refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier) override;

 protected:
  void showValue(const Value& value) override;
};

// One choice of a list: the tick stands at the chosen one. Threads: main.
class PSListItemTableCell : public PSTableCell {
  PLATFORM_CLASS(PSListItemTableCell)

 public:
  void setChecked(bool checked);
};

}  // namespace platform

#pragma once

#include "platform/preferences/PSControlTableCell.h"
#include "platform/uikit/controls/UISwitch.h"

namespace platform {

// A switch as the accessory view. Writes booleans. Shows numbers and strings by their boolean
// value, and any other value as off. Threads: main.
class PSSwitchTableCell : public PSControlTableCell {
  PLATFORM_CLASS(PSSwitchTableCell)

 public:
  void controlChanged(const std::shared_ptr<UIControl>& sender) override;

 protected:
  std::shared_ptr<UIControl> makeControl() override;
  void showValue(const Value& value) override;
};

}  // namespace platform

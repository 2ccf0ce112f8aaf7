#include "platform/preferences/PSSwitchTableCell.h"

namespace platform {

std::shared_ptr<UIControl> PSSwitchTableCell::makeControl() {
  auto control = make<UISwitch>();
  control->addTarget(self<PSSwitchTableCell>(), "controlChanged:", UIControlEventValueChanged);
  setAccessoryView(control);
  return control;
}

void PSSwitchTableCell::showValue(const Value& value) {
  const bool hasTruth = value.isNumber() || value.isString();
  controlAs<UISwitch>()->setOn(hasTruth && value.boolValue());
}

void PSSwitchTableCell::controlChanged(const std::shared_ptr<UIControl>&) {
  writeValue(controlAs<UISwitch>()->isOn());
}

}  // namespace platform

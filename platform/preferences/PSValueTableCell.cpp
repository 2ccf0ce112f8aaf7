#include "platform/preferences/PSValueTableCell.h"

namespace platform {

// The titles of the values may have changed.
void PSValueTableCell::refreshCellContentsWithSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier) {
  PSTableCell::refreshCellContentsWithSpecifier(specifier);
  if (specifier && !specifier->problem()) showValue(value());
}

void PSValueTableCell::showValue(const Value& value) {
  const auto& label = detailTextLabel();
  if (!label) return;
  auto text = specifier()->titleForValue(value);
  if (!text && value) text = value.description();
  label->setText(text);
}

void PSListItemTableCell::setChecked(bool checked) {
  setAccessoryType(checked ? UITableViewCellAccessoryType::checkmark
                           : UITableViewCellAccessoryType::none);
}

}  // namespace platform

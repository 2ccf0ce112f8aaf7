#include "platform/preferences/PSTableCell.h"

#include <utility>

namespace platform {

bool PSTableCell::initWithStyle(UITableViewCellStyle style,
                                const std::optional<std::string>& reuseIdentifier,
                                const std::shared_ptr<PSSpecifier>& specifier) {
  if (!initWithStyle(style, reuseIdentifier)) return false;
  setSpecifier(specifier);
  showKind();
  return true;
}

void PSTableCell::setSpecifier(const std::shared_ptr<PSSpecifier>& specifier) {
  _specifier = specifier;
}

PSCellType PSTableCell::cellType() const {
  return _specifier ? _specifier->cellType() : PSStaticTextCell;
}

// Set once for the life of the cell; subclasses and pages may change it.
void PSTableCell::showKind() {
  const PSCellType type = cellType();
  const bool opensPage = type == PSLinkCell || type == PSLinkListCell;
  if (opensPage && !_specifier->problem()) {
    setAccessoryType(UITableViewCellAccessoryType::disclosureIndicator);
  }
  if (type == PSStaticTextCell) textLabel()->setNumberOfLines(0);
}

void PSTableCell::refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier) {
  if (!specifier) return;
  if (specifier != _specifier) setSpecifier(specifier);
  textLabel()->setText(specifier->name());
  if (cellType() == PSButtonCell) textLabel()->setTextColor(tintColor());
  imageView()->setImage(specifier->propertyForKey("iconImage").as<UIImage>());
  setCellEnabled(specifier->isEnabled());
  showProblem();
  refreshValue();
}

void PSTableCell::showProblem() {
  const auto problem = _specifier->problem();
  if (!problem || !detailTextLabel()) return;
  textLabel()->setText(_specifier->title());
  detailTextLabel()->setText(problem);
  detailTextLabel()->setNumberOfLines(0);
  setCellEnabled(false);
}

void PSTableCell::refreshValue() {
  if (!cellTypeShowsValue(cellType()) || _specifier->problem() || isEditingValue()) return;
  const Value value = _specifier->performGetter();
  if (!_hasShownValue || !(value == _value)) setValue(value);
}

void PSTableCell::setValue(const Value& value) {
  _value = value;
  _hasShownValue = true;
  showValue(value);
}

void PSTableCell::writeValue(const Value& value) {
  _value = value;
  _hasShownValue = true;
  if (const auto specifier = _specifier) specifier->performSetterWithValue(value);
}

void PSTableCell::setCellEnabled(bool enabled) {
  _cellEnabled = enabled;
  textLabel()->setEnabled(enabled);
  if (detailTextLabel()) detailTextLabel()->setEnabled(enabled);
}

void PSTableCell::tintColorDidChange() {
  UITableViewCell::tintColorDidChange();
  if (cellType() == PSButtonCell) textLabel()->setTextColor(tintColor());
}

std::shared_ptr<Object> PSTableCell::target() {
  if (auto target = _target.lock()) return target;
  return _specifier ? _specifier->target() : nullptr;
}

std::optional<std::string> PSTableCell::action() {
  if (_action) return _action;
  return _specifier ? _specifier->buttonAction() : std::nullopt;
}

std::shared_ptr<Object> PSTableCell::cellTarget() {
  return _cellTarget.lock();
}

std::optional<std::string> PSTableCell::cellAction() {
  return _cellAction;
}

}  // namespace platform

#include "platform/preferences/PSEditableTableCell.h"

#include "platform/preferences/PSKeyboard.h"

namespace platform {

namespace {

std::string textFor(const Value& value) {
  const bool hasText = value.isString() || value.isNumber() || value.asDate();
  return hasText ? value.description() : std::string();
}

}  // namespace

std::shared_ptr<UIControl> PSEditableTableCell::makeControl() {
  auto field = make<UITextField>();
  const auto cell = self<PSEditableTableCell>();
  field->addTarget(cell, "editingDidBegin:", UIControlEventEditingDidBegin);
  field->addTarget(cell, "controlChanged:", UIControlEventEditingDidEnd);
  contentView()->addSubview(field);
  return field;
}

void PSEditableTableCell::refreshCellContentsWithSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier) {
  if (specifier && control()) {
    const auto keyboard = specifier->propertyForKey("keyboard").text();
    textField()->setPlaceholder(specifier->propertyForKey("placeholder").text());
    textField()->setKeyboardType(
        keyboardNamed(keyboard.value_or("default")).value_or(UIKeyboardType::standard));
    textField()->setSecureTextEntry(specifier->cellType() == PSSecureEditTextCell);
  }
  PSControlTableCell::refreshCellContentsWithSpecifier(specifier);
}

void PSEditableTableCell::showValue(const Value& value) {
  textField()->setText(textFor(value));
}

bool PSEditableTableCell::isEditingValue() const {
  return control() && textField()->isEditing();
}

void PSEditableTableCell::editingDidBegin(const std::shared_ptr<UIControl>&) {
  _textAtBeginning = textField()->text();
}

void PSEditableTableCell::controlChanged(const std::shared_ptr<UIControl>&) {
  if (textField()->text() != _textAtBeginning) writeValue(textField()->text());
}

}  // namespace platform

#include "platform/uikit/controls/UITextField.h"

namespace platform {

void UITextField::setText(std::string text) {
  assign(_text, std::move(text));
}

void UITextField::setPlaceholder(std::optional<std::string> placeholder) {
  assign(_placeholder, std::move(placeholder));
}

void UITextField::setSecureTextEntry(bool secure) {
  assign(_secure, secure);
}

void UITextField::setKeyboardType(UIKeyboardType type) {
  assign(_keyboardType, type);
}

void UITextField::setTextColor(std::shared_ptr<UIColor> color) {
  assign(_textColor, std::move(color));
}

bool UITextField::becomeFirstResponder() {
  if (_editing) return true;
  if (!acceptsTouches()) return false;
  const auto field = self<UITextField>();
  if (const auto asked = delegate(); asked && !asked->textFieldShouldBeginEditing(field)) {
    return false;
  }
  _textAtBeginning = _text;
  assign(_editing, true);
  if (const auto told = delegate()) told->textFieldDidBeginEditing(field);
  sendActionsForControlEvents(UIControlEventEditingDidBegin);
  return true;
}

bool UITextField::resignFirstResponder() {
  if (!_editing) return true;
  const auto field = self<UITextField>();
  if (const auto asked = delegate(); asked && !asked->textFieldShouldEndEditing(field)) {
    return false;
  }
  assign(_editing, false);
  if (const auto told = delegate()) told->textFieldDidEndEditing(field);
  sendActionsForControlEvents(UIControlEventEditingDidEnd);
  return true;
}

bool UITextField::userChangeText(std::string text) {
  if (!becomeFirstResponder()) return false;
  if (assign(_text, std::move(text))) sendActionsForControlEvents(UIControlEventEditingChanged);
  return true;
}

bool UITextField::userReturn() {
  if (!becomeFirstResponder()) return false;
  const auto field = self<UITextField>();
  if (const auto asked = delegate(); asked && !asked->textFieldShouldReturn(field)) return false;
  sendActionsForControlEvents(UIControlEventEditingDidEndOnExit);
  return resignFirstResponder();
}

bool UITextField::userCancel() {
  if (!_editing) return false;
  if (assign(_text, _textAtBeginning)) sendActionsForControlEvents(UIControlEventEditingChanged);
  return resignFirstResponder();
}

}  // namespace platform

#pragma once

#include "platform/preferences/PSControlTableCell.h"
#include "platform/uikit/controls/UITextField.h"

namespace platform {

// A text field, in the content view, plain or secure by the specifier's kind, set up by
// "placeholder" and "keyboard". Writes a string at the end of editing, and only where the text has
// changed; shows texts, numbers and dates, and anything else as an empty text. Threads: main.
class PSEditableTableCell : public PSControlTableCell {
  PLATFORM_CLASS(PSEditableTableCell)

 public:
  std::shared_ptr<UITextField> textField() const { return controlAs<UITextField>(); }
  void controlChanged(const std::shared_ptr<UIControl>& sender) override;
  void refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier) override;
  // The operation "editingDidBegin:", which the field sends.
  void editingDidBegin(const std::shared_ptr<UIControl>& sender);

 protected:
  std::shared_ptr<UIControl> makeControl() override;
  void showValue(const Value& value) override;
  bool isEditingValue() const override;

 private:
  std::string _textAtBeginning;
};

}  // namespace platform

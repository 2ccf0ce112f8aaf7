#pragma once

#include "platform/preferences/PSControlTableCell.h"
#include "platform/uikit/controls/UITextField.h"

namespace platform {

// A text field in the content view, plain or secure depending on the specifier's kind, configured
// by "placeholder" and "keyboard". Writes a string at the end of editing, and only if the text has
// changed. Shows strings, numbers and dates; any other value shows as empty. Threads: main.
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

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/uikit/controls/UIControl.h"
#include "platform/uikit/drawing/UIFont.h"

namespace platform {

class UITextField;

enum class UIKeyboardType : std::uint8_t {
  standard = 0,
  url = 3,
  numberPad = 4,
  emailAddress = 7,
  decimalPad = 8,
};

// The delegate of a text field. The defaults behave like a delegate without the function.
class UITextFieldDelegate {
 public:
  virtual ~UITextFieldDelegate() = default;
  virtual bool textFieldShouldBeginEditing(const std::shared_ptr<UITextField>&) { return true; }
  virtual void textFieldDidBeginEditing(const std::shared_ptr<UITextField>&) {}
  virtual bool textFieldShouldEndEditing(const std::shared_ptr<UITextField>&) { return true; }
  virtual void textFieldDidEndEditing(const std::shared_ptr<UITextField>&) {}
  virtual bool textFieldShouldReturn(const std::shared_ptr<UITextField>&) { return true; }
};

// Threads: main.
class UITextField : public UIControl {
  PLATFORM_CLASS(UITextField)

 public:
  const std::string& text() const noexcept { return _text; }
  void setText(std::string text);
  const std::optional<std::string>& placeholder() const noexcept { return _placeholder; }
  void setPlaceholder(std::optional<std::string> placeholder);
  bool isSecureTextEntry() const noexcept { return _secure; }
  void setSecureTextEntry(bool secure);
  UIKeyboardType keyboardType() const noexcept { return _keyboardType; }
  void setKeyboardType(UIKeyboardType type);
  const std::shared_ptr<UIColor>& textColor() const noexcept { return _textColor; }
  void setTextColor(std::shared_ptr<UIColor> color);  // empty for labelColor
  void setDelegate(const std::shared_ptr<UITextFieldDelegate>& delegate) { _delegate = delegate; }
  std::shared_ptr<UITextFieldDelegate> delegate() const { return _delegate.lock(); }

  bool isEditing() const noexcept { return _editing; }
  // Begin or end editing, as the user would. Return true on success, also if nothing had to change.
  bool becomeFirstResponder();
  bool resignFirstResponder();
  Size intrinsicContentSize() const override { return {noIntrinsicMetric, 22}; }

  // User input. Each function begins editing if necessary. Returns false if the field refuses or
  // cannot be touched.
  bool userChangeText(std::string text);  // sends editingChanged
  // Return key: asks the delegate, sends editingDidEndOnExit, and ends editing.
  bool userReturn();
  // Ends editing and restores the text from before it. Sends editingChanged if the text changes.
  bool userCancel();

 private:
  std::string _text;
  std::string _textAtBeginning;
  std::optional<std::string> _placeholder;
  std::shared_ptr<UIColor> _textColor;
  std::weak_ptr<UITextFieldDelegate> _delegate;
  UIKeyboardType _keyboardType = UIKeyboardType::standard;
  bool _secure = false;
  bool _editing = false;
};

}  // namespace platform

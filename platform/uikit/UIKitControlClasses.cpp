#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/UIKitClassTables.h"
#include "platform/uikit/controls/UIButton.h"
#include "platform/uikit/controls/UIControl.h"
#include "platform/uikit/controls/UISegmentedControl.h"
#include "platform/uikit/controls/UISlider.h"
#include "platform/uikit/controls/UISwitch.h"
#include "platform/uikit/controls/UITextField.h"

namespace platform {
namespace {

Class textFieldClass() {
  ClassBuilder<UITextField> builder("UIControl");
  builder.property("text", &UITextField::text, &UITextField::setText)
      .property("placeholder", &UITextField::placeholder, &UITextField::setPlaceholder)
      .property("secureTextEntry", &UITextField::isSecureTextEntry,
                &UITextField::setSecureTextEntry)
      .property("keyboardType", &UITextField::keyboardType, &UITextField::setKeyboardType)
      .property("textColor", &UITextField::textColor, &UITextField::setTextColor)
      .key("editing", &UITextField::isEditing)
      .operation("becomeFirstResponder", &UITextField::becomeFirstResponder)
      .operation("resignFirstResponder", &UITextField::resignFirstResponder);
  return builder.build();
}

}  // namespace

void registerControlClasses(ClassRegistry& registry) {
  registry.add(
      ClassBuilder<UIControl>("UIView")
          .property("enabled", &UIControl::isEnabled, &UIControl::setEnabled)
          .property("selected", &UIControl::isSelected, &UIControl::setSelected)
          .property("highlighted", &UIControl::isHighlighted, &UIControl::setHighlighted)
          .operation("sendActionsForControlEvents:", &UIControl::sendActionsForControlEvents)
          .build());
  registry.add(ClassBuilder<UISwitch>("UIControl")
                   .key("on", &UISwitch::isOn)
                   .operation("isOn", &UISwitch::isOn)
                   .operation("setOn:", &UISwitch::setOn)
                   .operation("setOn:animated:", &UISwitch::setOn)
                   .property("onTintColor", &UISwitch::onTintColor, &UISwitch::setOnTintColor)
                   .build());
  registry.add(ClassBuilder<UISegmentedControl>("UIControl")
                   .property("selectedSegmentIndex", &UISegmentedControl::selectedSegmentIndex,
                             &UISegmentedControl::setSelectedSegmentIndex)
                   .key("numberOfSegments", &UISegmentedControl::numberOfSegments)
                   .build());
  registry.add(ClassBuilder<UISlider>("UIControl")
                   .property("value", &UISlider::value)
                   .operation("setValue:", &UISlider::setValue)
                   .operation("setValue:animated:", &UISlider::setValue)
                   .property("minimumValue", &UISlider::minimumValue, &UISlider::setMinimumValue)
                   .property("maximumValue", &UISlider::maximumValue, &UISlider::setMaximumValue)
                   .property("continuous", &UISlider::isContinuous, &UISlider::setContinuous)
                   .build());
  registry.add(textFieldClass());
  registry.add(ClassBuilder<UIButton>("UIControl")
                   .property("title", &UIButton::title, &UIButton::setTitle)
                   .build());
}

}  // namespace platform

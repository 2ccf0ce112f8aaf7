#include "settings/tree/ControlNodes.h"

#include <string_view>
#include <utility>

#include "platform/preferences/PSSliderTableCell.h"
#include "platform/uikit/controls/UIButton.h"
#include "platform/uikit/controls/UISegmentedControl.h"
#include "platform/uikit/controls/UISwitch.h"
#include "platform/uikit/controls/UITextField.h"
#include "platform/uikit/views/UIActivityIndicatorView.h"
#include "platform/uikit/views/UIImageView.h"
#include "platform/uikit/views/UILabel.h"
#include "settings/tree/NodeWriter.h"

namespace settings {

using nlohmann::json;

namespace {

std::string_view keyboardName(platform::UIKeyboardType type) {
  switch (type) {
    case platform::UIKeyboardType::standard:
      return "default";
    case platform::UIKeyboardType::url:
      return "url";
    case platform::UIKeyboardType::numberPad:
      return "number";
    case platform::UIKeyboardType::emailAddress:
      return "email";
    case platform::UIKeyboardType::decimalPad:
      return "decimal";
  }
  return "default";
}

std::string_view alignmentName(platform::NSTextAlignment alignment) {
  switch (alignment) {
    case platform::NSTextAlignment::left:
      return "left";
    case platform::NSTextAlignment::center:
      return "center";
    case platform::NSTextAlignment::right:
      return "right";
    case platform::NSTextAlignment::natural:
      return "natural";
  }
  return "natural";
}

std::string_view contentModeName(platform::UIViewContentMode mode) {
  switch (mode) {
    case platform::UIViewContentMode::scaleToFill:
      return "scaleToFill";
    case platform::UIViewContentMode::scaleAspectFit:
      return "scaleAspectFit";
    case platform::UIViewContentMode::scaleAspectFill:
      return "scaleAspectFill";
    case platform::UIViewContentMode::center:
      return "center";
  }
  return "scaleToFill";
}

ControlMembers control(const char* kind, const platform::UIControl& view, json members) {
  members["enabled"] = view.isEnabled();
  return {kind, std::move(members), true};
}

ControlMembers slider(const platform::UISlider& view) {
  const auto* list = dynamic_cast<const platform::PSSegmentableSlider*>(&view);
  return control("slider", view,
                 {{"value", view.value()},
                  {"min", view.minimumValue()},
                  {"max", view.maximumValue()},
                  {"continuous", view.isContinuous()},
                  {"showValue", list && list->showsValue()},
                  {"segmentCount", list ? list->segmentCount() : 0}});
}

ControlMembers textField(const platform::UITextField& view) {
  json members{{"string", view.text()},
               {"placeholder", view.placeholder().value_or("")},
               {"secure", view.isSecureTextEntry()},
               {"keyboard", keyboardName(view.keyboardType())},
               {"editing", view.isEditing()}};
  return control("textField", view, std::move(members));
}

ControlMembers label(const platform::UILabel& view) {
  return {"label",
          {{"string", view.text().value_or("")},
           {"color", colorJson(*view.textColor())},
           {"size", view.font()->pointSize()},
           {"weight", platform::fontWeightName(view.font()->weight())},
           {"lines", view.numberOfLines()},
           {"alignment", alignmentName(view.textAlignment())}},
          false};
}

ControlMembers image(NodeWriter& writer, const platform::UIImageView& view) {
  json members{{"contentMode", contentModeName(view.contentMode())}};
  if (view.image()) members["image"] = writer.imageJson(view.image());
  return {"image", std::move(members), false};
}

}  // namespace

ControlMembers controlMembers(NodeWriter& writer, const platform::UIView& view) {
  if (const auto* found = dynamic_cast<const platform::UISwitch*>(&view)) {
    return control("switch", *found, {{"on", found->isOn()}});
  }
  if (const auto* found = dynamic_cast<const platform::UISegmentedControl*>(&view)) {
    return control("segmented", *found,
                   {{"segments", found->titles()}, {"selected", found->selectedSegmentIndex()}});
  }
  if (const auto* found = dynamic_cast<const platform::UISlider*>(&view)) {
    return slider(*found);
  }
  if (const auto* found = dynamic_cast<const platform::UITextField*>(&view)) {
    return textField(*found);
  }
  if (const auto* found = dynamic_cast<const platform::UIButton*>(&view)) {
    return control("button", *found, {{"string", found->title().value_or("")}});
  }
  if (const auto* found = dynamic_cast<const platform::UILabel*>(&view)) return label(*found);
  if (const auto* found = dynamic_cast<const platform::UIImageView*>(&view)) {
    return image(writer, *found);
  }
  if (const auto* found = dynamic_cast<const platform::UIActivityIndicatorView*>(&view)) {
    return {"activity", {{"animating", found->isAnimating()}}, true};
  }
  return {"view", json::object(), false};
}

}  // namespace settings

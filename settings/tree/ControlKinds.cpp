#include "settings/tree/ControlKinds.h"

#include "platform/preferences/PSSliderTableCell.h"
#include "platform/uikit/controls/UIButton.h"
#include "platform/uikit/controls/UISegmentedControl.h"
#include "platform/uikit/controls/UISwitch.h"
#include "platform/uikit/controls/UITextField.h"
#include "platform/uikit/views/UIActivityIndicatorView.h"
#include "platform/uikit/views/UIImageView.h"
#include "platform/uikit/views/UILabel.h"
#include "settings/tree/KindBuilder.h"

namespace settings {

using nlohmann::json;
using platform::NSTextAlignment;
using platform::PSSegmentableSlider;
using platform::SlidePhase;
using platform::UIActivityIndicatorView;
using platform::UIButton;
using platform::UIControl;
using platform::UIImageView;
using platform::UIKeyboardType;
using platform::UILabel;
using platform::UISegmentedControl;
using platform::UISlider;
using platform::UISwitch;
using platform::UITextField;
using platform::UIView;
using platform::UIViewContentMode;

namespace {

constexpr const char* takesNoTouches = "the control is disabled or takes no touches just now";

enum class EditPhase : std::uint8_t { begin, change, end, cancel };

constexpr std::array keyboards{
    Named{UIKeyboardType::standard, "default"}, Named{UIKeyboardType::numberPad, "number"},
    Named{UIKeyboardType::decimalPad, "decimal"}, Named{UIKeyboardType::url, "url"},
    Named{UIKeyboardType::emailAddress, "email"}};
constexpr std::array alignments{
    Named{NSTextAlignment::natural, "natural"}, Named{NSTextAlignment::left, "left"},
    Named{NSTextAlignment::center, "center"}, Named{NSTextAlignment::right, "right"}};
constexpr std::array contentModes{Named{UIViewContentMode::scaleToFill, "scaleToFill"},
                                  Named{UIViewContentMode::scaleAspectFit, "scaleAspectFit"},
                                  Named{UIViewContentMode::scaleAspectFill, "scaleAspectFill"},
                                  Named{UIViewContentMode::center, "center"}};
constexpr std::array slidePhases{Named{SlidePhase::move, "move"}, Named{SlidePhase::end, "end"}};
constexpr std::array editPhases{Named{EditPhase::begin, "begin"},
                                Named{EditPhase::change, "change"}, Named{EditPhase::end, "end"},
                                Named{EditPhase::cancel, "cancel"}};

ActionResult touched(bool done) {
  return accepted(done, takesNoTouches);
}

NodeKind switchKind() {
  return KindBuilder<UISwitch>("switch")
      .member("on", &UISwitch::isOn)
      .member("enabled", &UIControl::isEnabled)
      .action(
          "toggle", [](UISwitch& view, bool on) { return touched(view.userSetOn(on)); },
          Argument<bool>{"on"})
      .valueIn("on")
      .build();
}

ActionResult selectSegment(UISegmentedControl& view, const std::optional<std::int64_t>& index) {
  const std::int64_t count = view.numberOfSegments();
  if (index && *index >= 0 && *index < count) return touched(view.userSelectSegment(*index));
  return refused("\"index\" must be that of a segment, from 0 to " + std::to_string(count - 1));
}

json selectedTitle(const json& segmented) {
  const auto selected = segmented.value("selected", UISegmentedControl::noSegment);
  const json& titles = segmented["segments"];
  if (selected < 0 || std::cmp_greater_equal(selected, titles.size())) return nullptr;
  return titles[static_cast<std::size_t>(selected)];
}

NodeKind segmentedKind() {
  return KindBuilder<UISegmentedControl>("segmented", "segmented control")
      .member("segments", &UISegmentedControl::titles)
      .member("selected", &UISegmentedControl::selectedSegmentIndex)
      .member("enabled", &UIControl::isEnabled)
      .action("segment", &selectSegment, UncheckedArgument<std::int64_t>{"index"})
      .value(&selectedTitle)
      .build();
}

const PSSegmentableSlider* segmentable(const UISlider& view) {
  return dynamic_cast<const PSSegmentableSlider*>(&view);
}

bool showsValue(const UISlider& view) {
  const auto* slider = segmentable(view);
  return slider != nullptr && slider->showsValue();
}

std::int64_t segmentCount(const UISlider& view) {
  const auto* slider = segmentable(view);
  return slider != nullptr ? slider->segmentCount() : 0;
}

ActionResult slide(UISlider& view, double value, SlidePhase phase) {
  return touched(view.userSlide(static_cast<float>(value), phase));
}

NodeKind sliderKind() {
  return KindBuilder<UISlider>("slider")
      .member("value", &UISlider::value)
      .member("min", &UISlider::minimumValue)
      .member("max", &UISlider::maximumValue)
      .member("continuous", &UISlider::isContinuous)
      .member("showValue", &showsValue)
      .member("segmentCount", &segmentCount)
      .member("enabled", &UIControl::isEnabled)
      .action("slide", &slide, Argument<double>{"value"}, ChoiceArgument{"phase", slidePhases})
      .valueIn("value")
      .build();
}

ActionResult edit(UITextField& view, EditPhase phase, const std::optional<std::string>& text) {
  if (!view.acceptsTouches()) return refused(takesNoTouches);
  switch (phase) {
    case EditPhase::begin:
      return accepted(view.becomeFirstResponder(), "the field refuses to be edited");
    case EditPhase::end:
      return accepted(view.resignFirstResponder(), "the field goes on editing");
    case EditPhase::cancel:
      return touched(view.userCancel());
    case EditPhase::change:
      break;
  }
  if (!text) return refused("\"string\" must be a text");
  return touched(view.userChangeText(*text));
}

NodeKind textFieldKind() {
  return KindBuilder<UITextField>("textField", "text field")
      .member("string", &UITextField::text)
      .member("placeholder", &UITextField::placeholder)
      .member("secure", &UITextField::isSecureTextEntry)
      .choice("keyboard", &UITextField::keyboardType, keyboards)
      .member("editing", &UITextField::isEditing)
      .member("enabled", &UIControl::isEnabled)
      .action("edit", &edit, ChoiceArgument{"phase", editPhases},
              UncheckedArgument<std::string>{"string", true})
      .valueIn("string")
      .build();
}

NodeKind buttonKind() {
  return KindBuilder<UIButton>("button")
      .member("string", &UIButton::title)
      .member("enabled", &UIControl::isEnabled)
      .action("tap", [](UIButton& view) { return touched(view.userTap()); })
      .build();
}

NodeKind labelKind() {
  return KindBuilder<UILabel>("label")
      .member("string", &UILabel::text)
      .member("color", &UILabel::textColor)
      .member("size", [](const UILabel& view) { return view.font()->pointSize(); })
      .member("weight",
              [](const UILabel& view) { return platform::fontWeightName(view.font()->weight()); })
      .member("lines", &UILabel::numberOfLines)
      .choice("alignment", &UILabel::textAlignment, alignments)
      .withSubviews()
      .build();
}

NodeKind imageKind() {
  return KindBuilder<UIImageView>("image")
      .optional("image", &UIImageView::image)
      .choice("contentMode", &UIView::contentMode, contentModes)
      .withSubviews()
      .build();
}

NodeKind activityKind() {
  return KindBuilder<UIActivityIndicatorView>("activity")
      .member("animating", &UIActivityIndicatorView::isAnimating)
      .build();
}

}  // namespace

std::vector<NodeKind> controlKinds() {
  return {switchKind(),    segmentedKind(), sliderKind(),
          textFieldKind(), buttonKind(),    labelKind(),
          imageKind(),     activityKind(),  KindBuilder<UIView>("view").withSubviews().build()};
}

}  // namespace settings

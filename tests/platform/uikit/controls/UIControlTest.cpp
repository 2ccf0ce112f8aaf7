#include "platform/foundation/values/Exception.h"
#include "platform/uikit/controls/UIButton.h"
#include "platform/uikit/controls/UIControl.h"
#include "platform/uikit/controls/UISegmentedControl.h"
#include "platform/uikit/controls/UISlider.h"
#include "platform/uikit/controls/UISwitch.h"
#include "platform/uikit/views/UIActivityIndicatorView.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UIControlTest : public UIKitTest {
 protected:
  template <class T>
  std::shared_ptr<T> makeWatched() {
    auto control = make<T>();
    control->addTarget(recorder, "withSender:", UIControlEventValueChanged);
    return control;
  }
};

TEST_F(UIControlTest, AnActionGetsAsManyArgumentsAsItsSelectorHasColons) {
  const auto button = make<UIButton>();
  button->addTarget(recorder, "plain", UIControlEventTouchUpInside);
  button->addTarget(recorder, "withSender:", UIControlEventTouchUpInside);
  button->addTarget(recorder, "withSender:event:", UIControlEventTouchUpInside);
  EXPECT_TRUE(button->userTap());
  EXPECT_THAT(recorder->calls, ElementsAre("plain", "withSender:", "withSender:event:"));
  EXPECT_THAT(recorder->senders, ElementsAre(button, button));
}

TEST_F(UIControlTest, OnlyTargetsOfTheEventAreTold) {
  const auto button = make<UIButton>();
  button->addTarget(recorder, "plain", UIControlEventValueChanged);
  EXPECT_TRUE(button->userTap());
  EXPECT_THAT(recorder->calls, IsEmpty());
}

TEST_F(UIControlTest, ATargetThatHasDiedIsNotTold) {
  const auto button = make<UIButton>();
  button->addTarget(recorder, "plain", UIControlEventTouchUpInside);
  std::weak_ptr<Recorder> weak = recorder;
  recorder.reset();
  EXPECT_TRUE(weak.expired()) << "a control does not keep its target alive";
  EXPECT_TRUE(button->userTap());
}

TEST_F(UIControlTest, NoTargetAndNoActionAreTolerated) {
  const auto button = make<UIButton>();
  button->addTarget(nullptr, "plain", UIControlEventTouchUpInside);
  button->addTarget(recorder, "", UIControlEventTouchUpInside);
  EXPECT_TRUE(button->userTap());
  EXPECT_THAT(recorder->calls, IsEmpty());
}

TEST_F(UIControlTest, ARepeatedTargetCountsOnceAndCanBeRemoved) {
  const auto button = make<UIButton>();
  button->addTarget(recorder, "plain", UIControlEventTouchUpInside);
  button->addTarget(recorder, "plain", UIControlEventTouchUpInside);
  button->userTap();
  EXPECT_THAT(recorder->calls, ElementsAre("plain"));
  button->removeTarget(nullptr, "", UIControlEventTouchUpInside);
  button->userTap();
  EXPECT_THAT(recorder->calls, ElementsAre("plain"));
}

TEST_F(UIControlTest, AnActionThatTheTargetDoesNotOfferRaises) {
  const auto button = make<UIButton>();
  button->addTarget(recorder, "explode", UIControlEventTouchUpInside);
  try {
    button->userTap();
    FAIL() << "nothing was raised";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), invalidArgumentException);
    EXPECT_EQ(exception.reason(), "-[Recorder explode]: unrecognized selector sent to instance");
  }
}

TEST_F(UIControlTest, ADisabledControlTakesNoTouch) {
  const auto control = makeWatched<UISwitch>();
  control->setEnabled(false);
  EXPECT_FALSE(control->userSetOn(true));
  EXPECT_FALSE(control->isOn());
  control->setEnabled(true);
  control->setUserInteractionEnabled(false);
  EXPECT_FALSE(control->userSetOn(true));
  EXPECT_THAT(recorder->calls, IsEmpty());
}

TEST_F(UIControlTest, AProgramThatSetsASwitchSendsNoAction) {
  const auto control = makeWatched<UISwitch>();
  control->setOn(true, true);
  EXPECT_TRUE(control->isOn());
  EXPECT_THAT(recorder->calls, IsEmpty());
}

TEST_F(UIControlTest, AUserThatSetsASwitchSendsOneActionOnAChange) {
  const auto control = makeWatched<UISwitch>();
  EXPECT_TRUE(control->userSetOn(true));
  EXPECT_TRUE(control->userSetOn(true));
  EXPECT_THAT(recorder->calls, ElementsAre("withSender:"));
}

TEST_F(UIControlTest, ASegmentSendsItsActionOnlyWhenAnotherOneIsChosen) {
  const auto control = makeWatched<UISegmentedControl>();
  control->setTitles({"Lower", "Both"});
  EXPECT_EQ(control->selectedSegmentIndex(), UISegmentedControl::noSegment);
  control->setSelectedSegmentIndex(0);
  EXPECT_THAT(recorder->calls, IsEmpty());
  EXPECT_TRUE(control->userSelectSegment(0));
  EXPECT_THAT(recorder->calls, IsEmpty());
  EXPECT_TRUE(control->userSelectSegment(1));
  EXPECT_THAT(recorder->calls, ElementsAre("withSender:"));
  EXPECT_FALSE(control->userSelectSegment(2));
  EXPECT_FALSE(control->userSelectSegment(-1));
  EXPECT_EQ(control->selectedSegmentIndex(), 1);
}

TEST_F(UIControlTest, ASegmentThatIsNoLongerThereIsNotSelected) {
  const auto control = make<UISegmentedControl>(&UISegmentedControl::initWithItems,
                                                std::vector<std::string>{"a", "b", "c"});
  control->setSelectedSegmentIndex(2);
  control->setTitles({"a"});
  EXPECT_EQ(control->selectedSegmentIndex(), UISegmentedControl::noSegment);
}

TEST_F(UIControlTest, AContinuousSliderSendsWhileItMovesAndAtTheEnd) {
  const auto slider = makeWatched<UISlider>();
  EXPECT_TRUE(slider->userSlide(0.25F, SlidePhase::move));
  EXPECT_TRUE(slider->isTracking());
  EXPECT_TRUE(slider->userSlide(0.5F, SlidePhase::end));
  EXPECT_FALSE(slider->isTracking());
  EXPECT_EQ(recorder->calls.size(), 2U);
}

TEST_F(UIControlTest, ASliderThatIsNotContinuousSendsOnReleaseOnly) {
  const auto slider = makeWatched<UISlider>();
  slider->setContinuous(false);
  slider->userSlide(0.25F, SlidePhase::move);
  EXPECT_THAT(recorder->calls, IsEmpty());
  EXPECT_EQ(slider->value(), 0.25F);
  slider->userSlide(0.25F, SlidePhase::end);
  EXPECT_EQ(recorder->calls.size(), 1U);
}

TEST_F(UIControlTest, ASliderKeepsItsValueWithinItsLimits) {
  const auto slider = make<UISlider>();
  slider->setMaximumValue(20);
  slider->setMinimumValue(-20);
  slider->setValue(21);
  EXPECT_EQ(slider->value(), 20);
  slider->setValue(std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(slider->value(), -20);
  slider->setMinimumValue(30);
  EXPECT_EQ(slider->maximumValue(), 30);
  EXPECT_EQ(slider->value(), 30);
  slider->setMaximumValue(5);
  EXPECT_EQ(slider->minimumValue(), 5);
  EXPECT_EQ(slider->value(), 5);
}

TEST_F(UIControlTest, AnIndicatorHidesUnlessItAnimates) {
  const auto indicator = make(&UIActivityIndicatorView::initWithActivityIndicatorStyle,
                              UIActivityIndicatorViewStyle::large);
  EXPECT_TRUE(indicator->isHidden());
  EXPECT_EQ(indicator->frame().size(), (Size{37, 37}));
  indicator->startAnimating();
  EXPECT_FALSE(indicator->isHidden());
  indicator->stopAnimating();
  EXPECT_TRUE(indicator->isHidden());
  indicator->setHidesWhenStopped(false);
  EXPECT_FALSE(indicator->isHidden());
}

}  // namespace
}  // namespace uikit_test

#include "platform/preferences/PSEditableTableCell.h"
#include "platform/preferences/PSSegmentTableCell.h"
#include "platform/preferences/PSSliderTableCell.h"
#include "platform/preferences/PSSwitchTableCell.h"
#include "tests/platform/preferences/PreferencesTest.h"

namespace preferences_test {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const std::string twoChoices =
    "<key>validValues</key><array><integer>0</integer><string>one</string></array>"
    "<key>validTitles</key><array><string>Off</string><string>On</string></array>";

std::string entry(const std::string& key, const std::string& xml) {
  return "<key>" + key + "</key>" + xml;
}

}  // namespace

class PSControlCellsTest : public PreferencesTest {
 protected:
  // Shows one row with the identifier "row", its value under that key.
  void showRow(const std::string& kind, const std::string& more = "") {
    show({row(kind, "Row", textEntry("key", "row") + more)});
  }
  void showStored(const Value& value) {
    page->values["row"] = value;
    page->reloadSpecifierID("row");
    layOut();
  }
  Value lastWritten() { return page->written.empty() ? Value() : page->written.back().second; }
};

// --- Switch ---

TEST_F(PSControlCellsTest, SwitchWritesABoolean) {
  showRow("PSSwitchCell");
  const auto toggle = control<UISwitch>("row");
  EXPECT_FALSE(toggle->isOn());
  EXPECT_TRUE(toggle->userSetOn(true));
  ASSERT_EQ(page->written.size(), 1U);
  EXPECT_EQ(lastWritten().kind(), ValueKind::boolean);
  EXPECT_TRUE(lastWritten().boolValue());
  EXPECT_TRUE(toggle->userSetOn(false));
  EXPECT_EQ(lastWritten().kind(), ValueKind::boolean);
  EXPECT_FALSE(lastWritten().boolValue());
}

TEST_F(PSControlCellsTest, SwitchIsTheAccessoryView) {
  showRow("PSSwitchCell");
  EXPECT_EQ(cell("row")->accessoryView(), cell("row")->control());
}

TEST_F(PSControlCellsTest, SwitchShowsItsDefaultUntilItIsSet) {
  showRow("PSSwitchCell", entry("default", "<true/>"));
  EXPECT_TRUE(control<UISwitch>("row")->isOn());
  EXPECT_THAT(page->written, IsEmpty());
}

// The getter returns a value of another type unchanged; the switch shows its boolean value.
TEST_F(PSControlCellsTest, SwitchShowsValuesOfOtherTypesByTheirTruth) {
  showRow("PSSwitchCell");
  const std::vector<std::pair<Value, bool>> table{{"YES", true},
                                                  {"no", false},
                                                  {"1", true},
                                                  {"", false},
                                                  {1, true},
                                                  {0, false},
                                                  {0.5, true},
                                                  {Array{Value(1)}, false},
                                                  {Dictionary(), false},
                                                  {Date{1}, false},
                                                  {Data("x"), false},
                                                  {Value(), false}};
  for (const auto& [value, on] : table) {
    showStored(value);
    EXPECT_EQ(control<UISwitch>("row")->isOn(), on) << value.description();
    EXPECT_EQ(cell("row")->value(), value);
  }
  EXPECT_THAT(page->written, IsEmpty());
}

TEST_F(PSControlCellsTest, WhatAProgramSetsSendsNoAction) {
  showRow("PSSwitchCell");
  control<UISwitch>("row")->setOn(true);
  cell("row")->setValue(false);
  EXPECT_FALSE(control<UISwitch>("row")->isOn());
  EXPECT_THAT(page->written, IsEmpty());
}

TEST_F(PSControlCellsTest, ValueIsReadAndWrittenByTheRowsOwnOperations) {
  showRow("PSEditTextCell",
          textEntry("get", "fixedValue:") + textEntry("set", "keepFixed:specifier:"));
  const auto field = control<UITextField>("row");
  EXPECT_EQ(field->text(), "fixed");
  field->userChangeText("other");
  field->userReturn();
  EXPECT_THAT(page->written, ElementsAre(std::pair<std::string, Value>("fixed", "other")));
}

// After a setter raises, a reload shows the stored value.
TEST_F(PSControlCellsTest, RefusedValueSnapsBackWhenTheRowIsShownAnew) {
  showRow("PSSwitchCell");
  specifier("row")->setSetter("noSuchSetter:");
  EXPECT_THROW(control<UISwitch>("row")->userSetOn(true), Exception);
  page->reloadSpecifierID("row");
  EXPECT_FALSE(control<UISwitch>("row")->isOn());
}

// --- Segments ---

TEST_F(PSControlCellsTest, SegmentWritesTheElementOfValidValues) {
  showRow("PSSegmentCell", twoChoices);
  const auto segments = control<UISegmentedControl>("row");
  EXPECT_THAT(segments->titles(), ElementsAre("Off", "On"));
  EXPECT_EQ(segments->selectedSegmentIndex(), UISegmentedControl::noSegment);
  EXPECT_TRUE(segments->userSelectSegment(1));
  EXPECT_EQ(lastWritten(), Value("one"));
  EXPECT_TRUE(segments->userSelectSegment(0));
  EXPECT_EQ(lastWritten().kind(), ValueKind::integer);
  EXPECT_EQ(lastWritten(), Value(0));
}

TEST_F(PSControlCellsTest, SegmentReportsOnlyChanges) {
  showRow("PSSegmentCell", twoChoices);
  control<UISegmentedControl>("row")->userSelectSegment(1);
  control<UISegmentedControl>("row")->userSelectSegment(1);
  EXPECT_EQ(page->written.size(), 1U);
}

TEST_F(PSControlCellsTest, ValueThatIsNoneOfTheSegmentsSelectsNone) {
  showRow("PSSegmentCell", twoChoices);
  showStored("one");
  EXPECT_EQ(control<UISegmentedControl>("row")->selectedSegmentIndex(), 1);
  showStored("0");
  EXPECT_EQ(control<UISegmentedControl>("row")->selectedSegmentIndex(), -1);
  EXPECT_EQ(cell("row")->value(), Value("0"));
}

TEST_F(PSControlCellsTest, SelectionByAProgramSendsNothingAndStaysWhenTheTableReloads) {
  showRow("PSSegmentCell", twoChoices);
  showStored("one");
  control<UISegmentedControl>("row")->setSelectedSegmentIndex(0);
  page->table()->reloadData();
  layOut();
  EXPECT_EQ(control<UISegmentedControl>("row")->selectedSegmentIndex(), 0);
  EXPECT_THAT(page->written, IsEmpty());
  EXPECT_EQ(page->values["row"], Value("one"));
}

TEST_F(PSControlCellsTest, OtherChoicesShowWithTheValueAmongThem) {
  showRow("PSSegmentCell", twoChoices);
  showStored("one");
  specifier("row")->setProperty(Array{Value("one"), Value("two")}, "validValues");
  specifier("row")->setProperty(Array{Value("1"), Value("2")}, "validTitles");
  page->reloadSpecifierID("row");
  EXPECT_THAT(control<UISegmentedControl>("row")->titles(), ElementsAre("1", "2"));
  EXPECT_EQ(control<UISegmentedControl>("row")->selectedSegmentIndex(), 0);
}

// Pages look for the control among the subviews of each direct subview.
TEST_F(PSControlCellsTest, SegmentedControlIsASubviewOfADirectSubview) {
  showRow("PSSegmentCell", twoChoices);
  std::vector<std::shared_ptr<UIView>> found;
  for (const auto& direct : cell("row")->subviews()) {
    for (const auto& view : direct->subviews()) {
      if (std::dynamic_pointer_cast<UISegmentedControl>(view)) found.push_back(view);
    }
  }
  EXPECT_THAT(found, ElementsAre(cell("row")->control()));
  EXPECT_EQ(cell("row")->control()->superview(), cell("row")->contentView());
}

// --- Slider ---

TEST_F(PSControlCellsTest, SliderWritesASingleRealOnRelease) {
  showRow("PSSliderCell", entry("min", "<integer>0</integer>") + entry("max", "<real>10</real>"));
  const auto slider = control<PSSegmentableSlider>("row");
  EXPECT_TRUE(slider->userSlide(2.5F, SlidePhase::move));
  EXPECT_THAT(page->written, IsEmpty());
  EXPECT_TRUE(slider->userSlide(7.25F, SlidePhase::end));
  ASSERT_EQ(page->written.size(), 1U);
  EXPECT_EQ(lastWritten().kind(), ValueKind::single);
  EXPECT_EQ(lastWritten().floatValue(), 7.25F);
}

TEST_F(PSControlCellsTest, ContinuousSliderWritesWhileItMoves) {
  showRow("PSSliderCell", entry("isContinuous", "<true/>"));
  const auto slider = control<PSSegmentableSlider>("row");
  slider->userSlide(0.25F, SlidePhase::move);
  slider->userSlide(0.5F, SlidePhase::move);
  ASSERT_EQ(page->written.size(), 2U);
  EXPECT_EQ(lastWritten(), Value(0.5F));
}

TEST_F(PSControlCellsTest, SegmentedSliderSnaps) {
  showRow("PSSliderCell", entry("min", "<real>-10</real>") + entry("max", "<real>10</real>") +
                              entry("isSegmented", "<true/>") +
                              entry("segmentCount", "<integer>4</integer>") +
                              entry("showValue", "<true/>"));
  const auto slider = control<PSSegmentableSlider>("row");
  EXPECT_EQ(slider->segmentCount(), 4);
  EXPECT_TRUE(slider->showsValue());
  slider->userSlide(3.1F, SlidePhase::end);
  EXPECT_EQ(lastWritten(), Value(5.0F));
  EXPECT_EQ(slider->value(), 5.0F);
  slider->userSlide(2.4F, SlidePhase::end);
  EXPECT_EQ(lastWritten(), Value(0.0F));
  slider->userSlide(99, SlidePhase::end);
  EXPECT_EQ(lastWritten(), Value(10.0F));
}

TEST_F(PSControlCellsTest, SegmentCountAloneDoesNotDivideTheSlider) {
  showRow("PSSliderCell", entry("segmentCount", "<integer>4</integer>"));
  EXPECT_EQ(control<PSSegmentableSlider>("row")->segmentCount(), 0);
  control<PSSegmentableSlider>("row")->userSlide(0.3F, SlidePhase::end);
  EXPECT_EQ(lastWritten(), Value(0.3F));
}

TEST_F(PSControlCellsTest, SliderShowsNumbersAndTextsByTheirReal) {
  showRow("PSSliderCell", entry("min", "<real>-20</real>") + entry("max", "<real>20</real>"));
  const std::vector<std::pair<Value, float>> table{
      {-12.0, -12.0F},  {Value::single(-8.25F), -8.25F},
      {"3.5", 3.5F},    {7, 7.0F},
      {1000, 20.0F},    {Array(), -20.0F},
      {Value(), -20.0F}};
  for (const auto& [value, shown] : table) {
    showStored(value);
    EXPECT_EQ(control<UISlider>("row")->value(), shown) << value.description();
  }
  EXPECT_THAT(page->written, IsEmpty());
}

TEST_F(PSControlCellsTest, SliderWithoutLimitsGoesFromZeroToOne) {
  showRow("PSSliderCell");
  EXPECT_EQ(control<UISlider>("row")->minimumValue(), 0.0F);
  EXPECT_EQ(control<UISlider>("row")->maximumValue(), 1.0F);
}

TEST_F(PSControlCellsTest, LimitsAboveAndBelowTheOldOnesAreTaken) {
  showRow("PSSliderCell", entry("min", "<real>5</real>") + entry("max", "<real>9</real>"));
  EXPECT_EQ(control<UISlider>("row")->minimumValue(), 5.0F);
  EXPECT_EQ(control<UISlider>("row")->maximumValue(), 9.0F);
  specifier("row")->setProperty(-9.0, "min");
  specifier("row")->setProperty(-5.0, "max");
  page->reloadSpecifierID("row");
  EXPECT_EQ(control<UISlider>("row")->minimumValue(), -9.0F);
  EXPECT_EQ(control<UISlider>("row")->maximumValue(), -5.0F);
}

TEST_F(PSControlCellsTest, ValueThatTheOldLimitsHeldBackShowsWithWiderOnes) {
  showRow("PSSliderCell");
  showStored(7.0);
  EXPECT_EQ(control<UISlider>("row")->value(), 1.0F);
  specifier("row")->setProperty(10.0, "max");
  page->reloadSpecifierID("row");
  EXPECT_EQ(control<UISlider>("row")->value(), 7.0F);
}

TEST_F(PSControlCellsTest, SliderUnderTheFingerIsLeftAlone) {
  showRow("PSSliderCell");
  control<UISlider>("row")->userSlide(0.75F, SlidePhase::move);
  showStored(0.25);
  EXPECT_EQ(control<UISlider>("row")->value(), 0.75F);
}

// --- Text ---

TEST_F(PSControlCellsTest, TextIsWrittenAtTheEndOfEditing) {
  showRow("PSEditTextCell", textEntry("placeholder", "Name") + textEntry("keyboard", "email"));
  const auto field = control<UITextField>("row");
  EXPECT_EQ(field->placeholder(), "Name");
  EXPECT_EQ(field->keyboardType(), UIKeyboardType::emailAddress);
  EXPECT_FALSE(field->isSecureTextEntry());
  field->userChangeText("hol");
  field->userChangeText("hollow");
  EXPECT_THAT(page->written, IsEmpty());
  EXPECT_TRUE(field->userReturn());
  ASSERT_EQ(page->written.size(), 1U);
  EXPECT_EQ(lastWritten(), Value("hollow"));
  EXPECT_EQ(lastWritten().kind(), ValueKind::string);
}

TEST_F(PSControlCellsTest, UnchangedOrCancelledTextIsNotWritten) {
  showRow("PSEditTextCell");
  showStored("same");
  const auto field = control<UITextField>("row");
  field->userChangeText("other");
  field->userChangeText("same");
  field->userReturn();
  field->userChangeText("other");
  field->userCancel();
  EXPECT_THAT(page->written, IsEmpty());
  EXPECT_EQ(field->text(), "same");
}

TEST_F(PSControlCellsTest, TextThatIsTakenAwayIsAnEmptyString) {
  showRow("PSEditTextCell");
  showStored("some");
  control<UITextField>("row")->userChangeText("");
  control<UITextField>("row")->userReturn();
  EXPECT_EQ(lastWritten(), Value(""));
}

TEST_F(PSControlCellsTest, SecureTextIsHidden) {
  showRow("PSSecureEditTextCell");
  EXPECT_TRUE(control<UITextField>("row")->isSecureTextEntry());
  control<UITextField>("row")->userChangeText("secret");
  control<UITextField>("row")->resignFirstResponder();
  EXPECT_EQ(lastWritten(), Value("secret"));
}

TEST_F(PSControlCellsTest, TextShowsNumbersAndTextsAndNothingElse) {
  showRow("PSEditTextCell");
  const std::vector<std::pair<Value, std::string>> table{
      {"text", "text"}, {5000000000, "5000000000"}, {true, "1"}, {Array(), ""}, {Data("x"), ""},
      {Value(), ""}};
  for (const auto& [value, shown] : table) {
    showStored(value);
    EXPECT_EQ(control<UITextField>("row")->text(), shown) << value.description();
  }
  EXPECT_THAT(page->written, IsEmpty());
}

TEST_F(PSControlCellsTest, TextThatIsBeingEditedIsLeftAlone) {
  showRow("PSEditTextCell");
  control<UITextField>("row")->userChangeText("half");
  showStored("stored meanwhile");
  EXPECT_EQ(control<UITextField>("row")->text(), "half");
}

TEST_F(PSControlCellsTest, EveryKeyboardNameIsKnown) {
  const std::vector<std::pair<std::string, UIKeyboardType>> table{
      {"default", UIKeyboardType::standard},
      {"number", UIKeyboardType::numberPad},
      {"numbers", UIKeyboardType::numberPad},
      {"numberPad", UIKeyboardType::numberPad},
      {"decimal", UIKeyboardType::decimalPad},
      {"decimalPad", UIKeyboardType::decimalPad},
      {"url", UIKeyboardType::url},
      {"email", UIKeyboardType::emailAddress}};
  for (const auto& [name, type] : table) {
    showRow("PSEditTextCell", textEntry("keyboard", name));
    EXPECT_EQ(control<UITextField>("row")->keyboardType(), type) << name;
  }
}

TEST_F(PSControlCellsTest, RowsWithAControlTakeNoTap) {
  for (const std::string kind : {"PSSwitchCell", "PSSliderCell", "PSEditTextCell"}) {
    showRow(kind, textEntry("action", "restart"));
    EXPECT_FALSE(tap("row")) << kind;
    EXPECT_THAT(page->performed, IsEmpty());
  }
}

}  // namespace preferences_test

#include "appearance/HBColorPickerTableCell.h"
#include "tests/appearance/ColorCellFixture.h"

namespace zentrova::tests {
namespace {

using platform::ColorComponents;
using platform::Dictionary;
using platform::NSLayoutAttribute;
using platform::NSLayoutConstraint;
using platform::PSSpecifier;
using platform::UIColor;
using platform::Value;

class HBColorPickerTableCellLook : public ColorCellTest {
 protected:
  // A cell outside of a list.
  static std::shared_ptr<HBColorPickerTableCell> makeCell(const Dictionary& properties) {
    const auto row = PSSpecifier::preferenceSpecifierNamed(std::nullopt, nullptr, {}, {}, {},
                                                           platform::PSButtonCell, {});
    row->setProperties(std::make_shared<platform::MutableDictionary>(properties));
    auto made = std::make_shared<HBColorPickerTableCell>();
    EXPECT_TRUE(made->initWithStyle(platform::UITableViewCellStyle::standard, "color", row));
    return made;
  }
  static std::shared_ptr<NSLayoutConstraint> constraintOf(const HBColorPickerTableCell& cell,
                                                          NSLayoutAttribute attribute) {
    for (const auto& each : cell.constraints()) {
      const bool isOfLabel = each->firstItem() == cell.headerLabel();
      if (isOfLabel && each->firstAttribute() == attribute) return each;
    }
    ADD_FAILURE() << "no such constraint";
    return nullptr;
  }
};

TEST_F(HBColorPickerTableCellLook, AccentIsTheSystemsBlue) {
  EXPECT_EQ(makeCell({})->tintColour()->systemName(), "systemBlueColor");
}

TEST_F(HBColorPickerTableCellLook, HeaderShowsTheTitleInTheAccent) {
  const auto made = makeCell({{"title", "Background"}, {"label", "other"}});
  EXPECT_EQ(made->headerLabel()->text(), "Background");
  EXPECT_EQ(made->headerLabel()->textColor(), made->tintColour());
  EXPECT_EQ(made->headerLabel()->font()->pointSize(), 17.0);
  EXPECT_EQ(made->headerLabel()->font()->weight(), platform::UIFontWeight::regular);
}

TEST_F(HBColorPickerTableCellLook, HeaderLiesInTheCellItself) {
  const auto made = makeCell({{"title", "Background"}});
  EXPECT_EQ(made->headerLabel()->superview(), made);

  const auto center = constraintOf(*made, NSLayoutAttribute::centerY);
  EXPECT_EQ(center->secondItem(), made);
  EXPECT_EQ(center->secondAttribute(), NSLayoutAttribute::centerY);
  EXPECT_EQ(center->constant(), 0.0);
  const auto leading = constraintOf(*made, NSLayoutAttribute::leading);
  EXPECT_EQ(leading->secondItem(), made);
  EXPECT_EQ(leading->secondAttribute(), NSLayoutAttribute::leading);
  EXPECT_EQ(leading->constant(), 10.0);
  const auto trailing = constraintOf(*made, NSLayoutAttribute::trailing);
  EXPECT_EQ(trailing->secondItem(), made->contentView());
  EXPECT_EQ(trailing->secondAttribute(), NSLayoutAttribute::trailing);
  EXPECT_EQ(trailing->constant(), -10.0);
}

TEST_F(HBColorPickerTableCellLook, HeaderIsPlacedBetweenEdgeAndSwatch) {
  showRows();
  const auto frame = cell()->headerLabel()->frame();
  EXPECT_EQ(frame.x, 10.0);
  EXPECT_EQ(frame.maxX(), cell()->contentView()->frame().maxX() - 10.0);
  EXPECT_EQ(frame.y + frame.height / 2, cell()->frame().height / 2);
  EXPECT_LE(frame.maxX(), cell()->colorPreview()->frame().x);
}

TEST_F(HBColorPickerTableCellLook, ATitleThatIsNoTextIsNone) {
  EXPECT_EQ(makeCell({{"title", 5}})->headerLabel()->text(), std::nullopt);
  EXPECT_EQ(makeCell({})->headerLabel()->text(), std::nullopt);
}

TEST_F(HBColorPickerTableCellLook, SwatchIsMadeWhenTheCellJoinsAList) {
  EXPECT_EQ(makeCell({})->colorPreview(), nullptr);
  showRows();
  EXPECT_TRUE(cell()->colorPreview());
}

TEST_F(HBColorPickerTableCellLook, SwatchIsACircleWithARing) {
  showRows();
  const auto swatch = cell()->colorPreview();
  EXPECT_EQ(swatch->frame().size(), (platform::Size{29, 29}));
  EXPECT_EQ(swatch->layer()->borderWidth(), 1.2);
  EXPECT_EQ(swatch->layer()->borderColor(), cell()->tintColour());
  EXPECT_EQ(swatch->layer()->cornerRadius(), 14.5);
  EXPECT_EQ(cell()->accessoryView(), swatch);
}

TEST_F(HBColorPickerTableCellLook, EveryRefreshMakesANewSwatch) {
  showRows();
  const auto before = cell()->colorPreview();
  for (const char* selector : {"updatePreview", "_updateValue"}) {
    const auto previous = cell()->colorPreview();
    cell()->perform(selector);
    EXPECT_NE(cell()->colorPreview(), previous) << selector;
    EXPECT_EQ(previous->superview(), nullptr) << selector;
    EXPECT_EQ(cell()->accessoryView(), cell()->colorPreview()) << selector;
  }
}

// The next swatch has the new tint.
TEST_F(HBColorPickerTableCellLook, RingHasTheAccentOfTheMoment) {
  showRows();
  cell()->setTintColour(UIColor::redColor());
  cell()->updatePreview();
  EXPECT_EQ(cell()->colorPreview()->layer()->borderColor(), cell()->tintColour());
}

TEST_F(HBColorPickerTableCellLook, ACellWithoutSpecifierIsTransparent) {
  const auto made = std::make_shared<HBColorPickerTableCell>();
  EXPECT_TRUE(made->initWithStyle(platform::UITableViewCellStyle::standard, std::nullopt, nullptr));
  made->didMoveToSuperview();
  EXPECT_EQ(made->colorPreview()->backgroundColor()->components(), (ColorComponents{0, 0, 0, 0}));
  EXPECT_TRUE(made->_hbcp_key().isNone());
}

class HBColorPickerTableCellValue : public ColorCellTest {};

TEST_F(HBColorPickerTableCellValue, StoredValueIsShown) {
  writePreferences({{"first", "FF0000FF"}});
  showRows();
  EXPECT_EQ(shownComponents(), red);
}

TEST_F(HBColorPickerTableCellValue, StoredNameIsShownAsTheSystemsColor) {
  writePreferences({{"first", "pink"}});
  showRows();
  EXPECT_EQ(shown()->systemName(), "systemPinkColor");
}

TEST_F(HBColorPickerTableCellValue, WithoutAStoredValueTheDefaultIsShown) {
  showRows();
  EXPECT_EQ(shownComponents(), green);
  showRows("tertiary");
  EXPECT_EQ(shown()->systemName(), "tertiaryLabelColor");
}

TEST_F(HBColorPickerTableCellValue, WithoutDefaultTheSwatchIsTransparent) {
  showRows(nullptr);
  EXPECT_EQ(shownComponents(), clear);
}

// Only the ring is visible.
TEST_F(HBColorPickerTableCellValue, ResetValueIsTransparent) {
  writePreferences({{"first", resetValue}});
  showRows();
  EXPECT_EQ(shownComponents().alpha, 0.0);
  EXPECT_EQ(cell()->colorPreview()->layer()->borderWidth(), 1.2);
}

// Any stored value is used; the default does not replace it.
TEST_F(HBColorPickerTableCellValue, StoredValueThatIsNoTextIsTransparent) {
  for (const Value& value : {Value(5), Value(true), Value(1.5), Value(platform::Data("FF0000FF")),
                             Value(platform::Array{"FF0000FF"}), Value(Dictionary{{"red", 1}}),
                             Value(platform::Date{})}) {
    writePreferences({{"first", value}});
    showRows();
    EXPECT_EQ(shownComponents(), clear) << value.description();
  }
}

TEST_F(HBColorPickerTableCellValue, DefaultThatIsNoTextIsTransparent) {
  showRows(platform::Array{1, 2});
  EXPECT_EQ(shownComponents(), clear);
}

TEST_F(HBColorPickerTableCellValue, StoredTextOfAnyKindAndLengthIsShown) {
  const std::string emoji = "\U0001F3A8";
  for (const std::string& text : {std::string(), std::string("zzz"), std::string(1'000'000, '#'),
                                  std::string(100'000, 'x'), emoji, std::string("\t\n")}) {
    writePreferences({{"first", text}});
    showRows();
    EXPECT_EQ(shownComponents(), clear) << text.substr(0, 20);
  }
}

TEST_F(HBColorPickerTableCellValue, DamagedOrMissingFileShowsTheDefault) {
  process.tree().write(preferences, "<plist><dict><key>first</key>");
  showRows();
  EXPECT_EQ(shownComponents(), green);
  process.tree().write(preferences, platform::writeXmlPropertyList(platform::Array{1}).bytes);
  cell()->_updateValue();
  EXPECT_EQ(shownComponents(), green);
}

TEST_F(HBColorPickerTableCellValue, FileIsReadAnewEachTime) {
  showRows();
  writePreferences({{"first", "FF0000FF"}});
  EXPECT_EQ(shownComponents(), green);
  cell()->updatePreview();
  EXPECT_EQ(shownComponents(), red);
}

TEST_F(HBColorPickerTableCellValue, KeyIsTheSpecifiers) {
  showRows();
  EXPECT_EQ(cell()->perform("_hbcp_key"), Value("first"));
  EXPECT_EQ(cell("second")->perform("_hbcp_key"), Value("second"));
}

class HBColorPickerTableCellTap : public ColorCellTest {};

TEST_F(HBColorPickerTableCellTap, TheCellTakesTheTapItself) {
  showRows();
  for (const char* selector : {"target", "cellTarget"}) {
    EXPECT_EQ(cell()->perform(selector).asObject(), cell()) << selector;
  }
  for (const char* selector : {"action", "cellAction"}) {
    EXPECT_EQ(cell()->perform(selector), Value("openColorPicker")) << selector;
  }
}

TEST_F(HBColorPickerTableCellTap, JoiningTheListMakesTheCellTheRowsTarget) {
  showRows();
  const auto row = page->specifierForID("first");
  EXPECT_EQ(row->target(), cell());
  EXPECT_EQ(row->buttonAction(), "openColorPicker");
}

// Both directions of the codec, by name.
TEST_F(HBColorPickerTableCellTap, CodecIsOfferedByName) {
  showRows();
  const auto color = cell()->perform("colorWithHexString:", {"FF0000FF"}).as<UIColor>();
  ASSERT_TRUE(color);
  EXPECT_EQ(color->components(), red);
  EXPECT_EQ(cell()->perform("hexStringFromColor:", {color}), Value("FF0000FF"));
  EXPECT_EQ(cell()->perform("colorWithHexString:", {5}).as<UIColor>()->components(), clear);
  EXPECT_EQ(cell()->perform("hexStringFromColor:", {nullptr}), Value("00000000"));
}

// A system colour is written as it currently resolves.
TEST_F(HBColorPickerTableCellTap, NamedColorIsWrittenAsItIsShown) {
  showRows();
  EXPECT_EQ(cell()->hexStringFromColor(UIColor::labelColor()), "000000FF");
  process.traits().appearance = platform::UserInterfaceStyle::dark;
  EXPECT_EQ(cell()->hexStringFromColor(UIColor::labelColor()), "FFFFFFFF");
}

}  // namespace
}  // namespace zentrova::tests

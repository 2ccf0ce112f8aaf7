#include "platform/uikit/drawing/SystemColors.h"
#include "platform/uikit/drawing/UIColor.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;

class UIColorTest : public UIKitTest {};

TEST_F(UIColorTest, ComponentsAreKeptAsGiven) {
  const auto color = UIColor::colorWithRed(0.1, -0.5, 2, 0.25);
  EXPECT_EQ(color->components(), (ColorComponents{0.1, -0.5, 2, 0.25}));
  EXPECT_FALSE(color->systemName().has_value());
}

TEST_F(UIColorTest, AGreyHasThreeEqualComponents) {
  const double level = static_cast<double>(0.9F);
  EXPECT_EQ(UIColor::colorWithWhite(level, 0.5)->components(),
            (ColorComponents{level, level, level, 0.5}));
}

TEST_F(UIColorTest, ANamedColourFollowsTheAppearance) {
  const auto label = UIColor::labelColor();
  EXPECT_EQ(label->systemName(), "labelColor");
  EXPECT_EQ(label->resolved(UserInterfaceStyle::light), (ColorComponents{0, 0, 0, 1}));
  EXPECT_EQ(label->resolved(UserInterfaceStyle::dark), (ColorComponents{1, 1, 1, 1}));
}

TEST_F(UIColorTest, ComponentsAreThoseOfTheTraitsOfTheMoment) {
  const auto red = UIColor::systemRedColor();
  EXPECT_EQ(red->components(), (ColorComponents{1, 59 / 255.0, 48 / 255.0, 1}));
  process.traits().appearance = UserInterfaceStyle::dark;
  EXPECT_EQ(red->components(), (ColorComponents{1, 69 / 255.0, 58 / 255.0, 1}));
}

TEST_F(UIColorTest, AnUnknownNameIsNotFound) {
  EXPECT_EQ(UIColor::systemColorNamed("systemredcolor"), nullptr);
  EXPECT_EQ(UIColor::systemColorNamed(""), nullptr);
}

TEST_F(UIColorTest, ANamedColourIsNotEqualToItsComponents) {
  const auto red = UIColor::systemRedColor();
  EXPECT_TRUE(sameColor(red, UIColor::systemRedColor()));
  EXPECT_FALSE(sameColor(red, std::make_shared<UIColor>(red->components())));
  EXPECT_TRUE(sameColor(UIColor::blackColor(), UIColor::colorWithRed(0, 0, 0, 1)));
  EXPECT_FALSE(sameColor(UIColor::blackColor(), nullptr));
  EXPECT_TRUE(sameColor(nullptr, nullptr));
}

TEST_F(UIColorTest, HexadecimalTextIsReadOnlyWithEightDigits) {
  EXPECT_EQ(colorComponentsFromHex("FF0000ff"), (ColorComponents{1, 0, 0, 1}));
  for (const char* text : {"", "FF0000", "FF0000FF0", "FF0000F-", "#F0000FF", "0xFF00FF"}) {
    EXPECT_FALSE(colorComponentsFromHex(text).has_value()) << text;
  }
}

TEST_F(UIColorTest, ColoursAreFoundByName) {
  const Class* color = process.classes().find("UIColor");
  ASSERT_NE(color, nullptr);
  const auto blue = color->perform("systemBlueColor").as<UIColor>();
  ASSERT_NE(blue, nullptr);
  EXPECT_EQ(blue->systemName(), "systemBlueColor");
  const auto half =
      color->perform("colorWithRed:green:blue:alpha:", {0.5, 0.0, 0.0, 1.0}).as<UIColor>();
  ASSERT_NE(half, nullptr);
  EXPECT_EQ(half->components(), (ColorComponents{0.5, 0, 0, 1}));
}

}  // namespace
}  // namespace uikit_test

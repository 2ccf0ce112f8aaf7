#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "appearance/ColorCodec.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {
namespace {

using platform::ColorComponents;
using platform::UserInterfaceStyle;

double fraction(unsigned byte) {
  return static_cast<double>(static_cast<float>(byte) / 255.0F);
}

ColorComponents rgba(unsigned red, unsigned green, unsigned blue, unsigned alpha) {
  return {fraction(red), fraction(green), fraction(blue), fraction(alpha)};
}

const ColorComponents transparentBlack = rgba(0, 0, 0, 0);

class ColorCodec : public testing::Test {
 protected:
  static ColorComponents parsed(std::string_view text) {
    const auto color = colorFromValueString(text);
    EXPECT_EQ(color->systemName(), std::nullopt) << text;
    return color->components();
  }

  test_support::TestProcess process;
};

// --- Names ---

TEST_F(ColorCodec, NamesAreColorsOfTheSystem) {
  const std::vector<std::pair<std::string, std::string>> names{
      {"red", "systemRedColor"},         {"orange", "systemOrangeColor"},
      {"yellow", "systemYellowColor"},   {"green", "systemGreenColor"},
      {"blue", "systemBlueColor"},       {"teal", "systemTealColor"},
      {"indigo", "systemIndigoColor"},   {"purple", "systemPurpleColor"},
      {"pink", "systemPinkColor"},       {"default", "labelColor"},
      {"tertiary", "tertiaryLabelColor"}};
  for (const auto& [text, system] : names) {
    EXPECT_EQ(colorFromValueString(text)->systemName(), system) << text;
  }
}

TEST_F(ColorCodec, NamedColorsFollowTheAppearance) {
  const auto label = colorFromValueString("default");
  EXPECT_EQ(label->resolved(UserInterfaceStyle::light), (ColorComponents{0, 0, 0, 1}));
  EXPECT_EQ(label->resolved(UserInterfaceStyle::dark), (ColorComponents{1, 1, 1, 1}));
}

TEST_F(ColorCodec, NamesAreExact) {
  EXPECT_EQ(parsed("Red"), transparentBlack);
  EXPECT_EQ(parsed(" red"), transparentBlack);
  EXPECT_EQ(parsed("redColor"), transparentBlack);
  // "Defa" are digits.
  EXPECT_EQ(parsed("Default"), rgba(0, 0, 0xDE, 0xFA));
  EXPECT_EQ(parsed("blue "), rgba(0, 0, 0, 0x0B));
}

TEST_F(ColorCodec, NamesComeBeforeHashesAreRemoved) {
  // "red" is left, which is not taken as a name; three characters become six.
  EXPECT_EQ(parsed("#red"), transparentBlack);
  EXPECT_EQ(parsed("re#d"), transparentBlack);
  EXPECT_EQ(parsed("#default"), rgba(0, 0, 0xDE, 0xFA));
}

// --- Lengths ---

TEST_F(ColorCodec, SixDigitsAreOpaque) {
  EXPECT_EQ(parsed("FA0000"), rgba(250, 0, 0, 255));
  EXPECT_EQ(parsed("#FA0000"), rgba(250, 0, 0, 255));
  EXPECT_EQ(parsed("#fa0000"), rgba(250, 0, 0, 255));
}

TEST_F(ColorCodec, EightDigitsHaveTheirAlpha) {
  EXPECT_EQ(parsed("FF000080"), rgba(255, 0, 0, 128));
  EXPECT_NEAR(parsed("FF000080").alpha, 0.502, 0.0005);
  EXPECT_EQ(parsed("#12345678"), rgba(0x12, 0x34, 0x56, 0x78));
}

TEST_F(ColorCodec, ThreeDigitsAreDoubled) {
  EXPECT_EQ(parsed("#f00"), rgba(255, 0, 0, 255));
  EXPECT_EQ(parsed("abc"), rgba(0xAA, 0xBB, 0xCC, 255));
}

TEST_F(ColorCodec, EveryHashIsRemoved) {
  EXPECT_EQ(parsed("##FA##0000"), parsed("FA0000"));
  EXPECT_EQ(parsed("#f#0#0#"), parsed("f00"));
  EXPECT_EQ(parsed("####"), transparentBlack);
}

TEST_F(ColorCodec, OtherLengthsAreScannedAsTheyStand) {
  EXPECT_EQ(parsed("F"), rgba(0, 0, 0, 0x0F));
  EXPECT_EQ(parsed("FA"), rgba(0, 0, 0, 0xFA));
  EXPECT_EQ(parsed("F00F"), rgba(0, 0, 0xF0, 0x0F));
  EXPECT_EQ(parsed("12345"), rgba(0, 0x01, 0x23, 0x45));
  EXPECT_EQ(parsed("1234567"), rgba(0x01, 0x23, 0x45, 0x67));
}

TEST_F(ColorCodec, NumbersOfMoreThan32BitsAreOpaqueWhite) {
  EXPECT_EQ(parsed("100000000"), rgba(255, 255, 255, 255));
  EXPECT_EQ(parsed("FFFFFFFFF"), rgba(255, 255, 255, 255));
  EXPECT_EQ(parsed("123456789"), rgba(255, 255, 255, 255));
  EXPECT_EQ(parsed(std::string(1'000'000, 'a')), rgba(255, 255, 255, 255));
}

// The number overflows, not the string.
TEST_F(ColorCodec, LeadingZerosDoNotOverflow) {
  EXPECT_EQ(parsed("000000000000FF00"), rgba(0, 0, 0xFF, 0));
}

// Lengths count UTF-16 units: the emoji has two.
TEST_F(ColorCodec, LengthsCountUtf16Units) {
  EXPECT_EQ(parsed("a\U0001F600"), rgba(0, 0, 0, 0xAA));
  EXPECT_EQ(parsed("ab\U0001F600"), rgba(0, 0, 0, 0xAB));
  EXPECT_EQ(parsed("abé"), rgba(0, 0, 0xAA, 0xBB));
  EXPECT_EQ(parsed("abcdé"), rgba(0, 0, 0xAB, 0xCD));
  EXPECT_EQ(parsed("\U0001F600a"), transparentBlack);
}

// --- The scan ---

// The reset value: everything after the colon is ignored.
TEST_F(ColorCodec, ResetValueIsTransparent) {
  EXPECT_EQ(parsed("#FA0000:0.0"), rgba(0, 250, 0, 0));
}

TEST_F(ColorCodec, ScanStopsAtTheFirstCharacterThatIsNoDigit) {
  EXPECT_EQ(parsed("FF0000FF:1.0"), rgba(255, 0, 0, 255));
  EXPECT_EQ(parsed("12 34 56 78"), rgba(0, 0, 0, 0x12));
  EXPECT_EQ(parsed("-FF0000FF"), transparentBlack);
  EXPECT_EQ(parsed(std::string("12\0FFFF56", 9)), rgba(0, 0, 0, 0x12));
}

TEST_F(ColorCodec, WhiteSpaceInFrontIsPassedOver) {
  EXPECT_EQ(parsed("  FF0000FF"), rgba(255, 0, 0, 255));
  EXPECT_EQ(parsed("\t\r\n\v\fFF0000FF"), rgba(255, 0, 0, 255));
  EXPECT_EQ(parsed("\u00A0\u0085\u1680\u2003\u2028\u2029\u202F\u205F\u3000 FF0000FF"),
            rgba(255, 0, 0, 255));
  EXPECT_EQ(parsed("\u200BFF0000FF"), transparentBlack);
}

// White space counts in the length: four digits behind two spaces make six characters.
TEST_F(ColorCodec, WhiteSpaceCountsInTheLength) {
  EXPECT_EQ(parsed("  ABCD"), rgba(0, 0xAB, 0xCD, 0xFF));
  EXPECT_EQ(parsed(" ab"), rgba(0, 0xAA, 0xBB, 0xFF));
  EXPECT_EQ(parsed(" abc"), rgba(0, 0, 0x0A, 0xBC));
  // Doubled, with "ff" appended.
  EXPECT_EQ(parsed("   "), rgba(0, 0, 0, 0xFF));
}

TEST_F(ColorCodec, PrefixIsAccepted) {
  EXPECT_EQ(parsed("0xFF0000FF"), rgba(255, 0, 0, 255));
  EXPECT_EQ(parsed("0Xff0000ff"), rgba(255, 0, 0, 255));
  EXPECT_EQ(parsed(" 0xFF0000FF"), rgba(255, 0, 0, 255));
  EXPECT_EQ(parsed("0x12"), rgba(0, 0, 0, 0x12));
  EXPECT_EQ(parsed("0x"), transparentBlack);
  EXPECT_EQ(parsed("0x0x12"), transparentBlack);
}

// The prefix counts in the length, and a doubled or extended prefix is not a prefix.
TEST_F(ColorCodec, PrefixCountsInShortTexts) {
  EXPECT_EQ(parsed("0x1"), transparentBlack);              // "00xx11ff"
  EXPECT_EQ(parsed("0xFF00"), rgba(0, 0xFF, 0x00, 0xFF));  // "0xFF00ff"
  EXPECT_EQ(parsed("0#x1#2"), rgba(0, 0, 0, 0x12));        // "0x12"
}

TEST_F(ColorCodec, TextWithoutDigitsIsTransparentBlack) {
  for (const char* text : {"", "#", " ", "xyz", "zzzzzz", "Tertiary", "\xFF\xFE", "\xED\xA0\x80"}) {
    EXPECT_EQ(parsed(text), transparentBlack) << text;
  }
}

// --- Precision ---

TEST_F(ColorCodec, ComponentsAreDividedInSinglePrecision) {
  const double red = parsed("FA0000FF").red;
  EXPECT_EQ(red, static_cast<double>(250.0F / 255.0F));
  EXPECT_NE(red, 250.0 / 255.0);
  EXPECT_EQ(parsed("FA0000FF").alpha, 1.0);
}

// --- Writing ---

TEST_F(ColorCodec, WritesEightUpperCaseDigits) {
  EXPECT_EQ(valueStringFromColor({1, 0, 0, 1}), "FF0000FF");
  EXPECT_EQ(valueStringFromColor({0, 0, 0, 0}), "00000000");
  EXPECT_EQ(valueStringFromColor({10 / 255.0, 171 / 255.0, 205 / 255.0, 1}), "0AABCDFF");
}

TEST_F(ColorCodec, HalvesAreRoundedAwayFromZero) {
  EXPECT_EQ(valueStringFromColor({0.5, 0.5, 0.5, 0.5}), "80808080");
  EXPECT_EQ(valueStringFromColor({0.5 / 255.0, 1.5 / 255.0, 2.5 / 255.0, 1}), "010203FF");
  EXPECT_EQ(valueStringFromColor({-0.5 / 255.0, 0, 0, 1}), "FFFFFFFFFFFFFFFF0000FF");
}

// The product is narrowed before it is rounded: a value just below a half becomes the half.
TEST_F(ColorCodec, ProductsAreRoundedInSinglePrecision) {
  const double justBelow = 127.4999999 / 255.0;
  ASSERT_LT(justBelow * 255.0, 127.5);
  EXPECT_EQ(valueStringFromColor({justBelow, 0, 0, 1}), "800000FF");
}

// The product is computed in doubles: with single-precision factors it would be below the half.
TEST_F(ColorCodec, ComponentsAreMultipliedInDoublePrecision) {
  constexpr double component = 0.013725489764705881;
  ASSERT_LT(static_cast<float>(component) * 255.0F, 3.5F);
  EXPECT_EQ(valueStringFromColor({component, 0, 0, 1}), "040000FF");
}

TEST_F(ColorCodec, NothingIsClamped) {
  EXPECT_EQ(valueStringFromColor({1.1, 0, 0, 1}), "1190000FF");
  EXPECT_EQ(valueStringFromColor({0, 2, 0, 1}), "001FE00FF");
  EXPECT_EQ(valueStringFromColor({-1, 0, 0, 1}), "FFFFFFFFFFFFFF010000FF");
}

TEST_F(ColorCodec, ComponentsThatAreNoNumbersAreWrittenToo) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(valueStringFromColor({std::nan(""), infinity, -infinity, 1e30}),
            "007FFFFFFFFFFFFFFF80000000000000007FFFFFFFFFFFFFFF");
}

// Every byte in every place.
TEST_F(ColorCodec, WritingThenReadingGivesTheSameBytes) {
  for (unsigned byte = 0; byte <= 255; ++byte) {
    const unsigned other = 255 - byte;
    const ColorComponents color{byte / 255.0, other / 255.0, (byte ^ 0x55U) / 255.0,
                                (other ^ 0x33U) / 255.0};
    const ColorComponents back = parsed(valueStringFromColor(color));
    EXPECT_EQ(back, rgba(byte, other, byte ^ 0x55U, other ^ 0x33U));
    EXPECT_EQ(valueStringFromColor(back), valueStringFromColor(color));
  }
}

}  // namespace
}  // namespace zentrova::tests

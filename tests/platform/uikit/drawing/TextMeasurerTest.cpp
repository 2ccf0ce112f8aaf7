#include "platform/uikit/drawing/TextMeasurer.h"
#include "platform/uikit/drawing/UIFont.h"
#include "platform/uikit/views/UILabel.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;

class TextMeasurerTest : public UIKitTest {
 protected:
  Size measure(std::string_view text, double width = TextMeasurer::unlimitedWidth,
               std::int64_t lines = 0, double size = 17) {
    return textMeasurer().sizeOfText(text, UIFont(size, UIFontWeight::regular), width, lines);
  }
};

TEST_F(TextMeasurerTest, NothingHasNoSize) {
  EXPECT_EQ(measure(""), (Size{0, 0}));
}

TEST_F(TextMeasurerTest, MoreTextIsWider) {
  EXPECT_GT(measure("settings").width, measure("set").width);
  EXPECT_GT(measure("mmm").width, measure("iii").width);
  EXPECT_GT(measure("set", TextMeasurer::unlimitedWidth, 0, 34).width, measure("set").width);
}

TEST_F(TextMeasurerTest, ATextThatFitsHasOneLine) {
  EXPECT_EQ(measure("one line").height, measure("x").height);
}

TEST_F(TextMeasurerTest, ALongTextWrapsWithinTheWidth) {
  const std::string text =
      "Reverse module order: When presented from the top, reverse the module order configuration.";
  const Size size = measure(text, 300);
  EXPECT_LE(size.width, 300);
  EXPECT_GE(size.height, 2 * 17);
  EXPECT_GT(measure(text, 150).height, size.height);
}

TEST_F(TextMeasurerTest, TheNumberOfLinesIsLimited) {
  const std::string text = "many words that need a number of lines in so narrow a column";
  EXPECT_EQ(measure(text, 60, 1).height, measure("x").height);
  EXPECT_EQ(measure(text, 60, 1).width, 60);
  EXPECT_LT(measure(text, 60, 2).height, measure(text, 60).height);
}

TEST_F(TextMeasurerTest, ANewLineStartsALine) {
  EXPECT_GT(measure("a\nb").height, measure("a b").height);
  EXPECT_EQ(measure("a\nb").width, measure("b").width);
}

TEST_F(TextMeasurerTest, AWordLongerThanTheLineIsBroken) {
  const Size size = measure("incomprehensibilities", 40);
  EXPECT_LE(size.width, 40);
  EXPECT_GT(size.height, measure("x").height);
}

TEST_F(TextMeasurerTest, BytesThatAreNoTextAreMeasuredWithoutHarm) {
  EXPECT_GT(measure("\xF0\x9F").width, 0);
  EXPECT_GT(measure("\xFF\xFE\x80").width, 0);
}

TEST_F(TextMeasurerTest, APresenterBringsItsOwnMeasurer) {
  class FixedMeasurer : public TextMeasurer {
   public:
    Size sizeOfText(std::string_view, const UIFont&, double, std::int64_t) override {
      return {11, 22};
    }
  };
  process.process().provide<TextMeasurer>(std::make_shared<FixedMeasurer>());
  const auto label = make<UILabel>();
  label->setText("anything");
  EXPECT_EQ(label->intrinsicContentSize(), (Size{11, 22}));
}

}  // namespace
}  // namespace uikit_test

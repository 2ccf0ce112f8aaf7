#include <limits>

#include "platform/uikit/images/CGContext.h"
#include "platform/uikit/images/UIGraphicsImageRenderer.h"
#include "platform/uikit/images/UIImage.h"
#include "tests/platform/uikit/UIKitFixture.h"
#include "tests/platform/uikit/images/SamplePictures.h"

namespace uikit_test {
namespace {

using namespace platform;

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

class CGContextTest : public UIKitTest {
 protected:
  static CGContext context(double width, double height, double scale = 1, bool opaque = false) {
    return CGContext::create({width, height}, scale, opaque).value();
  }
  static std::shared_ptr<UIImage> image(std::uint32_t width, std::uint32_t height, Bytes rgba) {
    return UIImage::imageWithPixels({width, height, std::move(rgba)}, 1);
  }
};

TEST_F(CGContextTest, TheSizeIsInPointsAndRoundedUpToPixels) {
  EXPECT_EQ(context(29, 40, 3).pixels().width, 87U);
  EXPECT_EQ(context(29, 40, 3).pixels().height, 120U);
  EXPECT_EQ(context(1.1, 0.2).pixels().width, 2U);
  EXPECT_EQ(context(1.1, 0.2).pixels().height, 1U);
}

TEST_F(CGContextTest, ASizeThatMakesNoPictureHasNoContext) {
  for (const Size size : {Size{0, 5}, Size{5, 0}, Size{-1, 5}, Size{infinite, 5},
                          Size{notANumber, 5}, Size{70'000, 1}, Size{20'000, 20'000}}) {
    EXPECT_FALSE(CGContext::create(size, 1, false)) << size.width << " x " << size.height;
  }
  for (const double scale : {0.0, -1.0, infinite, notANumber}) {
    EXPECT_FALSE(CGContext::create({5, 5}, scale, false)) << scale;
  }
}

TEST_F(CGContextTest, ItIsTransparentAtFirstAndAnOpaqueOneBlack) {
  EXPECT_EQ(pixelAt(context(2, 2).pixels(), 1, 1), "00000000");
  EXPECT_EQ(pixelAt(context(2, 2, 1, true).pixels(), 1, 1), "000000FF");
}

TEST_F(CGContextTest, ARectangleIsFilledAndNothingElse) {
  CGContext drawn = context(4, 4, 2);
  drawn.fillRect({1, 1, 2, 1}, *UIColor::redColor());
  EXPECT_EQ(pixelAt(drawn.pixels(), 2, 2), "FF0000FF");
  EXPECT_EQ(pixelAt(drawn.pixels(), 5, 3), "FF0000FF");
  EXPECT_EQ(pixelAt(drawn.pixels(), 6, 3), "00000000");
  EXPECT_EQ(pixelAt(drawn.pixels(), 5, 4), "00000000");
  EXPECT_EQ(pixelAt(drawn.pixels(), 1, 2), "00000000");
}

TEST_F(CGContextTest, APixelThatIsCoveredInPartGetsAPart) {
  CGContext drawn = context(2, 1);
  drawn.fillRect({0.5, 0, 1, 0.5}, *UIColor::whiteColor());
  EXPECT_EQ(pixelAt(drawn.pixels(), 0, 0), "FFFFFF40");
  EXPECT_EQ(pixelAt(drawn.pixels(), 1, 0), "FFFFFF40");
}

TEST_F(CGContextTest, WhatIsDrawnLiesOverWhatIsThere) {
  CGContext drawn = context(1, 1, 1, true);
  drawn.fillRect({0, 0, 1, 1}, *UIColor::colorWithRed(1, 1, 1, 0.2));
  EXPECT_EQ(pixelAt(drawn.pixels(), 0, 0), "333333FF") << "an opaque context stays opaque";
  CGContext clear = context(1, 1);
  clear.fillRect({0, 0, 1, 1}, *UIColor::colorWithRed(1, 0, 0, 0.5));
  EXPECT_EQ(pixelAt(clear.pixels(), 0, 0), "FF000080");
  clear.fillRect({0, 0, 1, 1}, *UIColor::colorWithRed(0, 0, 1, 0.5));
  EXPECT_EQ(pixelAt(clear.pixels(), 0, 0), "5500AAC0");
  clear.fillRect({0, 0, 1, 1}, *UIColor::clearColor());
  EXPECT_EQ(pixelAt(clear.pixels(), 0, 0), "5500AAC0");
}

TEST_F(CGContextTest, ARoundedRectangleLeavesItsCorners) {
  CGContext drawn = context(20, 20);
  drawn.fillRoundedRect({0, 0, 20, 20}, 10, *UIColor::redColor());
  EXPECT_EQ(pixelAt(drawn.pixels(), 0, 0), "00000000");
  EXPECT_EQ(pixelAt(drawn.pixels(), 19, 0), "00000000");
  EXPECT_EQ(pixelAt(drawn.pixels(), 10, 10), "FF0000FF");
  EXPECT_EQ(pixelAt(drawn.pixels(), 10, 1), "FF0000FF");
  CGContext square = context(4, 4);
  square.fillRoundedRect({0, 0, 4, 4}, 0, *UIColor::redColor());
  EXPECT_EQ(pixelAt(square.pixels(), 0, 0), "FF0000FF");
}

TEST_F(CGContextTest, ARadiusThatIsTooLargeMakesACircle) {
  CGContext large = context(20, 20);
  large.fillRoundedRect({0, 0, 20, 20}, 1000, *UIColor::redColor());
  CGContext half = context(20, 20);
  half.fillRoundedRect({0, 0, 20, 20}, 10, *UIColor::redColor());
  EXPECT_EQ(large.pixels().rgba, half.pixels().rgba);
}

TEST_F(CGContextTest, WhatLiesOutsideOrNowhereIsLeftOut) {
  CGContext drawn = context(2, 2);
  const auto white = image(1, 1, {255, 255, 255, 255});
  for (const Rect rect :
       {Rect{5, 5, 2, 2}, Rect{-5, 0, 2, 2}, Rect{0, 0, 0, 2}, Rect{0, 0, -1, 2},
        Rect{notANumber, 0, 1, 1}, Rect{0, 0, notANumber, 1}, Rect{-infinite, 0, infinite, 1}}) {
    drawn.fillRect(rect, *UIColor::redColor());
    drawn.fillRoundedRect(rect, 3, *UIColor::redColor());
    EXPECT_TRUE(drawn.drawImage(*white, rect));
  }
  EXPECT_EQ(drawn.pixels().rgba, Bytes(16));
  drawn.fillRect({-1e300, -1e300, 2e300, 2e300}, *UIColor::redColor());
  EXPECT_EQ(pixelAt(drawn.pixels(), 1, 1), "FF0000FF");
}

TEST_F(CGContextTest, ANamedColourGoesByTheTraitsOfTheMoment) {
  process.traits().appearance = UserInterfaceStyle::dark;
  CGContext drawn = context(1, 1);
  drawn.fillRect({0, 0, 1, 1}, *UIColor::labelColor());
  EXPECT_EQ(pixelAt(drawn.pixels(), 0, 0), "FFFFFFFF");
}

TEST_F(CGContextTest, AnImageOfItsOwnSizeKeepsItsPixels) {
  const auto picture = UIImage::imageWithPixels(noise(13, 9), 1);
  CGContext drawn = context(20, 20);
  ASSERT_TRUE(drawn.drawImage(*picture, {3, 5, 13, 9}));
  for (std::uint32_t y = 0; y < 9; ++y) {
    for (std::uint32_t x = 0; x < 13; ++x) {
      ASSERT_EQ(pixelAt(drawn.pixels(), x + 3, y + 5), pixelAt(*picture->pixels(), x, y));
    }
  }
  EXPECT_EQ(pixelAt(drawn.pixels(), 2, 5), "00000000");
  EXPECT_EQ(pixelAt(drawn.pixels(), 16, 5), "00000000");
}

TEST_F(CGContextTest, ASmallerImageIsTheMeanOfWhatItStandsFor) {
  const auto checks = image(2, 2,
                            {0, 0, 0, 255, 255, 255, 255, 255,  //
                             255, 255, 255, 255, 0, 0, 0, 255});
  CGContext drawn = context(1, 1);
  ASSERT_TRUE(drawn.drawImage(*checks, {0, 0, 1, 1}));
  EXPECT_EQ(pixelAt(drawn.pixels(), 0, 0), "808080FF");
}

TEST_F(CGContextTest, TransparentPixelsGiveTheMeanNoColour) {
  const auto half = image(2, 1, {0, 255, 0, 0, 255, 0, 0, 255});
  CGContext drawn = context(1, 1);
  ASSERT_TRUE(drawn.drawImage(*half, {0, 0, 1, 1}));
  EXPECT_EQ(pixelAt(drawn.pixels(), 0, 0), "FF000080");
}

TEST_F(CGContextTest, ALargerImageIsInterpolatedAndReachesItsEdges) {
  const auto two = image(2, 1, {0, 0, 0, 255, 200, 200, 200, 255});
  CGContext drawn = context(4, 1);
  ASSERT_TRUE(drawn.drawImage(*two, {0, 0, 4, 1}));
  EXPECT_EQ(pixelAt(drawn.pixels(), 0, 0), "000000FF");
  EXPECT_EQ(pixelAt(drawn.pixels(), 1, 0), "323232FF");
  EXPECT_EQ(pixelAt(drawn.pixels(), 2, 0), "969696FF");
  EXPECT_EQ(pixelAt(drawn.pixels(), 3, 0), "C8C8C8FF");
}

TEST_F(CGContextTest, AnImageBlendsWithWhatIsThere) {
  CGContext drawn = context(1, 1, 1, true);
  const auto veil = image(1, 1, {255, 255, 255, 51});
  ASSERT_TRUE(drawn.drawImage(*veil, {0, 0, 1, 1}));
  EXPECT_EQ(pixelAt(drawn.pixels(), 0, 0), "333333FF");
}

TEST_F(CGContextTest, ASymbolIsNotDrawn) {
  CGContext drawn = context(1, 1);
  EXPECT_FALSE(drawn.drawImage(*UIImage::systemImageNamed("safari"), {0, 0, 1, 1}));
  EXPECT_EQ(pixelAt(drawn.pixels(), 0, 0), "00000000");
}

TEST_F(CGContextTest, ARendererGivesWhatItsActionsDraw) {
  process.traits().screenScale = 2;
  const auto drawn = UIGraphicsImageRenderer({10, 5}).imageWithActions([](CGContext& open) {
    open.fillRect({0, 0, 5, 5}, *UIColor::blueColor());
  });
  ASSERT_NE(drawn, nullptr);
  EXPECT_EQ(drawn->size(), (Size{10, 5}));
  EXPECT_EQ(drawn->scale(), 2);
  EXPECT_EQ(pixelAt(*drawn->pixels(), 9, 9), "0000FFFF");
  EXPECT_EQ(pixelAt(*drawn->pixels(), 10, 9), "00000000");
}

TEST_F(CGContextTest, ARendererHasAScaleAndOpacityOfItsOwn) {
  const auto drawn = UIGraphicsImageRenderer({2, 2}, {1, true}).imageWithActions(nullptr);
  ASSERT_NE(drawn, nullptr);
  EXPECT_EQ(drawn->pixelWidth(), 2U);
  EXPECT_EQ(pixelAt(*drawn->pixels(), 1, 1), "000000FF");
}

TEST_F(CGContextTest, ARendererWithoutASizeDrawsNothing) {
  bool ran = false;
  EXPECT_EQ(UIGraphicsImageRenderer({0, 5}).imageWithActions([&](CGContext&) { ran = true; }),
            nullptr);
  EXPECT_FALSE(ran);
}

}  // namespace
}  // namespace uikit_test

#include <array>
#include <gtest/gtest.h>

#include "appearance/IconImage.h"
#include "platform/uikit/UIKitClasses.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {
namespace {

using platform::UIColor;
using platform::UIImage;
using Pixel = std::array<std::uint8_t, 4>;

constexpr Pixel blue{0, 0, 255, 255};
constexpr Pixel red{255, 0, 0, 255};

// One pixel per point, so that the test can check points.
class IconImage : public testing::Test {
 protected:
  IconImage() {
    platform::registerUIKitClasses(process.classes());
    process.traits().screenScale = 1;
  }
  static std::shared_ptr<UIImage> redGlyph(std::uint32_t width, std::uint32_t height) {
    platform::ImagePixels pixels{width, height, {}};
    for (std::uint32_t i = 0; i < width * height; ++i) {
      pixels.rgba.insert(pixels.rgba.end(), red.begin(), red.end());
    }
    return UIImage::imageWithPixels(std::move(pixels), 1);
  }
  static Pixel pixelAt(const UIImage& image, std::uint32_t x, std::uint32_t y) {
    const auto pixels = image.decodedPixels();
    Pixel pixel{};
    const std::size_t at = (std::size_t{y} * pixels->width + x) * 4;
    for (std::size_t i = 0; i < 4; ++i) pixel.at(i) = pixels->rgba.at(at + i);
    return pixel;
  }
  // The rectangle of the glyph: on the middle lines all its pixels are pure red, and all others are
  // pure blue.
  static void expectGlyph(const UIImage& icon, std::uint32_t left, std::uint32_t top,
                          std::uint32_t width, std::uint32_t height) {
    const std::uint32_t side = icon.pixelWidth();
    for (std::uint32_t i = 0; i < side; ++i) {
      EXPECT_EQ(pixelAt(icon, i, side / 2), i >= left && i < left + width ? red : blue) << i;
      EXPECT_EQ(pixelAt(icon, side / 2, i), i >= top && i < top + height ? red : blue) << i;
    }
  }

  test_support::TestProcess process;
};

TEST_F(IconImage, FormatZeroIsSmallAndEveryOtherBig) {
  for (const auto& [format, side] :
       std::vector<std::pair<std::int64_t, double>>{{0, 29}, {1, 40}, {2, 40}, {-1, 40}}) {
    const auto icon = iconFromColorAndGlyph(UIColor::blueColor(), format, nullptr);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->size(), (platform::Size{side, side})) << format;
  }
}

TEST_F(IconImage, HasTheScreensScale) {
  process.traits().screenScale = 3;
  const auto icon = iconFromColorAndGlyph(UIColor::blueColor(), 1, nullptr);
  EXPECT_EQ(icon->scale(), 3);
  EXPECT_EQ(icon->pixelWidth(), 120U);
}

TEST_F(IconImage, ColorFillsTheShapeOfAnIcon) {
  const auto icon = iconFromColorAndGlyph(UIColor::blueColor(), 1, nullptr);
  EXPECT_EQ(pixelAt(*icon, 20, 20), blue);
  EXPECT_EQ(pixelAt(*icon, 0, 20), blue);
  EXPECT_EQ(pixelAt(*icon, 0, 0)[3], 0);
  EXPECT_EQ(pixelAt(*icon, 39, 39)[3], 0);
}

// Four fifths of 40 are exactly 32 in single precision.
TEST_F(IconImage, GlyphOfTheBigIconTakes32Points) {
  const auto icon = iconFromColorAndGlyph(UIColor::blueColor(), 1, redGlyph(64, 64));
  expectGlyph(*icon, 4, 4, 32, 32);
}

// Four fifths of 29 are 23.2, rounded up to 24: the glyph is between the pixels.
TEST_F(IconImage, GlyphOfTheSmallIconTakes24Points) {
  process.traits().screenScale = 2;
  const auto icon = iconFromColorAndGlyph(UIColor::blueColor(), 0, redGlyph(48, 48));
  expectGlyph(*icon, 5, 5, 48, 48);
}

TEST_F(IconImage, WideGlyphKeepsItsProportions) {
  const auto icon = iconFromColorAndGlyph(UIColor::blueColor(), 1, redGlyph(64, 32));
  expectGlyph(*icon, 4, 12, 32, 16);
}

TEST_F(IconImage, TallGlyphKeepsItsProportions) {
  const auto icon = iconFromColorAndGlyph(UIColor::blueColor(), 1, redGlyph(8, 16));
  expectGlyph(*icon, 12, 4, 16, 32);
}

TEST_F(IconImage, TransparentColorLeavesTheGlyphAlone) {
  const auto icon = iconFromColorAndGlyph(UIColor::clearColor(), 1, redGlyph(64, 64));
  EXPECT_EQ(pixelAt(*icon, 1, 20)[3], 0);
  EXPECT_EQ(pixelAt(*icon, 20, 20), red);
}

TEST_F(IconImage, NamedColorIsTheOneOfTheMoment) {
  EXPECT_EQ(pixelAt(*iconFromColorAndGlyph(UIColor::labelColor(), 1, nullptr), 20, 20),
            (Pixel{0, 0, 0, 255}));
  process.traits().appearance = platform::UserInterfaceStyle::dark;
  EXPECT_EQ(pixelAt(*iconFromColorAndGlyph(UIColor::labelColor(), 1, nullptr), 20, 20),
            (Pixel{255, 255, 255, 255}));
}

TEST_F(IconImage, WithoutAColorThereIsNothingBehindTheGlyph) {
  const auto icon = iconFromColorAndGlyph(nullptr, 1, redGlyph(64, 64));
  ASSERT_TRUE(icon);
  EXPECT_EQ(pixelAt(*icon, 1, 20)[3], 0);
}

TEST_F(IconImage, GlyphWithoutPixelsLeavesTheColor) {
  const auto icon =
      iconFromColorAndGlyph(UIColor::blueColor(), 1, UIImage::systemImageNamed("safari"));
  ASSERT_TRUE(icon);
  EXPECT_EQ(pixelAt(*icon, 20, 20), blue);
}

}  // namespace
}  // namespace zentrova::tests

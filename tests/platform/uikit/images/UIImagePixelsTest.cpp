#include "platform/uikit/images/ImageCodecs.h"
#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/images/UIImageRepresentation.h"
#include "tests/platform/uikit/UIKitFixture.h"
#include "tests/platform/uikit/images/SamplePictures.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::HasSubstr;

// Codecs that always fail, like on a device without free memory.
class FailingCodecs final : public ImageCodecs {
 public:
  DecodedPicture decode(std::span<const std::uint8_t>) override {
    ++asked;
    return {nullptr, "The decoder is out of order."};
  }
  EncodedPicture encodePng(const ImagePixels&, std::size_t) override { return failure(); }
  EncodedPicture encodeJpeg(const ImagePixels&, double, std::size_t) override { return failure(); }

  int asked = 0;

 private:
  EncodedPicture failure() {
    ++asked;
    return {EncodingOutcome::failed, {}, "The encoder is out of order."};
  }
};

std::shared_ptr<UIImage> imageOf(const Bytes& file, double scale = 1) {
  return UIImage::imageWithData(Data(file), scale);
}

class UIImagePixelsTest : public UIKitTest {
 protected:
  // Returns the lines of the log.
  std::string log() {
    std::string lines;
    for (const LogEntry& entry : process.log().entries()) lines += entry.message + "\n";
    return lines;
  }

  std::shared_ptr<UIImage> twoPixels =
      UIImage::imageWithPixels({2, 1, {1, 2, 3, 4, 250, 251, 252, 253}}, 2);
};

TEST_F(UIImagePixelsTest, AnEncodedImageIsDecodedWhenItsPixelsAreAskedFor) {
  const auto image = imageOf(makePng({}, 2, 1, {1, 2, 3, 4, 250, 251, 252, 253}));
  EXPECT_EQ(image->pixels(), nullptr);
  ASSERT_NE(image->decodedPixels(), nullptr);
  EXPECT_EQ(pixelAt(*image->decodedPixels(), 1, 0), "FAFBFCFD");
  EXPECT_EQ(twoPixels->decodedPixels().get(), twoPixels->pixels());
}

TEST_F(UIImagePixelsTest, APreparedImageHasItsPixelsAtHand) {
  const auto prepared =
      imageOf(makePng({PngColors::grey}, 4, 2, Bytes(8)), 2)->imageByPreparingForDisplay();
  ASSERT_NE(prepared, nullptr);
  ASSERT_NE(prepared->pixels(), nullptr);
  EXPECT_EQ(prepared->size(), (Size{2, 1}));
  EXPECT_EQ(prepared->encodedData(), nullptr);
}

TEST_F(UIImagePixelsTest, AnImageThatLiesOnItsSideHasTheSizeThatItIsShownIn) {
  const auto image =
      imageOf(withSegment(makeJpeg({JpegColors::grey}, 6, 2, Bytes(12)), 0xE1, jpegExifOf(6)));
  EXPECT_EQ(image->pixelWidth(), 2U);
  EXPECT_EQ(image->pixelHeight(), 6U);
  EXPECT_EQ(image->decodedPixels()->width, 2U);
  EXPECT_EQ(image->imageByPreparingForDisplay()->pixelHeight(), 6U);
}

TEST_F(UIImagePixelsTest, ASymbolHasNoPixels) {
  const auto symbol = UIImage::systemImageNamed("safari");
  EXPECT_EQ(symbol->decodedPixels(), nullptr);
  EXPECT_EQ(symbol->imageByPreparingForDisplay(), nullptr);
  EXPECT_EQ(symbol->imageWithTintColor(UIColor::redColor()), nullptr);
  EXPECT_EQ(UIImagePNGRepresentation(symbol), std::nullopt);
  EXPECT_EQ(log(), "");
}

TEST_F(UIImagePixelsTest, WhatDoesNotDecodeSaysSoInTheLog) {
  Bytes file = makePng({}, 8, 8, noise(8, 8).rgba);
  file[file.size() / 2] ^= 0xFF;
  const auto image = imageOf(file);
  ASSERT_NE(image, nullptr) << "only the pixels are broken";
  EXPECT_EQ(image->decodedPixels(), nullptr);
  EXPECT_THAT(log(), HasSubstr("An image cannot be decoded: The PNG cannot be read: "));
  EXPECT_EQ(UIImagePNGRepresentation(image), std::nullopt);
  EXPECT_EQ(UIImageJPEGRepresentation(image, 0.5), std::nullopt);
  EXPECT_EQ(image->imageByPreparingForDisplay(), nullptr);
}

TEST_F(UIImagePixelsTest, ABombIsNoImageAndTheLogSaysWhy) {
  EXPECT_EQ(imageOf(pngThatPromises(50'000, 50'000)), nullptr);
  EXPECT_EQ(log(),
            "An image is refused: The picture has 50000 x 50000 pixels; at most 100 million "
            "pixels are read.\n");
}

TEST_F(UIImagePixelsTest, ATintKeepsTheShape) {
  const auto tinted = twoPixels->imageWithTintColor(UIColor::colorWithRed(1, 0, 0.5, 1));
  ASSERT_NE(tinted, nullptr);
  EXPECT_EQ(pixelAt(*tinted->pixels(), 0, 0), "FF008004");
  EXPECT_EQ(pixelAt(*tinted->pixels(), 1, 0), "FF0080FD");
  EXPECT_EQ(tinted->scale(), 2);
  EXPECT_EQ(pixelAt(*twoPixels->pixels(), 0, 0), "01020304") << "the image itself stays as it is";
  EXPECT_EQ(twoPixels->imageWithTintColor(nullptr), nullptr);
}

TEST_F(UIImagePixelsTest, AHalfTransparentTintHalvesTheAlpha) {
  const auto tinted = twoPixels->imageWithTintColor(UIColor::colorWithWhite(0, 0.5));
  EXPECT_EQ(pixelAt(*tinted->pixels(), 0, 0), "00000002");
}

TEST_F(UIImagePixelsTest, ATintOfTheSystemGoesByTheTraitsOfTheMoment) {
  const auto pixel = [&] {
    return pixelAt(*twoPixels->imageWithTintColor(UIColor::labelColor())->pixels(), 1, 0);
  };
  EXPECT_EQ(pixel(), "000000FD");
  process.traits().appearance = UserInterfaceStyle::dark;
  EXPECT_EQ(pixel(), "FFFFFFFD");
}

TEST_F(UIImagePixelsTest, ThePngOfAnImageShowsTheSame) {
  const auto data = UIImagePNGRepresentation(twoPixels);
  ASSERT_TRUE(data);
  EXPECT_EQ(UIImage::imageWithData(*data)->decodedPixels()->rgba, twoPixels->pixels()->rgba);
}

TEST_F(UIImagePixelsTest, TheJpegOfAnImageHasItsSize) {
  const auto data = UIImageJPEGRepresentation(twoPixels, 0.8);
  ASSERT_TRUE(data);
  const auto image = UIImage::imageWithData(*data);
  EXPECT_EQ(image->pixelWidth(), 2U);
  EXPECT_EQ(image->pixelHeight(), 1U);
}

TEST_F(UIImagePixelsTest, NoImageHasNoRepresentation) {
  EXPECT_EQ(UIImagePNGRepresentation(nullptr), std::nullopt);
  EXPECT_EQ(UIImageJPEGRepresentation(nullptr, 1), std::nullopt);
  EXPECT_EQ(UIImagePNGRepresentation(nullptr, 10).outcome, EncodingOutcome::failed);
  EXPECT_EQ(log(), "");
}

TEST_F(UIImagePixelsTest, ABoundedRepresentationTellsThatTheLimitIsPassed) {
  const auto image = UIImage::imageWithPixels(noise(100, 100), 1);
  const std::size_t size = UIImagePNGRepresentation(image)->size();
  EXPECT_EQ(UIImagePNGRepresentation(image, size).data, *UIImagePNGRepresentation(image));
  const auto above = UIImagePNGRepresentation(image, size - 1);
  EXPECT_EQ(above.outcome, EncodingOutcome::aboveLimit);
  EXPECT_EQ(above.data, Data());
  EXPECT_EQ(UIImageJPEGRepresentation(image, 0.8, 100).outcome, EncodingOutcome::aboveLimit);
  EXPECT_EQ(UIImageJPEGRepresentation(image, 0.8, size).outcome, EncodingOutcome::done);
  EXPECT_EQ(log(), "") << "this is not an error";
}

TEST_F(UIImagePixelsTest, TheCodecsAreAServiceOfTheProcess) {
  const auto failing = std::make_shared<FailingCodecs>();
  process.process().provide<ImageCodecs>(failing);
  EXPECT_EQ(imageOf(makePng({}, 1, 1, {1, 2, 3, 4}))->decodedPixels(), nullptr);
  EXPECT_EQ(UIImagePNGRepresentation(twoPixels), std::nullopt);
  EXPECT_EQ(UIImageJPEGRepresentation(twoPixels, 0.5), std::nullopt);
  EXPECT_EQ(failing->asked, 3);
  EXPECT_EQ(log(),
            "An image cannot be decoded: The decoder is out of order.\n"
            "An image cannot be encoded: The encoder is out of order.\n"
            "An image cannot be encoded: The encoder is out of order.\n");
}

// Returns the corner of the icon shape by rows: "." is transparent, "#" opaque, "+" in between.
std::string cornerOf(const UIImage& icon, std::uint32_t side) {
  std::string text;
  for (std::uint32_t y = 0; y < side; ++y) {
    for (std::uint32_t x = 0; x < side; ++x) {
      const std::string alpha = pixelAt(*icon.pixels(), x, y).substr(6);
      text += alpha == "00" ? '.' : alpha == "FF" ? '#' : '+';
    }
    text += '\n';
  }
  return text;
}

class ApplicationIconTest : public UIImagePixelsTest {
 protected:
  std::shared_ptr<UIImage> iconOf(std::uint32_t side, std::int64_t format, double scale) {
    const auto white =
        UIImage::imageWithPixels({side, side, Bytes(bytesPerPixel * side * side, 0xFF)}, scale);
    return white->applicationIconImageForFormat(format, true, scale);
  }
};

TEST_F(ApplicationIconTest, TheFormatTellsTheSize) {
  const auto small = iconOf(87, 0, 3);
  EXPECT_EQ(small->size(), (Size{29, 29}));
  EXPECT_EQ(small->pixelWidth(), 87U);
  const auto large = iconOf(80, 1, 2);
  EXPECT_EQ(large->size(), (Size{40, 40}));
  EXPECT_EQ(large->pixelWidth(), 80U);
  EXPECT_EQ(iconOf(80, 7, 2)->size(), (Size{40, 40}));
}

TEST_F(ApplicationIconTest, TheImageIsScaledToTheIcon) {
  EXPECT_EQ(iconOf(10, 0, 3)->pixelWidth(), 87U);
}

TEST_F(ApplicationIconTest, TheCornersAreCutOutAndTheRestIsNot) {
  const auto icon = iconOf(29, 0, 1);
  EXPECT_EQ(cornerOf(*icon, 10),
            "...++++++#\n"
            "..+#######\n"
            ".+########\n"
            "+#########\n"
            "+#########\n"
            "+#########\n"
            "+#########\n"
            "+#########\n"
            "+#########\n"
            "##########\n");
}

TEST_F(ApplicationIconTest, TheFourCornersAreAlike) {
  const auto icon = iconOf(87, 0, 3);
  const ImagePixels& pixels = *icon->pixels();
  for (std::uint32_t y = 0; y < 87; ++y) {
    for (std::uint32_t x = 0; x < 87; ++x) {
      ASSERT_EQ(pixelAt(pixels, x, y), pixelAt(pixels, 86 - x, y));
      ASSERT_EQ(pixelAt(pixels, x, y), pixelAt(pixels, x, 86 - y));
      ASSERT_EQ(pixelAt(pixels, x, y), pixelAt(pixels, y, x));
    }
  }
}

// Returns the start of the icon shape in each row of a large icon, from the left.
std::vector<double> leftEdgeOf(const UIImage& icon, std::uint32_t rows) {
  std::vector<double> edge;
  for (std::uint32_t y = 0; y < rows; ++y) {
    double start = 0;
    for (std::uint32_t x = 0; x < icon.pixelWidth() / 2; ++x) {
      start += 1 - std::stoi(pixelAt(*icon.pixels(), x, y).substr(6), nullptr, 16) / 255.0;
    }
    edge.push_back(start);
  }
  return edge;
}

// The edge of a round corner has the curvature 1/radius where it leaves the straight side. That of
// a continuous corner starts at zero and increases.
TEST_F(ApplicationIconTest, TheCornerBeginsWithoutAJumpInCurvature) {
  constexpr double side = 29 * 40;
  const auto icon = iconOf(29 * 40, 0, 40);
  const auto edge = leftEdgeOf(*icon, 500);
  const auto length = static_cast<std::size_t>(0.345 * side);
  const auto sag = [&](std::size_t rowsIntoTheCorner) {
    return edge.at(length - rowsIntoTheCorner);
  };
  EXPECT_EQ(sag(0), 0) << "the side is straight";
  EXPECT_EQ(edge.at(length + 50), 0);
  const double radius = 0.225 * side;
  for (const std::size_t rows : {20U, 40U, 60U}) {
    const double reach = static_cast<double>(rows);
    const double round = radius - std::sqrt(radius * radius - reach * reach);
    EXPECT_LT(sag(rows), round / 2) << rows;
  }
  EXPECT_GT(sag(120) / sag(60), 4.5) << "a round corner has a ratio of 4";
}

// On the diagonal, the corner is as deep as a round corner of 0.225 sides.
TEST_F(ApplicationIconTest, TheCornerIsAsDeepAsARoundOne) {
  constexpr std::uint32_t side = 29 * 20;
  const auto icon = iconOf(side, 0, 20);
  std::uint32_t first = 0;
  while (pixelAt(*icon->pixels(), first, first).substr(6) < "80") ++first;
  EXPECT_NEAR(first, 0.225 * side * (1 - std::sqrt(0.5)), 1.5);
}

TEST_F(ApplicationIconTest, WhatHasNoPixelsOrNoScaleHasNoIcon) {
  EXPECT_EQ(UIImage::systemImageNamed("safari")->applicationIconImageForFormat(0, true, 3),
            nullptr);
  EXPECT_EQ(twoPixels->applicationIconImageForFormat(0, true, 0), nullptr);
  EXPECT_EQ(twoPixels->applicationIconImageForFormat(0, true, -1), nullptr);
  EXPECT_EQ(twoPixels->applicationIconImageForFormat(0, true, 1e9), nullptr);
}

TEST_F(ApplicationIconTest, TheOperationIsReachedByItsPrivateName) {
  const auto icon = twoPixels->perform("_applicationIconImageForFormat:precomposed:scale:",
                                       {Value::integer(1), true, 3.0});
  ASSERT_NE(icon.as<UIImage>(), nullptr);
  EXPECT_EQ(icon.as<UIImage>()->size(), (Size{40, 40}));
}

}  // namespace
}  // namespace uikit_test

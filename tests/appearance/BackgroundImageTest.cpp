#include <gtest/gtest.h>

#include "appearance/BackgroundImage.h"
#include "tests/appearance/ImageCodecStandIn.h"
#include "tests/appearance/Pictures.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {
namespace {

using platform::Data;
using platform::UIImage;

constexpr std::size_t limit = 4194304;

// The result depends on the sizes of the files, so the test sets them.
class BackgroundImageForm : public testing::Test {
 protected:
  BackgroundImageForm() {
    process.process().provide<platform::ImageCodecs>(codecs);
    codecs->jpegSizes = {1000};
  }
  std::optional<Data> encode() { return encodeBackgroundImage(plainPicture(2, 2)); }

  test_support::TestProcess process;
  std::shared_ptr<ImageCodecStandIn> codecs = std::make_shared<ImageCodecStandIn>();
};

TEST_F(BackgroundImageForm, PngThatFitsIsKept) {
  codecs->pngSize = 3UL * 1024 * 1024;
  EXPECT_EQ(encode()->size(), codecs->pngSize);
  EXPECT_TRUE(codecs->qualities().empty());
}

TEST_F(BackgroundImageForm, PngOfExactlyFourMebibytesIsKept) {
  codecs->pngSize = limit;
  EXPECT_EQ(encode()->size(), limit);
  EXPECT_TRUE(codecs->qualities().empty());
}

TEST_F(BackgroundImageForm, LargerPngBecomesAJpegOfFourFifthsFirst) {
  for (const std::size_t size : {limit + 1, 5UL * 1024 * 1024}) {
    const auto fresh = std::make_shared<ImageCodecStandIn>();
    process.process().provide<platform::ImageCodecs>(fresh);
    fresh->pngSize = size;
    fresh->jpegSizes = {limit};
    const auto data = encode();
    EXPECT_EQ(data->size(), limit);
    EXPECT_EQ(data->bytes()[0], 'J');
    ASSERT_EQ(fresh->qualities().size(), 1U) << size;
    EXPECT_NEAR(fresh->qualities()[0], 0.8, 1e-6);
  }
}

TEST_F(BackgroundImageForm, QualityFallsUntilTheJpegFits) {
  codecs->pngSize = limit + 1;
  codecs->jpegSizes = {limit + 3, limit + 2, limit + 1, limit, 1};
  EXPECT_EQ(encode()->size(), limit);
  const auto qualities = codecs->qualities();
  ASSERT_EQ(qualities.size(), 4U);
  EXPECT_NEAR(qualities[3], 0.5, 1e-6);
}

// 0.9 in single precision, repeatedly reduced by 0.1 in double: the last one is just below 0.1.
TEST_F(BackgroundImageForm, QualitiesAreEightAndExact) {
  codecs->pngSize = limit + 1;
  codecs->jpegSizes = {limit + 1};
  EXPECT_EQ(encode()->size(), limit + 1);
  const auto qualities = codecs->qualities();
  ASSERT_EQ(qualities.size(), 8U);
  double expected = static_cast<double>(0.9F);
  for (const double quality : qualities) {
    expected -= 0.1;
    EXPECT_EQ(quality, expected);
  }
  EXPECT_LT(qualities.back(), static_cast<double>(0.1F));
  EXPECT_NEAR(qualities.back(), 0.1, 1e-6);
}

TEST_F(BackgroundImageForm, LastJpegIsKeptHoweverLarge) {
  codecs->pngSize = limit + 1;
  codecs->jpegSizes = {9UL * 1024 * 1024};
  EXPECT_EQ(encode()->size(), 9UL * 1024 * 1024);
}

// An encoding that is too large is stopped early, except for the last one.
TEST_F(BackgroundImageForm, WhatIsTooLargeIsNotEncodedToItsEnd) {
  codecs->pngSize = limit + 1;
  codecs->jpegSizes = {limit + 1};
  encode();
  const auto requests = codecs->requests();
  ASSERT_EQ(requests.size(), 9U);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(requests[i].limit, limit) << i;
  EXPECT_EQ(requests[8].limit, platform::ImageCodecs::noLimit);
}

TEST_F(BackgroundImageForm, PictureThatCannotBeEncodedIsNone) {
  codecs->pngSize = 0;
  EXPECT_EQ(encode(), std::nullopt);
  EXPECT_TRUE(codecs->qualities().empty());
  codecs->pngSize = limit + 1;
  codecs->jpegSizes = {0};
  EXPECT_EQ(encode(), std::nullopt);
}

TEST_F(BackgroundImageForm, NoPictureIsNone) {
  EXPECT_EQ(encodeBackgroundImage(nullptr), std::nullopt);
  EXPECT_EQ(encodeBackgroundImage(UIImage::systemImageNamed("safari")), std::nullopt);
  EXPECT_TRUE(codecs->requests().empty());
}

// The real codecs.
class BackgroundImageFile : public testing::Test {
 protected:
  test_support::TestProcess process;
};

TEST_F(BackgroundImageFile, SmallPictureIsAPng) {
  const auto data = encodeBackgroundImage(plainPicture(64, 64));
  ASSERT_TRUE(data);
  EXPECT_TRUE(isPng(*data));
  EXPECT_EQ(UIImage::imageWithData(*data)->pixelWidth(), 64U);
}

TEST_F(BackgroundImageFile, PictureOfFiveMegabytesIsTheJpegOfFourFifths) {
  const auto picture = noisyPicture(1350);
  const auto png = platform::UIImagePNGRepresentation(picture);
  ASSERT_GT(png->size(), 5UL * 1024 * 1024);
  const auto data = encodeBackgroundImage(UIImage::imageWithData(*png));
  ASSERT_TRUE(data);
  EXPECT_TRUE(isJpeg(*data));
  EXPECT_LE(data->size(), limit);
  const double quality = static_cast<double>(0.9F) - 0.1;
  EXPECT_EQ(*data, *platform::UIImageJPEGRepresentation(picture, quality));
}

TEST_F(BackgroundImageFile, PictureThatIsCutOffIsNone) {
  const auto png = platform::UIImagePNGRepresentation(noisyPicture(64));
  const auto bytes = png->bytes();
  const Data half(std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + 6000));
  EXPECT_EQ(encodeBackgroundImage(UIImage::imageWithData(half)), std::nullopt);
}

}  // namespace
}  // namespace zentrova::tests

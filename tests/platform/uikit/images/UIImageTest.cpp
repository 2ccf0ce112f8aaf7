#include "platform/uikit/images/Sha256.h"
#include "platform/uikit/images/UIImage.h"
#include "tests/platform/uikit/UIKitFixture.h"
#include "tests/platform/uikit/images/SamplePictures.h"

namespace uikit_test {
namespace {

using namespace platform;

// A PNG of 640 x 200 pixels.
const std::string& png() {
  static const std::string bytes = [] {
    const Bytes file = makePng({PngColors::grey}, 640, 200, Bytes(640 * 200));
    return std::string(file.begin(), file.end());
  }();
  return bytes;
}

// A JPEG of 300 x 150 pixels, with a segment before its frame.
const std::string& jpeg() {
  static const std::string bytes = [] {
    const Bytes file = makeJpeg({JpegColors::grey}, 300, 150, Bytes(300 * 150));
    return std::string(file.begin(), file.end());
  }();
  return bytes;
}

class UIImageTest : public UIKitTest {};

TEST_F(UIImageTest, APngKeepsItsBytesAndTellsItsSize) {
  const auto image = UIImage::imageWithData(Data(png()), 2);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->pixelWidth(), 640U);
  EXPECT_EQ(image->pixelHeight(), 200U);
  EXPECT_EQ(image->size(), (Size{320, 100}));
  ASSERT_NE(image->encodedData(), nullptr);
  EXPECT_EQ(*image->encodedData(), Data(png()));
}

TEST_F(UIImageTest, AJpegTellsTheSizeOfItsFrame) {
  const auto image = UIImage::imageWithData(Data(jpeg()));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->pixelWidth(), 300U);
  EXPECT_EQ(image->pixelHeight(), 150U);
}

TEST_F(UIImageTest, BytesThatAreNoImageGiveNone) {
  EXPECT_EQ(UIImage::imageWithData(Data()), nullptr);
  EXPECT_EQ(UIImage::imageWithData(Data(std::string_view("GIF89a"))), nullptr);
  const std::string endless("\xFF\xD8\xFF\xE0\0\0\xFF\xE0\0\0", 10);
  EXPECT_EQ(UIImage::imageWithData(Data(endless)), nullptr);
}

TEST_F(UIImageTest, AFileThatEndsTooEarlyGivesNone) {
  for (const std::string& file : {png(), jpeg()}) {
    ASSERT_NE(UIImage::imageWithData(Data(file)), nullptr);
    for (std::size_t length = 0; length < file.size(); ++length) {
      EXPECT_EQ(UIImage::imageWithData(Data(file.substr(0, length))), nullptr) << length;
    }
  }
}

TEST_F(UIImageTest, AnEmptyPictureIsNone) {
  EXPECT_EQ(UIImage::imageWithData(Data(pngThatPromises(0, 200))), nullptr);
  EXPECT_EQ(UIImage::imageWithData(Data(pngThatPromises(200, 0))), nullptr);
}

TEST_F(UIImageTest, AFileOfTheDeviceIsReadWithTheScaleOfItsName) {
  ASSERT_FALSE(process.deviceFiles().createDirectory("/var/mobile"));
  ASSERT_FALSE(process.deviceFiles().writeAtomically("/var/mobile/Banner@2x.png", png()));
  const auto image = UIImage::imageWithContentsOfFile("/var/mobile/Banner@2x.png");
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->scale(), 2);
  EXPECT_EQ(image->size(), (Size{320, 100}));
}

TEST_F(UIImageTest, AMissingFileIsNoImage) {
  EXPECT_EQ(UIImage::imageWithContentsOfFile("/nowhere/Banner.png"), nullptr);
  EXPECT_EQ(UIImage::imageWithContentsOfFile(""), nullptr);
}

TEST_F(UIImageTest, ASymbolHasAName) {
  const auto safari = UIImage::systemImageNamed("safari");
  ASSERT_NE(safari, nullptr);
  EXPECT_EQ(safari->symbolName(), "safari");
  EXPECT_EQ(safari->encodedData(), nullptr);
  EXPECT_EQ(UIImage::systemImageNamed(""), nullptr);
}

TEST_F(UIImageTest, PixelsMustFillTheirRectangle) {
  const auto image = UIImage::imageWithPixels({2, 1, {1, 2, 3, 4, 5, 6, 7, 8}}, 1);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->pixels()->rgba.size(), 8U);
  EXPECT_EQ(UIImage::imageWithPixels({2, 1, {1, 2, 3}}, 1), nullptr);
  EXPECT_EQ(UIImage::imageWithPixels({0, 0, {}}, 1), nullptr);
  EXPECT_EQ(UIImage::imageWithPixels({0xFFFFFFFF, 0xFFFFFFFF, {1, 2, 3, 4}}, 1), nullptr);
}

TEST_F(UIImageTest, EqualContentHasEqualHashes) {
  const auto a = UIImage::imageWithData(Data(png()));
  const auto b = UIImage::imageWithData(Data(png()), 3);
  EXPECT_EQ(a->contentHash(), b->contentHash());
  EXPECT_NE(a->contentHash(), UIImage::imageWithData(Data(jpeg()))->contentHash());
  const auto wide = UIImage::imageWithPixels({2, 1, std::vector<std::uint8_t>(8)}, 1);
  const auto high = UIImage::imageWithPixels({1, 2, std::vector<std::uint8_t>(8)}, 1);
  EXPECT_NE(wide->contentHash(), high->contentHash());
}

TEST_F(UIImageTest, TheHashOfAnEncodedImageIsTheSha256OfItsBytes) {
  Sha256 hash;
  hash.add(png());
  EXPECT_EQ(UIImage::imageWithData(Data(png()))->contentHash(), hash.finish());
}

// The test vectors of the standard: empty, one block, two blocks, a million bytes.
TEST(Sha256, AnswersTheStandardsVectors) {
  const auto hashOf = [](std::string_view text) {
    Sha256 hash;
    hash.add(text);
    return hash.finish();
  };
  EXPECT_EQ(hashOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(hashOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(hashOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(hashOf(std::string(1'000'000, 'a')),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, DoesNotMindHowTheBytesArrive) {
  Sha256 pieces;
  Sha256 whole;
  const std::string text(200, 'x');
  for (const char character : text) pieces.add(std::string_view(&character, 1));
  whole.add(text);
  EXPECT_EQ(pieces.finish(), whole.finish());
}

}  // namespace
}  // namespace uikit_test

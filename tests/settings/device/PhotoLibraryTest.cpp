// The photo library of a device: what it shows, and which files it reads for that.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/uikit/images/ImageCodecs.h"
#include "platform/uikit/images/ImageHeader.h"
#include "platform/uikit/images/UIImage.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/PhotoLibrary.h"
#include "settings/device/TreeWriter.h"
#include "tests/root/Pictures.h"
#include "tests/settings/cli/ProgramRunner.h"

namespace settings::test {
namespace {

using platform::Data;
using platform::ImageFormat;
using ::testing::HasSubstr;
using zentrova::tests::jpegOf;
using zentrova::tests::pngOf;

// Damage within the pixels, which neither the header nor the end marker shows.
std::string damaged(std::string picture) {
  char& inTheMiddle = picture[picture.size() / 2];
  inTheMiddle = static_cast<char>(inTheMiddle + 1);
  return picture;
}

// A picture that hardly compresses, with this many pixels on each side.
std::string noisyPng(std::uint32_t side) {
  platform::ImagePixels pixels{side, side, {}};
  std::minstd_rand random(5);
  pixels.rgba.resize(platform::bytesPerPixel * side * side, 0xFF);
  for (std::size_t at = 0; at < pixels.rgba.size(); ++at) {
    if (at % platform::bytesPerPixel != 3) pixels.rgba[at] = static_cast<std::uint8_t>(random());
  }
  return zentrova::tests::textOf(
      platform::LibraryImageCodecs().encodePng(pixels, platform::ImageCodecs::noLimit));
}

class PhotoLibraryTest : public ::testing::Test {
 protected:
  void add(const std::string& name, const std::string& bytes) {
    TreeWriter writer(folder.in("device"));
    writer.file(std::string(photosPath) + "/" + name, bytes);
    ASSERT_EQ(writer.problem(), "");
  }
  PhotoLibrary& library() {
    if (!_library) {
      _library = std::make_unique<PhotoLibrary>(
          std::make_shared<platform::DeviceFileSystem>(folder.in("device")));
    }
    return *_library;
  }
  const std::vector<LibraryPhoto>& photos() { return library().photosFor(1); }
  // The content of the thumbnail of the photo with this index.
  ThumbnailFile thumbnail(std::size_t index = 0) {
    const auto work = library().thumbnailWork(photos().at(index).thumbnail.key);
    EXPECT_TRUE(work);
    return work ? work() : ThumbnailFile{};
  }
  static platform::ImageHeader headerOf(const std::string& bytes) {
    const auto header = platform::readImageHeader(Data(bytes).bytes());
    EXPECT_TRUE(header);
    return header.value_or(platform::ImageHeader());
  }

  TemporaryFolder folder;

 private:
  std::unique_ptr<PhotoLibrary> _library;
};

TEST_F(PhotoLibraryTest, AThumbnailIsSmallAndKeepsTheProportions) {
  add("wide.jpg", jpegOf(1600, 1200));
  EXPECT_EQ(photos()[0].thumbnail.width, 320U);
  EXPECT_EQ(photos()[0].thumbnail.height, 240U);
  const ThumbnailFile made = thumbnail();
  EXPECT_EQ(made.problem, "");
  EXPECT_EQ(headerOf(made.bytes).width, 320U);
  EXPECT_EQ(headerOf(made.bytes).height, 240U);
}

TEST_F(PhotoLibraryTest, AThumbnailOfALargePhotoTakesLittle) {
  const std::string photo = noisyPng(900);
  ASSERT_GT(photo.size(), 2'000'000U);
  add("noise.png", photo);
  const ThumbnailFile made = thumbnail();
  EXPECT_EQ(headerOf(made.bytes).format, ImageFormat::jpeg);
  EXPECT_LT(made.bytes.size(), 100'000U);
}

TEST_F(PhotoLibraryTest, AThumbnailKeepsWhatShinesThrough) {
  add("drawing.png", pngOf(1000, 500));  // half transparent
  const ThumbnailFile made = thumbnail();
  EXPECT_EQ(headerOf(made.bytes).format, ImageFormat::png);
  const auto decoded = platform::LibraryImageCodecs().decode(Data(made.bytes).bytes());
  ASSERT_TRUE(decoded.pixels);
  EXPECT_EQ(decoded.pixels->rgba[3], 0x80);
}

TEST_F(PhotoLibraryTest, ASmallPhotoIsItsOwnThumbnail) {
  const std::string photo = jpegOf(320, 10);
  add("small.jpg", photo);
  EXPECT_EQ(photos()[0].thumbnail.width, 320U);
  EXPECT_EQ(photos()[0].thumbnail.height, 10U);
  EXPECT_EQ(thumbnail().bytes, photo);
}

TEST_F(PhotoLibraryTest, ANarrowPhotoKeepsAPixel) {
  add("line.png", pngOf(4000, 1));
  EXPECT_EQ(photos()[0].thumbnail.width, 320U);
  EXPECT_EQ(photos()[0].thumbnail.height, 1U);
  EXPECT_EQ(headerOf(thumbnail().bytes).height, 1U);
}

TEST_F(PhotoLibraryTest, ThumbnailsGoByAKeyThatDiffersWithTheFile) {
  add("a.png", pngOf(10, 10));
  add("b.png", pngOf(10, 10));
  add("c.png", pngOf(10, 11));
  const std::string first = photos()[0].thumbnail.key;
  EXPECT_EQ(first.size(), 64U);
  EXPECT_EQ(first.find_first_not_of("0123456789abcdef"), std::string::npos);
  EXPECT_NE(first, photos()[1].thumbnail.key);
  EXPECT_NE(photos()[1].thumbnail.key, photos()[2].thumbnail.key);
  add("a.png", pngOf(10, 12));
  EXPECT_EQ(photos()[0].thumbnail.key, first) << "what is shown stays while the picker is open";
  EXPECT_NE(library().photosFor(2)[0].thumbnail.key, first);
  EXPECT_FALSE(library().thumbnailWork(first));
  EXPECT_FALSE(library().thumbnailWork(""));
}

// Neither listing nor choosing decompresses the photo, so damage within it is not detected yet.
TEST_F(PhotoLibraryTest, OnlyAThumbnailUnpacksThePhoto) {
  add("damaged.png", damaged(noisyPng(64)));
  EXPECT_EQ(photos()[0].problem, "");
  const PhotoResult chosen = library().photo("damaged.png");
  ASSERT_TRUE(chosen.image) << chosen.problem;
  EXPECT_EQ(chosen.image->pixelWidth(), 64U);
  const ThumbnailFile made = thumbnail();
  EXPECT_EQ(made.bytes, "");
  EXPECT_THAT(made.problem, HasSubstr("The PNG cannot be read"));
}

// A small file with this size in its header.
std::string pngThatSays(std::string_view widthAndHeight) {
  constexpr std::size_t widthOffset = 16;
  return pngOf(1, 1).replace(widthOffset, widthAndHeight.size(), widthAndHeight);
}

TEST_F(PhotoLibraryTest, PicturesOfNoSizeOrOfTooMuchAreRefusedByTheirHeader) {
  using namespace std::string_view_literals;
  add("1.png", pngThatSays("\0\0\0\0\0\0\0\1"sv));          // 0 x 1
  add("2.png", pngThatSays("\0\1\x86\xA0\0\0\0\1"sv));      // 100,000 x 1
  add("3.png", pngThatSays("\0\0\xEA\x60\0\0\xEA\x60"sv));  // 60,000 x 60,000
  EXPECT_EQ(photos()[0].problem, "The file is not a PNG or JPEG picture.");
  EXPECT_EQ(photos()[1].problem,
            "The picture has 100000 x 1 pixels; a side may have at most 65500.");
  EXPECT_EQ(photos()[2].problem,
            "The picture has 60000 x 60000 pixels; at most 100 million pixels are read.");
  for (const LibraryPhoto& each : photos()) {
    EXPECT_EQ(library().photo(each.name).problem, each.problem);
    EXPECT_EQ(each.thumbnail.key, "");
  }
}

TEST_F(PhotoLibraryTest, DamageThatIsKnownIsShownAndThePhotoRefused) {
  add("damaged.png", damaged(noisyPng(64)));
  add("whole.png", pngOf(3, 3));
  const std::string key = photos()[0].thumbnail.key;
  library().noteProblem(key, "It is damaged.");
  library().noteProblem("no such key", "Nobody hears this.");
  EXPECT_EQ(photos()[0].problem, "It is damaged.");
  EXPECT_EQ(photos()[1].problem, "");
  EXPECT_EQ(library().photo("damaged.png").problem, "It is damaged.");
  EXPECT_TRUE(library().photo("whole.png").image);
  // Another file with the same name is another photo.
  add("damaged.png", pngOf(3, 3));
  EXPECT_TRUE(library().photo("damaged.png").image);
}

TEST_F(PhotoLibraryTest, AFileThatHasChangedOrGoneHasNoThumbnail) {
  add("a.png", pngOf(10, 10));
  add("b.png", pngOf(10, 10));
  photos();
  add("a.png", pngOf(11, 11));
  std::filesystem::remove(folder.in("device") + std::string(photosPath) + "/b.png");
  EXPECT_EQ(thumbnail(0).problem, "The file has changed in the meantime.");
  EXPECT_NE(thumbnail(1).problem, "");
  EXPECT_EQ(thumbnail(0).bytes, "");
  EXPECT_EQ(thumbnail(1).bytes, "");
}

}  // namespace
}  // namespace settings::test

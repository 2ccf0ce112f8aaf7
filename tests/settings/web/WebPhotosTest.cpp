#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "settings/device/PhotoLibrary.h"
#include "settings/web/SentPhotos.h"
#include "tests/root/Pictures.h"

namespace settings {
namespace {

PhotoResult photo(const std::string& bytes) {
  return readPhoto(platform::Data(bytes));
}

TEST(ReadPhotoTest, PicturesAreReadAndOtherFilesSayWhyTheyAreNone) {
  const PhotoResult png = photo(zentrova::tests::pngOf(3, 2));
  ASSERT_TRUE(png.image) << png.problem;
  EXPECT_EQ(png.image->size().width, 3);
  const PhotoResult jpeg = photo(zentrova::tests::jpegOf(4, 5));
  ASSERT_TRUE(jpeg.image) << jpeg.problem;
  EXPECT_EQ(jpeg.image->size().height, 5);
  for (const char* other : {"no picture", ""}) {
    EXPECT_FALSE(photo(other).image);
    EXPECT_EQ(photo(other).problem, "The file is not a PNG or JPEG picture.");
  }
}

TEST(ReadPhotoTest, APictureThatIsCutOffOrDamagedIsRefused) {
  const std::string whole = zentrova::tests::pngOf(64, 64);
  std::string damaged = whole;
  damaged[50] = static_cast<char>(damaged[50] + 1);
  for (const std::string& bytes : {whole.substr(0, whole.size() - 20), damaged}) {
    EXPECT_FALSE(photo(bytes).image);
    EXPECT_NE(photo(bytes).problem, "");
  }
}

TEST(SentPhotosTest, APhotoIsFoundByTheNameThatItWasGiven) {
  SentPhotos photos;
  const std::string name = photos.keep(photo(zentrova::tests::pngOf(3, 2)));
  ASSERT_TRUE(photos.find(name));
  EXPECT_EQ(photos.find(name)->image->size().width, 3);
  EXPECT_TRUE(SentPhotos::isName(name));
  EXPECT_FALSE(photos.find("beach.jpg"));
  photos.drop(name);
  EXPECT_FALSE(photos.find(name));
}

TEST(SentPhotosTest, NoPhotoOfALibraryHasSuchAName) {
  SentPhotos photos;
  EXPECT_NE(photos.keep({}).find('/'), std::string::npos);
  EXPECT_FALSE(SentPhotos::isName("sent.jpg"));
}

TEST(SentPhotosTest, OnlyTheLastTwoAreKept) {
  SentPhotos photos;
  const std::string first = photos.keep({});
  const std::string second = photos.keep({});
  const std::string third = photos.keep({});
  EXPECT_FALSE(photos.find(first));
  EXPECT_TRUE(photos.find(second));
  EXPECT_TRUE(photos.find(third));
  EXPECT_NE(first, third);
}

}  // namespace
}  // namespace settings

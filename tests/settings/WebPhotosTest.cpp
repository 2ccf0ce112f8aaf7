#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "settings/web/PhotoReader.h"
#include "settings/web/SentPhotos.h"
#include "tests/root/Pictures.h"

namespace settings {
namespace {

// Reads photos one after the other and waits for all of them.
std::vector<PhotoResult> readAll(const std::vector<std::string>& files) {
  std::mutex mutex;
  std::condition_variable added;
  std::vector<PhotoResult> results;
  PhotoReader reader;
  for (const std::string& bytes : files) {
    reader.read(bytes, [&](PhotoResult photo) {
      EXPECT_NE(std::this_thread::get_id(), std::thread::id());
      const std::lock_guard lock(mutex);
      results.push_back(std::move(photo));
      added.notify_all();
    });
  }
  std::unique_lock lock(mutex);
  added.wait(lock, [&] { return results.size() == files.size(); });
  return results;
}

TEST(PhotoReaderTest, PicturesAreReadInTheirOrderAndOthersSayWhyTheyAreNone) {
  const auto results =
      readAll({zentrova::tests::pngOf(3, 2), "no picture", "", zentrova::tests::jpegOf(4, 5)});
  ASSERT_TRUE(results[0].image) << results[0].problem;
  EXPECT_EQ(results[0].image->size().width, 3);
  EXPECT_FALSE(results[1].image);
  EXPECT_EQ(results[1].problem, "The file is no PNG or JPEG picture.");
  EXPECT_FALSE(results[2].image);
  ASSERT_TRUE(results[3].image) << results[3].problem;
  EXPECT_EQ(results[3].image->size().height, 5);
}

TEST(PhotoReaderTest, ACutOffPictureIsRefused) {
  const std::string whole = zentrova::tests::pngOf(64, 64);
  const auto results = readAll({whole.substr(0, whole.size() - 20)});
  EXPECT_FALSE(results[0].image);
  EXPECT_NE(results[0].problem, "");
}

TEST(PhotoReaderTest, ItEndsWithPicturesStillWaiting) {
  int done = 0;
  {
    PhotoReader reader;
    for (int count = 0; count < 50; ++count) {
      reader.read(zentrova::tests::pngOf(200, 200), [&](const PhotoResult&) { ++done; });
    }
  }
  EXPECT_LE(done, 50);
}

PhotoResult photo(const std::string& bytes) {
  return readAll({bytes}).front();
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

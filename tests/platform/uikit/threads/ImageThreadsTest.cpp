#include <gtest/gtest.h>
#include <vector>

#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/images/UIImageRepresentation.h"
#include "tests/support/ThreadedTestProcess.h"

namespace uikit_test {
namespace {

using namespace platform;

// A colour gradient, which both formats compress well.
std::shared_ptr<UIImage> makeSlope(std::uint32_t side) {
  ImagePixels pixels{side, side, {}};
  for (std::uint32_t y = 0; y < side; ++y) {
    for (std::uint32_t x = 0; x < side; ++x) {
      for (const std::uint32_t part : {x * 7, y * 3, x + y, 255U}) {
        pixels.rgba.push_back(static_cast<std::uint8_t>(part));
      }
    }
  }
  return UIImage::imageWithPixels(std::move(pixels), 1);
}

class ImageThreadsTest : public ::testing::Test {
 protected:
  static constexpr int threads = 4;

  // Runs the work on several background threads while the main thread does its own. Returns the
  // result of each thread.
  template <class Work, class MainWork>
  auto together(Work work, MainWork mainWork) {
    std::vector<decltype(work())> results(threads);
    int finished = 0;
    for (int i = 0; i < threads; ++i) {
      process.scheduler().asyncGlobal([&, i] {
        auto result = work();
        process.scheduler().asyncMain([&, i, result = std::move(result)] {
          results[static_cast<std::size_t>(i)] = result;
          ++finished;
        });
      });
    }
    mainWork();
    EXPECT_TRUE(process.settles([&] { return finished == threads; }));
    return results;
  }

  test_support::ThreadedTestProcess process;
};

TEST_F(ImageThreadsTest, AnImageIsEncodedWhileTheMainThreadReadsIt) {
  const auto image = makeSlope(120);
  const auto expected = UIImagePNGRepresentation(image);
  std::string hash;
  const auto files = together([&] { return UIImagePNGRepresentation(image); },
                              [&] {
                                hash = image->contentHash();
                                EXPECT_EQ(image->size(), (Size{120, 120}));
                                EXPECT_EQ(image->pixels()->rgba.size(), 4U * 120 * 120);
                              });
  for (const auto& file : files) EXPECT_EQ(file, expected);
  EXPECT_EQ(hash, makeSlope(120)->contentHash());
}

TEST_F(ImageThreadsTest, TheHashIsComputedOnceHoweverManyAsk) {
  const auto image = makeSlope(200);
  const auto hashes = together([&] { return image->contentHash(); },
                               [&] { EXPECT_EQ(image->contentHash().size(), 64U); });
  for (const auto& hash : hashes) EXPECT_EQ(hash, image->contentHash());
}

TEST_F(ImageThreadsTest, AFileIsDecodedAndEncodedOnSeveralThreads) {
  const auto photo = UIImage::imageWithData(*UIImageJPEGRepresentation(makeSlope(150), 0.9));
  const auto convert = [photo] {
    return UIImageJPEGRepresentation(photo->imageByPreparingForDisplay(), 0.5);
  };
  const auto expected = convert();
  ASSERT_TRUE(expected);
  for (const auto& file : together(convert, [&] { EXPECT_EQ(convert(), expected); })) {
    EXPECT_EQ(file, expected);
  }
}

// A failed encoding, which leaves the library by a jump, must not affect another one.
TEST_F(ImageThreadsTest, AnEncodingThatEndsAtItsLimitDisturbsNoOther) {
  const auto image = makeSlope(150);
  const auto expected = UIImagePNGRepresentation(image);
  const auto outcomes = together([&] { return UIImagePNGRepresentation(image, 100).outcome; },
                                 [&] { EXPECT_EQ(UIImagePNGRepresentation(image), expected); });
  for (const auto outcome : outcomes) EXPECT_EQ(outcome, EncodingOutcome::aboveLimit);
}

}  // namespace
}  // namespace uikit_test

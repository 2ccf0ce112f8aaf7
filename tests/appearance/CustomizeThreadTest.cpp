#include <cerrno>
#include <fstream>
#include <functional>
#include <iterator>

#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/controllers/UIImagePickerController.h"
#include "tests/appearance/AppearanceFixture.h"
#include "tests/appearance/Pictures.h"
#include "tests/support/ShownWindow.h"
#include "tests/support/ThreadedTestProcess.h"

namespace zentrova::tests {
namespace {

using platform::UIImage;
using platform::UIImagePickerController;
using platform::Value;

// The shipped list.
void writeResource(test_support::TestProcess& process, const std::string& name) {
  const std::string file = "/" + name + ".plist";
  std::ifstream in(ZENTROVA_RESOURCES + file, std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(in), {});
  process.tree().write(std::string(bundleFolder) + file, text);
}

// The shipped customize page, with real threads in the background.
class CustomizeThreads : public testing::Test {
 protected:
  CustomizeThreads() {
    prepareAppearance(threads.base());
    writeResource(threads.base(), "Customize");
    page = platform::make<ZVRCustomizeListController>();
    navigation = platform::make(&platform::UINavigationController::initWithRootViewController,
                                std::shared_ptr<platform::UIViewController>(page));
    window = test_support::showInWindow(navigation);
  }

  // Like the user, except that an image may be stored already.
  std::shared_ptr<UIImagePickerController> choose(const std::shared_ptr<UIImage>& picture) {
    page->backgroundViewButtonPressed();
    if (const auto sheet = presented<platform::UIAlertController>()) sheet->userChoose(0);
    auto picker = presented<UIImagePickerController>();
    EXPECT_TRUE(picker && picker->userChoose(picture));
    return picker;
  }
  template <class T>
  std::shared_ptr<T> presented() {
    return std::dynamic_pointer_cast<T>(page->presentedViewController());
  }
  // The user's actions meanwhile: a switch, the rows, a look at the image.
  void usePage(int round) {
    page->setPreferenceValue(round % 2 == 0, page->specifierForID("insetStyle"));
    page->preferences()->objectForKey("backgroundImage");
    page->table()->reloadData();
    window->layoutIfNeeded();
  }
  // Uses the page until the condition holds. False if that takes far too long.
  bool usePageUntil(const std::function<bool()>& condition) {
    constexpr double patienceSeconds = 60;
    auto& scheduler = threads.scheduler();
    const double end = scheduler.now() + patienceSeconds;
    for (int round = 0; !condition() && scheduler.now() < end; ++round) {
      usePage(round);
      scheduler.runMain();
    }
    return condition();
  }
  std::size_t picturesStored() {
    std::size_t count = 0;
    for (const auto& entry : threads.base().log().entries()) {
      if (entry.message.starts_with("zentrova imagedata: ")) ++count;
    }
    return count;
  }
  static platform::Dictionary file() {
    return platform::dictionaryWithContentsOfFile(test_support::TestProcess::preferencePath)
        .value_or(platform::Dictionary());
  }

  test_support::ThreadedTestProcess threads;
  std::shared_ptr<ZVRCustomizeListController> page;
  std::shared_ptr<platform::UINavigationController> navigation;
  std::shared_ptr<platform::UIWindow> window;
};

// The main thread never blocks: it keeps running until the picker is dismissed.
TEST_F(CustomizeThreads, PageIsUsedWhileAPictureIsStored) {
  const auto picture = noisyPicture(400);
  choose(picture);
  ASSERT_TRUE(usePageUntil([&] { return !page->presentedViewController(); }));
  EXPECT_EQ(picturesStored(), 1U);
  EXPECT_EQ(file().valueForKey("backgroundImage"),
            Value(*platform::UIImagePNGRepresentation(picture)));
  EXPECT_EQ(file(), page->preferences()->dictRep()->snapshot());
  EXPECT_EQ(page->specifierForID("backgroundImageCell")->name(), "Change background image");
}

// In any order, the file is complete and equal to the memory.
TEST_F(CustomizeThreads, TwoPicturesOneRightAfterTheOtherLeaveOneOfThem) {
  const auto first = noisyPicture(300);
  const auto second = noisyPicture(200);
  choose(first)->userCancel();
  choose(second);
  ASSERT_TRUE(
      usePageUntil([&] { return picturesStored() == 2 && !page->presentedViewController(); }));
  const Value stored = file().valueForKey("backgroundImage");
  ASSERT_TRUE(stored.asData());
  EXPECT_TRUE(stored == Value(*platform::UIImagePNGRepresentation(first)) ||
              stored == Value(*platform::UIImagePNGRepresentation(second)));
}

// The background reads the page's store while the page gets another one.
TEST_F(CustomizeThreads, RowsAreBuiltAnewWhileAPictureIsStored) {
  choose(noisyPicture(300));
  ASSERT_TRUE(usePageUntil([&] {
    page->reloadSpecifiers();
    return !page->presentedViewController();
  }));
  EXPECT_EQ(picturesStored(), 1U);
}

// Only the background holds the page; it is still destroyed on the main thread.
TEST_F(CustomizeThreads, PageThatWasLeftEndsAfterItsPicture) {
  choose(noisyPicture(300));
  const std::weak_ptr<ZVRCustomizeListController> gone = page;
  page = nullptr;
  navigation = nullptr;
  window = nullptr;
  ASSERT_TRUE(threads.settles([&] { return gone.expired(); }));
  EXPECT_TRUE(file().valueForKey("backgroundImage").asData());
}

// The disk fills up in the background. The page keeps working, and the file is the old one.
TEST_F(CustomizeThreads, FullDiskLeavesTheFileWhole) {
  page->preferences()->setObject(1, "other");
  const auto before = threads.base().tree().read(test_support::TestProcess::preferencePath);
  threads.base().systemCalls().fail("writev", ENOSPC, test_support::FaultySystemCalls::always);
  choose(noisyPicture(300));
  ASSERT_TRUE(threads.settles([&] { return !page->presentedViewController(); }));
  threads.base().systemCalls().clear();
  EXPECT_EQ(threads.base().tree().read(test_support::TestProcess::preferencePath), before);
  EXPECT_TRUE(page->preferences()->objectForKey("backgroundImage").asData());
}

}  // namespace
}  // namespace zentrova::tests

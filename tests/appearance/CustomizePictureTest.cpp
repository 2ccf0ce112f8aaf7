#include <cerrno>

#include "platform/uikit/controllers/UIImagePickerController.h"
#include "platform/uikit/views/UIActivityIndicatorView.h"
#include "tests/appearance/CustomizeFixture.h"
#include "tests/appearance/ImageCodecStandIn.h"
#include "tests/appearance/Pictures.h"

namespace zentrova::tests {
namespace {

using platform::Data;
using platform::UIActivityIndicatorView;
using platform::UIImage;
using platform::UIImagePickerController;
using platform::UIView;
using platform::Value;

// A picture is chosen. The test controls the main thread, the background and the clock.
class CustomizePicture : public CustomizeTest {
 protected:
  std::shared_ptr<UIImagePickerController> openPicker() {
    page->backgroundViewButtonPressed();
    if (sheet()) sheet()->userChoose(0);
    auto picker = presented<UIImagePickerController>();
    EXPECT_TRUE(picker);
    process.scheduler().advance(1);
    return picker;
  }
  std::shared_ptr<UIImagePickerController> choose(const std::shared_ptr<UIImage>& picture) {
    auto picker = openPicker();
    EXPECT_TRUE(picker->userChoose(picture));
    return picker;
  }
  void finish() {
    process.scheduler().runAllBackground();
    process.scheduler().runMain();
  }
  static std::optional<Data> storedData() {
    const Value stored = inFile("backgroundImage");
    return stored.asData() ? std::optional(*stored.asData()) : std::nullopt;
  }
};

TEST_F(CustomizePicture, PickerIsDimmedAndBusyAtOnce) {
  showPage();
  const auto picker = choose(plainPicture(8, 8));
  const auto& view = picker->view();
  EXPECT_FALSE(view->isUserInteractionEnabled());
  ASSERT_GE(view->subviews().size(), 2U);
  const auto& dimming = view->subviews().back();
  const auto indicator = std::dynamic_pointer_cast<UIActivityIndicatorView>(
      view->subviews()[view->subviews().size() - 2]);
  ASSERT_TRUE(indicator) << "the dimming view is above the indicator";
  EXPECT_EQ(dimming->frame(), view->frame());
  EXPECT_EQ(dimming->backgroundColor()->components(), (platform::ColorComponents{0, 0, 0, 1}));
  EXPECT_EQ(dimming->alpha(), 0.5);
  EXPECT_EQ(indicator->alpha(), 1.0);
  EXPECT_EQ(indicator->style(), platform::UIActivityIndicatorViewStyle::large);
  EXPECT_EQ(static_cast<int>(indicator->style()), 101);
  EXPECT_TRUE(indicator->isAnimating());
  EXPECT_EQ(indicator->center(), view->center());
}

TEST_F(CustomizePicture, DimmingIsAnAnimation) {
  showPage();
  const auto picker = choose(plainPicture(8, 8));
  const auto& views = picker->view()->subviews();
  const auto animation = views.back()->lastAnimation();
  ASSERT_TRUE(animation);
  EXPECT_EQ(animation->duration, 0.3);
  EXPECT_EQ(views[views.size() - 2]->lastAnimation(), animation);
}

TEST_F(CustomizePicture, NothingIsStoredBeforeTheBackgroundRuns) {
  showPage();
  choose(plainPicture(8, 8));
  process.scheduler().advance(60);
  EXPECT_FALSE(process.tree().exists(preferences));
  EXPECT_EQ(process.scheduler().pendingBackground(), 1U);
  EXPECT_TRUE(presented<UIImagePickerController>());
}

// The background writes the store; the table and the picker are updated on the main queue.
TEST_F(CustomizePicture, BackgroundStoresAndTheMainQueueShows) {
  showPage();
  const auto picker = choose(plainPicture(8, 8));
  process.scheduler().runAllBackground();
  ASSERT_TRUE(storedData());
  EXPECT_TRUE(isPng(*storedData()));
  EXPECT_EQ(buttonTitle(), "Change background image");
  EXPECT_EQ(thumbnail(), nullptr);
  EXPECT_EQ(presented<UIImagePickerController>(), picker);

  process.scheduler().runMain();
  ASSERT_TRUE(thumbnail());
  EXPECT_EQ(thumbnail()->image()->pixelWidth(), 8U);
  EXPECT_EQ(shownButtonTitle(), "Change background image");
  EXPECT_EQ(page->presentedViewController(), nullptr);
}

// Records at each reload whether another page was presented.
class WatchedCustomizePage : public ZVRCustomizeListController {
 public:
  std::int64_t numberOfSectionsInTableView(
      const std::shared_ptr<platform::UITableView>& tableView) override {
    coveredAtReloads.push_back(presentedViewController() != nullptr);
    return ZVRCustomizeListController::numberOfSectionsInTableView(tableView);
  }
  std::vector<bool> coveredAtReloads;
};

// The picker is dismissed after the page shows the new image.
TEST_F(CustomizePicture, TableIsReloadedBeforeThePickerGoes) {
  writeList("Customize", allRows());
  const auto watched = show(platform::make<WatchedCustomizePage>());
  page = watched;
  choose(plainPicture(8, 8));
  process.scheduler().runAllBackground();
  watched->coveredAtReloads.clear();
  process.scheduler().runMain();
  EXPECT_EQ(watched->coveredAtReloads, std::vector<bool>{true});
  EXPECT_EQ(page->presentedViewController(), nullptr);
}

// The main thread never reads the pixels.
TEST_F(CustomizePicture, PictureIsDecodedInTheBackground) {
  const auto whole = platform::UIImagePNGRepresentation(noisyPicture(64));
  std::vector<std::uint8_t> bytes(whole->bytes().begin(), whole->bytes().end());
  bytes[bytes.size() / 2] ^= 1U;
  writePreferences({{"backgroundImage", smallPicture()}});
  showPage();
  choose(UIImage::imageWithData(Data(bytes)));
  EXPECT_EQ(logLines(), std::vector<std::string>());
  finish();
  ASSERT_EQ(logLines().size(), 2U);
  EXPECT_EQ(logLines()[0].find("An image cannot be decoded: The PNG cannot be read"), 0U);
  EXPECT_EQ(logLines()[1], "zentrova imagedata: 0");
  EXPECT_EQ(storedData(), smallPicture());
  EXPECT_EQ(page->presentedViewController(), nullptr);
}

TEST_F(CustomizePicture, LengthIsLogged) {
  showPage();
  choose(plainPicture(8, 8));
  finish();
  const std::string line = "zentrova imagedata: " + std::to_string(storedData()->size());
  EXPECT_EQ(logLines(), std::vector<std::string>{line});
}

TEST_F(CustomizePicture, OneOfFiveMegabytesIsStoredAsJpeg) {
  const auto codecs = std::make_shared<ImageCodecStandIn>();
  codecs->pngSize = 5UL * 1024 * 1024;
  codecs->jpegSizes = {3000};
  process.process().provide<platform::ImageCodecs>(codecs);
  showPage();
  choose(plainPicture(8, 8));
  finish();
  EXPECT_EQ(storedData(), Data(std::string(3000, 'J')));
  ASSERT_EQ(codecs->qualities().size(), 1U);
  EXPECT_NEAR(codecs->qualities()[0], 0.8, 1e-6);
  EXPECT_EQ(logLines(), std::vector<std::string>{"zentrova imagedata: 3000"});
}

TEST_F(CustomizePicture, AnotherPictureTakesThePlaceOfTheFirst) {
  showPage();
  choose(plainPicture(8, 8));
  finish();
  choose(plainPicture(5, 5));
  finish();
  EXPECT_EQ(thumbnail()->image()->pixelWidth(), 5U);
  EXPECT_EQ(UIImage::imageWithData(*storedData())->pixelWidth(), 5U);
}

// The stored image is kept, and the picker is dismissed.
TEST_F(CustomizePicture, PictureThatCannotBeEncodedLeavesWhatIsStored) {
  writePreferences({{"backgroundImage", smallPicture()}});
  showPage();
  const auto picker = openPicker();
  const auto symbol = UIImage::systemImageNamed("safari");
  EXPECT_TRUE(picker->userChoose(symbol));
  finish();
  EXPECT_EQ(storedData(), smallPicture());
  EXPECT_EQ(shownButtonTitle(), "Change background image");
  EXPECT_EQ(page->presentedViewController(), nullptr);
  EXPECT_EQ(logLines().back(), "zentrova imagedata: 0");
}

TEST_F(CustomizePicture, InfoWithoutAPictureStoresNothing) {
  showPage();
  const auto picker = openPicker();
  for (const platform::Dictionary& info :
       {platform::Dictionary(),
        platform::Dictionary{{"UIImagePickerControllerOriginalImage", "text"}}}) {
    page->didFinishPickingMediaWithInfo(picker, info);
    finish();
  }
  EXPECT_FALSE(process.tree().exists(preferences));
  EXPECT_EQ(buttonTitle(), "backgroundImageCell");
}

TEST_F(CustomizePicture, ChoiceWithoutAPickerIsStored) {
  showPage();
  page->perform("imagePickerController:didFinishPickingMediaWithInfo:",
                {nullptr, platform::Dictionary{{"UIImagePickerControllerOriginalImage",
                                                Value(plainPicture(8, 8))}}});
  finish();
  EXPECT_TRUE(storedData());
}

TEST_F(CustomizePicture, CancellingStoresNothing) {
  showPage();
  EXPECT_TRUE(openPicker()->userCancel());
  finish();
  EXPECT_EQ(page->presentedViewController(), nullptr);
  EXPECT_FALSE(process.tree().exists(preferences));
  EXPECT_EQ(process.scheduler().pendingBackground(), 0U);
}

// The chosen picture is stored even if the picker is closed meanwhile.
TEST_F(CustomizePicture, PickerClosedInTheMiddleStoresThePicture) {
  showPage();
  const auto picker = choose(plainPicture(8, 8));
  EXPECT_TRUE(picker->userCancel());
  process.scheduler().advance(1);
  finish();
  EXPECT_TRUE(storedData());
  EXPECT_TRUE(thumbnail());
  EXPECT_EQ(page->presentedViewController(), nullptr);
}

// A page that is presented meanwhile is not dismissed.
TEST_F(CustomizePicture, SheetOpenedMeanwhileStays) {
  writePreferences({{"backgroundImage", smallPicture()}});
  showPage();
  const auto picker = choose(plainPicture(8, 8));
  picker->userCancel();
  page->backgroundViewButtonPressed();
  ASSERT_TRUE(sheet());
  finish();
  EXPECT_TRUE(sheet());
}

TEST_F(CustomizePicture, BusyPickerTakesNoSecondChoice) {
  showPage();
  const auto picker = choose(plainPicture(8, 8));
  EXPECT_FALSE(picker->userChoose(plainPicture(5, 5)));
  EXPECT_EQ(process.scheduler().pendingBackground(), 1U);
}

// Two pictures in quick succession: the one stored last stays.
TEST_F(CustomizePicture, TwoPicturesAtOnceLeaveOneOfThem) {
  showPage();
  const auto first = choose(plainPicture(8, 8));
  first->userCancel();
  process.scheduler().advance(1);
  choose(plainPicture(5, 5));
  EXPECT_EQ(process.scheduler().pendingBackground(), 2U);
  finish();
  EXPECT_EQ(UIImage::imageWithData(*storedData())->pixelWidth(), 5U);
  EXPECT_EQ(thumbnail()->image()->pixelWidth(), 5U);
  EXPECT_EQ(page->presentedViewController(), nullptr);
}

TEST_F(CustomizePicture, PageThatWasLeftStillStoresThePicture) {
  showPage();
  choose(plainPicture(8, 8));
  const std::weak_ptr<ZVRCustomizeListController> gone = page;
  page = nullptr;
  navigation = nullptr;
  window = nullptr;
  EXPECT_FALSE(gone.expired());
  finish();
  EXPECT_TRUE(storedData());
  process.scheduler().advance(5);
  EXPECT_TRUE(gone.expired());
}

// The old file is unchanged; the picture is in memory, and the next successful write stores it.
TEST_F(CustomizePicture, FullDiskLeavesTheFileAndThePageGoesOn) {
  writePreferences({{"other", 1}});
  showPage();
  const std::string before = *process.tree().read(preferences);
  for (const char* call : {"writev", "fdatasync", "renameat"}) {
    process.systemCalls().fail(call, ENOSPC, test_support::FaultySystemCalls::always);
    choose(plainPicture(8, 8));
    finish();
    process.systemCalls().clear();
    EXPECT_EQ(process.tree().read(preferences), before) << call;
    EXPECT_EQ(page->presentedViewController(), nullptr) << call;
    EXPECT_TRUE(thumbnail()) << call;
  }
  page->setPreferenceValue(true, page->specifierForID("insetStyle"));
  EXPECT_TRUE(storedData());
  EXPECT_EQ(inFile("other"), Value(1));
}

// The store was loaded with the rows: a colour picked since is lost.
TEST_F(CustomizePicture, StoringLosesAColorPickedSince) {
  writePreferences({{"other", 1}});
  showPage();
  writePreferences({{"other", 1}, {"glyph", "FF0000FF"}});
  choose(plainPicture(8, 8));
  finish();
  EXPECT_TRUE(inFile("glyph").isNone());
  EXPECT_EQ(inFile("other"), Value(1));
}

// A row that changes while the picture is encoded is not lost: both use one store.
TEST_F(CustomizePicture, RowChangedMeanwhileIsKept) {
  showPage();
  choose(plainPicture(8, 8));
  page->setPreferenceValue(true, page->specifierForID("insetStyle"));
  finish();
  EXPECT_EQ(inFile("insetStyle"), Value(true));
  EXPECT_TRUE(storedData());
}

TEST_F(CustomizePicture, RowsBuiltAnewMeanwhileHaveTheirOwnStore) {
  showPage();
  choose(plainPicture(8, 8));
  page->reloadSpecifiers();
  finish();
  EXPECT_TRUE(page->preferences()->objectForKey("backgroundImage"));
  EXPECT_EQ(shownButtonTitle(), "Change background image");
}

TEST_F(CustomizePicture, ListWithoutItsRowsStoresThePicture) {
  showPage({plainRow("PSGroupCell", "group")});
  choose(plainPicture(8, 8));
  finish();
  EXPECT_TRUE(storedData());
}

}  // namespace
}  // namespace zentrova::tests

#include "platform/uikit/controllers/UIImagePickerController.h"
#include "tests/appearance/CustomizeFixture.h"
#include "tests/appearance/Pictures.h"

namespace zentrova::tests {
namespace {

using platform::Data;
using platform::UIAlertActionStyle;
using platform::UIImage;
using platform::UIImagePickerController;
using platform::Value;

class CustomizeThumbnail : public CustomizeTest {};

TEST_F(CustomizeThumbnail, StoredImageIsTheRowsAccessory) {
  writePreferences({{"backgroundImage", smallPicture()}});
  showPage();
  const auto view = thumbnail();
  ASSERT_TRUE(view);
  ASSERT_TRUE(view->image());
  EXPECT_EQ(view->image()->pixelWidth(), 2U);
  EXPECT_EQ(view->layer()->cornerRadius(), 5.0);
  EXPECT_TRUE(view->clipsToBounds());
}

// A square, slightly lower than the row.
TEST_F(CustomizeThumbnail, SizeFollowsTheCellsHeight) {
  writePreferences({{"backgroundImage", smallPicture()}});
  showPage();
  EXPECT_EQ(thumbnail()->frame().size(), (platform::Size{41, 41}));
  const auto cell = cellOf(*page, "backgroundImageTextCell");
  cell->setFrame({0, 0, 320, 83});
  page->cellForRowAtIndexPath(page->table(), {0, 0});
  EXPECT_EQ(cell->accessoryView()->frame().size(), (platform::Size{80, 80}));
}

TEST_F(CustomizeThumbnail, WithoutAnImageThereIsNoAccessory) {
  showPage();
  EXPECT_EQ(cellOf(*page, "backgroundImageTextCell")->accessoryView(), nullptr);
}

TEST_F(CustomizeThumbnail, OtherRowsAreLeftAsTheyAre) {
  writePreferences({{"backgroundImage", smallPicture()}});
  showPage();
  EXPECT_EQ(cellOf(*page, "backgroundImageCell")->accessoryView(), nullptr);
}

// The accessory exists and is empty.
TEST_F(CustomizeThumbnail, DataThatDoesNotDecodeShowsNothing) {
  const auto whole = smallPicture();
  const std::string start(whole.bytes().begin(), whole.bytes().begin() + 12);
  for (const std::string& bytes : {std::string("no image"), start}) {
    writePreferences({{"backgroundImage", Data(bytes)}});
    showPage();
    ASSERT_TRUE(thumbnail());
    EXPECT_EQ(thumbnail()->image(), nullptr);
  }
}

TEST_F(CustomizeThumbnail, ValueThatIsNoDataShowsNothing) {
  for (const Value& value : {Value("text"), Value(1), Value(platform::Array{smallPicture()})}) {
    writePreferences({{"backgroundImage", value}});
    showPage();
    ASSERT_TRUE(thumbnail()) << value.description();
    EXPECT_EQ(thumbnail()->image(), nullptr);
  }
}

class CustomizeSheet : public CustomizeTest {
 protected:
  void showPageWithImage() {
    writePreferences({{"backgroundImage", smallPicture()}, {"other", 1}});
    showPage();
  }
};

TEST_F(CustomizeSheet, WithoutAnImageThePickerOpensAtOnce) {
  showPage();
  tap(*page, "backgroundImageCell");
  EXPECT_FALSE(sheet());
  const auto picker = presented<UIImagePickerController>();
  ASSERT_TRUE(picker);
  EXPECT_EQ(picker->sourceType(), platform::UIImagePickerControllerSourceType::photoLibrary);
  EXPECT_EQ(picker->delegate(), page);
}

TEST_F(CustomizeSheet, WithAnImageItAsks) {
  showPageWithImage();
  tap(*page, "backgroundImageCell");
  ASSERT_TRUE(sheet());
  EXPECT_EQ(sheet()->preferredStyle(), platform::UIAlertControllerStyle::actionSheet);
  EXPECT_EQ(sheet()->title(), "What would you like to do?");
  EXPECT_EQ(sheet()->message(), "Clearing the image will return to stock look.");
  const auto& actions = sheet()->actions();
  ASSERT_EQ(actions.size(), 3U);
  EXPECT_EQ(actions[0]->title(), "Change image");
  EXPECT_EQ(actions[0]->style(), UIAlertActionStyle::standard);
  EXPECT_EQ(actions[1]->title(), "Clear image");
  EXPECT_EQ(actions[1]->style(), UIAlertActionStyle::standard);
  EXPECT_EQ(actions[2]->title(), "Cancel");
  EXPECT_EQ(actions[2]->style(), UIAlertActionStyle::cancel);
}

TEST_F(CustomizeSheet, ChangeOpensThePicker) {
  showPageWithImage();
  page->backgroundViewButtonPressed();
  EXPECT_TRUE(sheet()->userChoose(0));
  EXPECT_TRUE(presented<UIImagePickerController>());
  EXPECT_EQ(inFile("backgroundImage"), Value(smallPicture()));
}

TEST_F(CustomizeSheet, ClearRemovesTheImageItsTitleAndItsThumbnail) {
  showPageWithImage();
  ASSERT_TRUE(thumbnail());
  page->backgroundViewButtonPressed();
  EXPECT_TRUE(sheet()->userChoose(1));
  EXPECT_TRUE(inFile("backgroundImage").isNone());
  EXPECT_EQ(inFile("other"), Value(1));
  EXPECT_EQ(shownButtonTitle(), "Set background image");
  EXPECT_EQ(thumbnail(), nullptr);
  EXPECT_EQ(page->presentedViewController(), nullptr);
}

// Records the title of the button at each reload.
class RetitledCustomizePage : public ZVRCustomizeListController {
 public:
  std::int64_t numberOfSectionsInTableView(
      const std::shared_ptr<platform::UITableView>& tableView) override {
    const auto button = specifierForID("backgroundImageCell");
    titlesAtReloads.push_back(button ? button->name().value_or("") : "");
    return ZVRCustomizeListController::numberOfSectionsInTableView(tableView);
  }
  std::vector<std::string> titlesAtReloads;
};

TEST_F(CustomizeSheet, ClearRetitlesTheButtonBeforeTheTableIsReloaded) {
  writePreferences({{"backgroundImage", smallPicture()}});
  writeList("Customize", allRows());
  const auto retitled = show(platform::make<RetitledCustomizePage>());
  page = retitled;
  page->backgroundViewButtonPressed();
  retitled->titlesAtReloads.clear();
  sheet()->userChoose(1);
  EXPECT_EQ(retitled->titlesAtReloads, std::vector<std::string>{"Set background image"});
}

TEST_F(CustomizeSheet, CancelChangesNothing) {
  showPageWithImage();
  page->backgroundViewButtonPressed();
  EXPECT_TRUE(sheet()->userCancel());
  EXPECT_EQ(page->presentedViewController(), nullptr);
  EXPECT_EQ(inFile("backgroundImage"), Value(smallPicture()));
  EXPECT_EQ(shownButtonTitle(), "Change background image");
}

TEST_F(CustomizeSheet, AfterClearingThePickerOpensAtOnce) {
  showPageWithImage();
  page->backgroundViewButtonPressed();
  sheet()->userChoose(1);
  page->backgroundViewButtonPressed();
  EXPECT_TRUE(presented<UIImagePickerController>());
}

// The store was loaded with the rows: the page's write loses a colour picked since.
TEST_F(CustomizeSheet, ClearingLosesAColorPickedSince) {
  showPageWithImage();
  writePreferences({{"backgroundImage", smallPicture()}, {"other", 1}, {"glyph", "FF0000FF"}});
  page->backgroundViewButtonPressed();
  sheet()->userChoose(1);
  EXPECT_TRUE(inFile("glyph").isNone());
  EXPECT_EQ(inFile("other"), Value(1));
}

TEST_F(CustomizeSheet, PageThatIsGoneIsNotKeptByTheSheet) {
  showPageWithImage();
  page->backgroundViewButtonPressed();
  const auto asked = sheet();
  const std::weak_ptr<ZVRCustomizeListController> gone = page;
  page->dismissViewControllerAnimated(false);
  process.scheduler().advance(1);
  page = nullptr;
  navigation = nullptr;
  window = nullptr;
  EXPECT_TRUE(gone.expired());
  asked->actions()[0]->run();
  asked->actions()[1]->run();
  EXPECT_EQ(inFile("backgroundImage"), Value(smallPicture()));
}

}  // namespace
}  // namespace zentrova::tests

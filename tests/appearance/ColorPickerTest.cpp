#include <cerrno>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/NSNotificationCenter.h"
#include "tests/appearance/ColorCellFixture.h"

namespace zentrova::tests {
namespace {

using platform::ColorComponents;
using platform::Dictionary;
using platform::UIColor;
using platform::UIColorPickerViewController;
using platform::Value;

// The picker that a tap on a colour row opens.
class ColorPicker : public ColorCellTest {
 protected:
  std::shared_ptr<UIColorPickerViewController> picker() {
    return std::dynamic_pointer_cast<UIColorPickerViewController>(page->presentedViewController());
  }
  std::shared_ptr<UIColorPickerViewController> open(const std::string& identifier = "first") {
    tap(*page, identifier);
    EXPECT_TRUE(picker());
    return picker();
  }
  // The colour that the picker starts at for a stored value.
  std::shared_ptr<UIColor> startColor(const Value& stored) {
    writePreferences({{"first", stored}});
    showRows("pink");
    return open()->selectedColor();
  }
};

TEST_F(ColorPicker, TapOpensIt) {
  showRows();
  const auto opened = open();
  EXPECT_EQ(opened->delegate(), cell());
  EXPECT_EQ(opened->view()->ownTintColor(), cell()->tintColour());
  EXPECT_FALSE(opened->supportsAlpha());
  EXPECT_FALSE(process.tree().exists(preferences));
}

// Records how it was presented.
class AppearingPicker : public UIColorPickerViewController {
  PLATFORM_CLASS(UIColorPickerViewController)

 public:
  void viewWillAppear(bool animated) override { animations.push_back(animated); }
  std::vector<bool> animations;
};

// The class is looked up by name.
TEST_F(ColorPicker, IsFoundByNameAndSlidesIn) {
  process.classes().remove("UIColorPickerViewController");
  process.classes().add(platform::ClassBuilder<AppearingPicker>("UIViewController").build());
  showRows();
  const auto opened = std::dynamic_pointer_cast<AppearingPicker>(open());
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened->animations, std::vector<bool>{true});
}

TEST_F(ColorPicker, StartsAtTheStoredColor) {
  EXPECT_EQ(startColor("FA0000FF")->components(),
            (ColorComponents{static_cast<double>(250.0F / 255.0F), 0, 0, 1}));
  EXPECT_EQ(startColor("default")->systemName(), "labelColor");
}

TEST_F(ColorPicker, StartsAtBlackWithoutAStoredColor) {
  EXPECT_EQ(startColor(nullptr)->components(), (ColorComponents{0, 0, 0, 1}));
}

// The text before the colon does not matter.
TEST_F(ColorPicker, StartsAtBlackWhereTheValueHasASuffix) {
  for (const char* text : {resetValue, "FF0000FF:1.0", ":", "red:"}) {
    EXPECT_EQ(startColor(text)->components(), (ColorComponents{0, 0, 0, 1})) << text;
  }
}

TEST_F(ColorPicker, StartsAtBlackWhereTheValueIsNoText) {
  for (const Value& value : {Value(5), Value(platform::Data("x")), Value(platform::Array{})}) {
    EXPECT_EQ(startColor(value)->components(), (ColorComponents{0, 0, 0, 1}));
  }
}

TEST_F(ColorPicker, ReadsTheFileAnewEachTime) {
  showRows();
  open()->userClose();
  writePreferences({{"first", "0000FFFF"}});
  EXPECT_EQ(open()->selectedColor()->components(), blue);
}

TEST_F(ColorPicker, EachChoiceIsWrittenAndShown) {
  showRows();
  const auto opened = open();
  EXPECT_TRUE(opened->userPick({1, 0, 0, 1}));
  EXPECT_EQ(inFile("first"), Value("FF0000FF"));
  EXPECT_EQ(shownComponents(), red);
  EXPECT_TRUE(opened->userPick({0, 0.5, 1, 1}));
  EXPECT_EQ(inFile("first"), Value("0080FFFF"));
  EXPECT_EQ(picker(), opened);
}

TEST_F(ColorPicker, ClosingWritesOnceMore) {
  showRows();
  const auto opened = open();
  opened->userPick({1, 0, 0, 1});
  writePreferences({{"other", 1}});
  EXPECT_TRUE(opened->userClose());
  EXPECT_EQ(inFile("first"), Value("FF0000FF"));
  EXPECT_EQ(inFile("other"), Value(1));
  EXPECT_EQ(shownComponents(), red);
  EXPECT_FALSE(picker());
}

TEST_F(ColorPicker, ClosingWithoutAChoiceWritesTheColorThatItStartedAt) {
  showRows();
  open()->userClose();
  EXPECT_EQ(inFile("first"), Value("000000FF"));
  EXPECT_EQ(shownComponents(), (ColorComponents{0, 0, 0, 1}));

  writePreferences({{"first", "0000FFFF"}});
  open()->userClose();
  EXPECT_EQ(inFile("first"), Value("0000FFFF"));
}

// A named colour becomes the one that it currently resolves to.
TEST_F(ColorPicker, ClosingWritesANamedColorAsItIsShown) {
  writePreferences({{"first", "default"}});
  process.traits().appearance = platform::UserInterfaceStyle::dark;
  showRows();
  open()->userClose();
  EXPECT_EQ(inFile("first"), Value("FFFFFFFF"));
}

// Neither a choice nor a reset posts a notification, even if the row names one.
TEST_F(ColorPicker, NoNotificationFollowsAWrite) {
  writeList("GlobalColors", {Dictionary{{"cell", "PSButtonCell"},
                                        {"cellClass", "HBColorPickerTableCell"},
                                        {"id", "first"},
                                        {"key", "first"},
                                        {"PostNotification", "com.example.changed"}}});
  page = show(platform::make(&ZVRCustomizeColorListViewController::initWithStyle, 0));
  std::vector<std::string> posted;
  auto& center = platform::NSNotificationCenter::defaultCenter();
  const auto token = center.addObserverForName(
      std::nullopt, nullptr,
      [&](const platform::NSNotification& each) { posted.push_back(each.name); });
  open()->userPick({1, 0, 0, 1});
  picker()->userClose();
  press(*page, "first", 1.0);
  center.removeObserver(token);
  EXPECT_EQ(inFile("first"), Value(resetValue));
  EXPECT_EQ(posted, std::vector<std::string>());
}

TEST_F(ColorPicker, AlphaIsAlwaysWhole) {
  writePreferences({{"first", "FF000080"}});
  showRows();
  const auto opened = open();
  opened->userPick({0, 1, 0, 0.25});
  EXPECT_EQ(inFile("first"), Value("00FF00FF"));
  opened->userClose();
  EXPECT_EQ(inFile("first"), Value("00FF00FF"));
}

TEST_F(ColorPicker, FirstChoiceMakesTheFile) {
  showRows();
  open()->userPick({1, 0, 0, 1});
  EXPECT_EQ(platform::dictionaryWithContentsOfFile(preferences),
            (Dictionary{{"first", "FF0000FF"}}));
}

TEST_F(ColorPicker, FileThatCannotBeReadIsBegunAnew) {
  process.tree().write(preferences, "<plist><dict><key>a</key>");
  showRows();
  open()->userPick({1, 0, 0, 1});
  EXPECT_EQ(platform::dictionaryWithContentsOfFile(preferences),
            (Dictionary{{"first", "FF0000FF"}}));
}

TEST_F(ColorPicker, OtherEntriesAreKept) {
  writePreferences({{"second", "00FF00FF"}, {"backgroundImage", platform::Data("image")}});
  showRows();
  open()->userPick({1, 0, 0, 1});
  EXPECT_EQ(platform::dictionaryWithContentsOfFile(preferences),
            (Dictionary{{"first", "FF0000FF"},
                        {"second", "00FF00FF"},
                        {"backgroundImage", platform::Data("image")}}));
}

// The cell reads the file, not the value that it has just tried to write.
TEST_F(ColorPicker, FailedWriteLeavesFileAndSwatch) {
  writePreferences({{"first", "0000FFFF"}});
  showRows();
  const std::string before = *process.tree().read(preferences);
  for (const char* call : {"writev", "fdatasync", "renameat"}) {
    const auto opened = open();
    process.systemCalls().fail(call, ENOSPC);
    opened->userPick({1, 0, 0, 1});
    process.systemCalls().clear();
    EXPECT_EQ(process.tree().read(preferences), before) << call;
    EXPECT_EQ(shownComponents(), blue) << call;
    page->dismissViewControllerAnimated(false);
  }
}

// The picker exists from 14.0 on.
TEST_F(ColorPicker, OlderSystemsOpenNothing) {
  process.traits().systemVersion = {13, 7, 0};
  showRows();
  tap(*page, "first");
  EXPECT_EQ(page->presentedViewController(), nullptr);
  EXPECT_FALSE(process.tree().exists(preferences));
  process.traits().systemVersion = {14, 0, 0};
  tap(*page, "first");
  EXPECT_TRUE(picker());
}

TEST_F(ColorPicker, SystemWithoutTheClassOpensNothing) {
  process.classes().remove("UIColorPickerViewController");
  showRows();
  tap(*page, "first");
  EXPECT_EQ(page->presentedViewController(), nullptr);
}

TEST_F(ColorPicker, CellOutsideOfAPageOpensNothing) {
  const auto alone = std::make_shared<HBColorPickerTableCell>();
  alone->initWithStyle(platform::UITableViewCellStyle::standard, std::nullopt, nullptr);
  alone->openColorPicker();
  EXPECT_EQ(alone->viewControllerForAncestor(), nullptr);
}

// Two rows do not lose each other's changes: the cells read the file before they write it.
TEST_F(ColorPicker, TwoRowsKeepEachOthersColors) {
  showRows();
  open("first")->userPick({1, 0, 0, 1});
  picker()->userClose();
  open("second")->userPick({0, 1, 0, 1});
  EXPECT_EQ(inFile("first"), Value("FF0000FF"));
  EXPECT_EQ(inFile("second"), Value("00FF00FF"));
}

// The page's store is older than the colour, and the reset rewrites the file from it.
TEST_F(ColorPicker, ColorPickedOnThePageIsLostByTheResetOfAnotherRow) {
  writePreferences({{"other", 1}});
  showRows();
  open("first")->userPick({1, 0, 0, 1});
  picker()->userClose();
  ASSERT_EQ(inFile("first"), Value("FF0000FF"));
  press(*page, "second", 1.0);
  EXPECT_TRUE(inFile("first").isNone());
  EXPECT_EQ(inFile("second"), Value(resetValue));
  EXPECT_EQ(inFile("other"), Value(1));
  // The row still shows the colour until it is refreshed.
  EXPECT_EQ(shownComponents("first"), red);
  cell("first")->_updateValue();
  EXPECT_EQ(shownComponents("first"), green);
}

// In the other order nothing is lost: the cell reads the file that the reset has written.
TEST_F(ColorPicker, ResetIsKeptByAColorPickedLater) {
  showRows();
  press(*page, "second", 1.0);
  open("first")->userPick({1, 0, 0, 1});
  EXPECT_EQ(inFile("first"), Value("FF0000FF"));
  EXPECT_EQ(inFile("second"), Value(resetValue));
}

TEST_F(ColorPicker, ResetRowOpensAtBlackAndIsWrittenAgain) {
  writePreferences({{"first", "FF0000FF"}});
  showRows();
  press(*page, "first", 1.0);
  EXPECT_EQ(open()->selectedColor()->components(), (ColorComponents{0, 0, 0, 1}));
  picker()->userPick({0, 0, 1, 1});
  EXPECT_EQ(shownComponents(), blue);
}

TEST_F(ColorPicker, RowWithoutAKeyRaisesAtTheChoice) {
  writeList("GlobalColors", {Dictionary{{"cell", "PSButtonCell"},
                                        {"cellClass", "HBColorPickerTableCell"},
                                        {"id", "keyless"}}});
  page = show(platform::make(&ZVRCustomizeColorListViewController::initWithStyle, 0));
  const auto opened = open("keyless");
  EXPECT_THROW(opened->userPick({1, 0, 0, 1}), platform::Exception);
  EXPECT_FALSE(process.tree().exists(preferences));
}

TEST_F(ColorPicker, PageAndCellsAreNotKeptByAnOpenPicker) {
  showRows();
  open();
  const std::weak_ptr<HBColorPickerTableCell> gone = cell();
  const auto left = picker();
  left->dismissViewControllerAnimated(false);
  page = nullptr;
  navigation = nullptr;
  window = nullptr;
  process.scheduler().advance(5);
  EXPECT_TRUE(gone.expired());
  EXPECT_EQ(left->delegate(), nullptr);
}

}  // namespace
}  // namespace zentrova::tests

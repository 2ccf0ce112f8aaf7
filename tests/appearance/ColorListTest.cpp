#include "platform/foundation/objects/ClassBuilder.h"
#include "tests/appearance/ColorCellFixture.h"

namespace zentrova::tests {
namespace {

using platform::Dictionary;
using platform::Value;

class ColorList : public ColorCellTest {
 protected:
  void writeAllLists() {
    writeList("GlobalColors", {colorRow("global", "red")}, "Global");
    writeList("LightColors", {colorRow("light", "red")}, "Light");
    writeList("DarkColors", {colorRow("dark", "red")}, "Dark");
  }
  static std::shared_ptr<ZVRCustomizeColorListViewController> makePage(std::int64_t style) {
    return platform::make(&ZVRCustomizeColorListViewController::initWithStyle, style);
  }
};

TEST_F(ColorList, StyleChoosesTheList) {
  writeAllLists();
  const std::vector<std::pair<std::string, std::string>> lists{
      {"global", "Global"}, {"light", "Light"}, {"dark", "Dark"}};
  for (std::int64_t style = 0; style < 3; ++style) {
    const auto made = makePage(style);
    EXPECT_EQ(made->style(), style);
    const auto& [key, title] = lists[static_cast<std::size_t>(style)];
    ASSERT_EQ(made->specifiers()->size(), 1U);
    EXPECT_EQ(made->specifiers()->front()->identifier(), key);
    EXPECT_EQ(made->title(), title);
  }
}

TEST_F(ColorList, AnyOtherStyleLoadsNothing) {
  writeAllLists();
  for (const std::int64_t style : {std::int64_t{-1}, std::int64_t{3}, std::int64_t{1} << 40}) {
    const auto made = makePage(style);
    EXPECT_EQ(made->specifiers(), nullptr) << style;
    EXPECT_FALSE(made->problem()) << style;
    EXPECT_EQ(show(made)->table()->numberOfSections(), 0) << style;
  }
}

TEST_F(ColorList, RowsAreKept) {
  writeAllLists();
  const auto made = makePage(0);
  const auto rows = made->specifiers();
  made->setStyle(1);
  EXPECT_EQ(made->specifiers(), rows);
}

TEST_F(ColorList, StyleIsAPropertyByName) {
  writeAllLists();
  const auto made = process.classes()
                        .find("ZVRCustomizeColorListViewController")
                        ->allocateAs<ZVRCustomizeColorListViewController>();
  EXPECT_EQ(made->perform("initWithStyle:", {2}), Value(true));
  EXPECT_EQ(made->perform("style"), Value(2));
  made->perform("setStyle:", {1});
  EXPECT_EQ(made->specifiers()->front()->identifier(), "light");
}

// The store is loaded with the view: it has earlier writes, but not later ones.
TEST_F(ColorList, StoreIsMadeWhenTheViewIsLoaded) {
  writeAllLists();
  const auto made = makePage(0);
  const auto first = made->preferences();
  writePreferences({{"other", 1}});
  show(made);
  EXPECT_NE(made->preferences(), first);
  EXPECT_EQ(made->preferences()->objectForKey("other"), Value(1));
}

TEST_F(ColorList, TitlesAreLargeAlways) {
  writeAllLists();
  const auto made = show(makePage(0));
  EXPECT_EQ(made->navigationItem()->largeTitleDisplayMode(),
            platform::UINavigationItemLargeTitleDisplayMode::always);
  EXPECT_TRUE(navigation->navigationBar()->prefersLargeTitles());
}

TEST_F(ColorList, LongPressTakesOneSecondAndTheTouch) {
  writeAllLists();
  const auto made = show(makePage(0));
  ASSERT_EQ(made->table()->gestureRecognizers().size(), 1U);
  const auto press = std::dynamic_pointer_cast<platform::UILongPressGestureRecognizer>(
      made->table()->gestureRecognizers()[0]);
  ASSERT_TRUE(press);
  EXPECT_EQ(press->minimumPressDuration(), 1.0);
  EXPECT_TRUE(press->cancelsTouchesInView());
}

class ColorReset : public ColorCellTest {};

TEST_F(ColorReset, PressOfOneSecondWritesTheResetValueAndClearsTheSwatch) {
  writePreferences({{"first", "FF0000FF"}, {"other", 1}});
  showRows();
  press(*page, "first", 1.0);
  EXPECT_EQ(inFile("first"), Value("#FA0000:0.0"));
  EXPECT_EQ(inFile("other"), Value(1));
  EXPECT_EQ(shownComponents().alpha, 0.0);
  EXPECT_EQ(shownComponents("second"), blue);
}

// At once, while the finger is still down.
TEST_F(ColorReset, ResetDoesNotWaitForTheFinger) {
  showRows();
  touch(*page, "first");
  process.scheduler().advance(0.999);
  EXPECT_TRUE(inFile("first").isNone());
  process.scheduler().advance(0.001);
  EXPECT_EQ(inFile("first"), Value(resetValue));
  EXPECT_EQ(shownComponents().alpha, 0.0);
}

TEST_F(ColorReset, ShorterPressDoesNothing) {
  showRows();
  press(*page, "first", 0.99);
  process.scheduler().advance(5);
  EXPECT_TRUE(inFile("first").isNone());
  EXPECT_FALSE(finger(*page).hasRecognized());
  EXPECT_EQ(shownComponents(), green);
}

TEST_F(ColorReset, PressActsOnce) {
  showRows();
  touch(*page, "first");
  process.scheduler().advance(1.0);
  ASSERT_EQ(inFile("first"), Value(resetValue));
  writePreferences({{"first", "FF0000FF"}});
  const auto second = cell("second");
  finger(*page).touchMoved(second->convertPointToView({5, 5}, nullptr));
  process.scheduler().advance(3);
  finger(*page).touchEnded();
  EXPECT_EQ(inFile("first"), Value("FF0000FF"));
  EXPECT_TRUE(inFile("second").isNone());
}

TEST_F(ColorReset, RowsOfOtherKindsAreLeftAlone) {
  showRows();
  press(*page, "plain", 2.0);
  EXPECT_FALSE(process.tree().exists(preferences));
}

TEST_F(ColorReset, PressOutsideOfTheRowsDoesNothing) {
  showRows();
  finger(*page).touchBegan({100, 700});
  process.scheduler().advance(2.0);
  EXPECT_TRUE(finger(*page).hasRecognized());
  EXPECT_FALSE(process.tree().exists(preferences));
}

// A page may return another cell for the row than the visible one.
class CellAskedList : public ZVRCustomizeColorListViewController {
 public:
  std::shared_ptr<platform::UITableViewCell> cellForRowAtIndexPath(
      const std::shared_ptr<platform::UITableView>& tableView,
      platform::IndexPath indexPath) override {
    asked.push_back(indexPath);
    return ZVRCustomizeColorListViewController::cellForRowAtIndexPath(tableView, indexPath);
  }
  std::vector<platform::IndexPath> asked;
};

TEST_F(ColorReset, PageItselfIsAskedForTheCell) {
  writeRows();
  const auto list = std::make_shared<CellAskedList>();
  ASSERT_TRUE(list->initWithStyle(0));
  show(list);
  list->asked.clear();
  touch(*list, "second");
  EXPECT_TRUE(list->asked.empty());
  process.scheduler().advance(1.0);
  EXPECT_EQ(list->asked, (std::vector<platform::IndexPath>{{0, 1}}));
}

// Subclasses of the colour cell are colour rows too.
class FineColorCell : public HBColorPickerTableCell {
  PLATFORM_CLASS(FineColorCell)
};

TEST_F(ColorReset, RowOfASubclassIsResetToo) {
  process.classes().add(platform::ClassBuilder<FineColorCell>("HBColorPickerTableCell").build());
  writeList("GlobalColors", {Dictionary{{"cell", "PSButtonCell"},
                                        {"cellClass", "FineColorCell"},
                                        {"id", "fine"},
                                        {"key", "fine"},
                                        {"default", "red"}}});
  page = show(platform::make(&ZVRCustomizeColorListViewController::initWithStyle, 0));
  press(*page, "fine", 1.0);
  EXPECT_EQ(inFile("fine"), Value(resetValue));
}

// The row's default does not matter.
TEST_F(ColorReset, DefaultIsNotWritten) {
  showRows("pink");
  press(*page, "first", 1.0);
  EXPECT_EQ(inFile("first"), Value(resetValue));
}

TEST_F(ColorReset, PressFindsTheRowInAScrolledList) {
  std::vector<Value> rows;
  for (int i = 0; i < 40; ++i) rows.push_back(colorRow("row" + std::to_string(i), "red"));
  writeList("GlobalColors", rows);
  page = show(platform::make(&ZVRCustomizeColorListViewController::initWithStyle, 0));
  page->table()->setContentOffset({0, 900});
  window->layoutIfNeeded();
  press(*page, "row25", 1.0);
  EXPECT_EQ(inFile("row25"), Value(resetValue));
  EXPECT_EQ(platform::dictionaryWithContentsOfFile(preferences)->size(), 1U);
}

// The store still has the file from when the page was opened, and rewrites the whole file.
TEST_F(ColorReset, ColorWrittenSinceIsLostByTheResetOfAnotherRow) {
  writePreferences({{"first", "FF0000FF"}});
  showRows();
  writePreferences({{"first", "00FF00FF"}, {"elsewhere", 1}});
  press(*page, "second", 1.0);
  EXPECT_EQ(inFile("second"), Value(resetValue));
  EXPECT_EQ(inFile("first"), Value("FF0000FF"));
  EXPECT_TRUE(inFile("elsewhere").isNone());
}

// A row without a key writes under a none key, which raises.
TEST_F(ColorReset, RowWithoutAKeyRaises) {
  writeList("GlobalColors", {platform::Dictionary{{"cell", "PSButtonCell"},
                                                  {"cellClass", "HBColorPickerTableCell"},
                                                  {"id", "keyless"}}});
  page = show(platform::make(&ZVRCustomizeColorListViewController::initWithStyle, 0));
  touch(*page, "keyless");
  EXPECT_THROW(process.scheduler().advance(1.0), platform::Exception);
  EXPECT_FALSE(process.tree().exists(preferences));
}

TEST_F(ColorReset, WithoutAStoreNothingIsWritten) {
  showRows();
  page->setPreferences(nullptr);
  press(*page, "first", 1.0);
  EXPECT_FALSE(process.tree().exists(preferences));
}

}  // namespace
}  // namespace zentrova::tests

#include <algorithm>
#include <gtest/gtest.h>

#include "platform/foundation/values/Exception.h"
#include "platform/uikit/drawing/UIKitState.h"
#include "tests/root/RootFixture.h"

namespace zentrova::tests {
namespace {

using platform::Array;
using platform::Dictionary;
using platform::Value;

class RootSpecifiers : public RootTest {
 protected:
  static Identifiers rowsWithSwitches() {
    return {"first",
            "before",
            "presentationGroup",
            "presentationText",
            "presentationStyle",
            "alwaysPresentFromTop",
            "reverseWhenTopPresented",
            "presentFullyExpanded",
            "gestureGroupCell",
            "gestureText",
            "gestureSegmentCell",
            "last",
            "after"};
  }
  static Identifiers rowsWithoutSwitches() {
    auto rows = rowsWithSwitches();
    std::erase(rows, "alwaysPresentFromTop");
    std::erase(rows, "reverseWhenTopPresented");
    return rows;
  }
};

TEST_F(RootSpecifiers, StyleOneShowsBothSwitchesBelowTheStyleInTheirOrder) {
  writeRoot();
  storeStyle(1);
  EXPECT_EQ(identifiersOf(makePage()), rowsWithSwitches());
}

TEST_F(RootSpecifiers, StyleZeroShowsNeitherSwitch) {
  writeRoot();
  storeStyle(0);
  const auto controller = makePage();
  EXPECT_EQ(identifiersOf(controller), rowsWithoutSwitches());
  EXPECT_EQ(footerOf(controller, "presentationGroup"), Value(presentationText));
}

TEST_F(RootSpecifiers, AbsentStyleShowsNeitherSwitchButTheFooter) {
  writeRoot();
  const auto controller = makePage();
  EXPECT_EQ(identifiersOf(controller), rowsWithoutSwitches());
  EXPECT_EQ(footerOf(controller, "presentationGroup"), Value(presentationText));
}

TEST_F(RootSpecifiers, DefaultOfTheStyleCountsWhereNothingIsStored) {
  auto items = allItems();
  items[4] = items[4].asDictionary()->with("default", 1);
  writeRoot(items);
  EXPECT_EQ(identifiersOf(makePage()), rowsWithSwitches());
}

// The style is read by its 32-bit value, also from strings.
TEST_F(RootSpecifiers, StyleIsReadAsThePlatformReadsIt) {
  writeRoot();
  for (const Value& style :
       {Value("1"), Value(" 1 one"), Value(true), Value(1.9), Value(4294967297)}) {
    storeStyle(style);
    EXPECT_EQ(identifiersOf(makePage()), rowsWithSwitches()) << style.description();
  }
  for (const Value& style : {Value("0"), Value("one"), Value(false), Value(2), Value(-1),
                             Value(0.9), Value(4294967296), Value(5000000000)}) {
    storeStyle(style);
    EXPECT_EQ(identifiersOf(makePage()), rowsWithoutSwitches()) << style.description();
  }
}

TEST_F(RootSpecifiers, StyleThatHasNoIntValueRaises) {
  writeRoot();
  storeStyle(Array{1});
  try {
    makePage()->specifiers();
    FAIL() << "nothing was raised";
  } catch (const platform::Exception& exception) {
    EXPECT_EQ(exception.name(), "NSInvalidArgumentException");
    EXPECT_NE(exception.reason().find("intValue"), std::string::npos) << exception.reason();
  }
}

TEST_F(RootSpecifiers, SwitchesAreBoundToThePage) {
  writeRoot();
  storeStyle(1);
  const auto controller = makePage();
  controller->specifiers();
  const auto reverse = controller->specifierForID("reverseWhenTopPresented");
  ASSERT_TRUE(reverse);
  EXPECT_EQ(reverse->name(), "Reverse module order");
  EXPECT_EQ(reverse->cellType(), platform::PSSwitchCell);
  EXPECT_EQ(reverse->cellType(), 6);
  EXPECT_EQ(reverse->target(), controller);
  EXPECT_EQ(reverse->setter(), "setPreferenceValue:specifier:");
  EXPECT_EQ(reverse->getter(), "readPreferenceValue:");
  EXPECT_EQ(reverse->detailControllerClass(), std::nullopt);
  EXPECT_EQ(reverse->editPaneClass(), std::nullopt);
  EXPECT_EQ(reverse->properties()->snapshot(),
            (Dictionary{{"label", "Reverse module order"},
                        {"key", "reverseWhenTopPresented"},
                        {"id", "reverseWhenTopPresented"},
                        {"defaults", "com.hollowmere.zentrovaprefs"}}));
  const auto always = controller->specifierForID("alwaysPresentFromTop");
  ASSERT_TRUE(always);
  EXPECT_EQ(always->name(), "Always present from top");
  EXPECT_EQ(always->properties()->snapshot(),
            (Dictionary{{"label", "Always present from top"},
                        {"key", "alwaysPresentFromTop"},
                        {"id", "alwaysPresentFromTop"},
                        {"defaults", "com.hollowmere.zentrovaprefs"}}));
  EXPECT_TRUE(always->performGetter().isNone());
}

// One line per row, in order, including the rows that the loop itself inserted.
TEST_F(RootSpecifiers, WalkLogsEveryRowAndThoseThatItInserted) {
  auto items = allItems();
  items[1] = items[1].asDictionary()->with("value", "seen");
  items[9] = Dictionary{{"cell", "PSGroupCell"}};
  writeRoot(items);
  storeStyle(1);
  makePage()->specifiers();
  EXPECT_EQ(logLines(), (Identifiers{
                            "zentrova id: first, value: (null)",
                            "zentrova id: before, value: seen",
                            "zentrova id: presentationGroup, value: (null)",
                            "zentrova id: presentationText, value: (null)",
                            "zentrova id: presentationStyle, value: (null)",
                            "zentrova id: alwaysPresentFromTop, value: (null)",
                            "zentrova id: reverseWhenTopPresented, value: (null)",
                            "zentrova id: presentFullyExpanded, value: (null)",
                            "zentrova id: gestureGroupCell, value: (null)",
                            "zentrova id: gestureText, value: (null)",
                            "zentrova id: gestureSegmentCell, value: (null)",
                            "zentrova id: (null), value: (null)",
                            "zentrova id: after, value: (null)",
                        }));
}

TEST_F(RootSpecifiers, WalkWithoutSwitchesLogsEachRowOnce) {
  writeRoot();
  makePage()->specifiers();
  EXPECT_EQ(logLines().size(), allItems().size());
}

// Two style rows get two pairs of switches: the loop does not check for existing ones.
TEST_F(RootSpecifiers, EachStyleRowOfTheListGetsItsSwitches) {
  writeRoot({choice("presentationStyle", "presentationStyle"),
             choice("presentationStyle", "presentationStyle")});
  storeStyle(1);
  EXPECT_EQ(identifiersOf(makePage()),
            (Identifiers{"presentationStyle", "alwaysPresentFromTop", "reverseWhenTopPresented",
                         "presentationStyle", "alwaysPresentFromTop", "reverseWhenTopPresented"}));
}

TEST_F(RootSpecifiers, ListIsBuiltOnce) {
  writeRoot();
  const auto controller = makePage();
  const auto first = controller->specifiers();
  const auto lines = logLines().size();
  storeStyle(1);
  EXPECT_EQ(controller->specifiers(), first);
  EXPECT_EQ(logLines().size(), lines);
}

TEST_F(RootSpecifiers, ReloadedListIsBuiltAnew) {
  writeRoot();
  const auto controller = makePage();
  controller->specifiers();
  controller->preferences()->setObject(1, "presentationStyle");
  controller->reloadSpecifiers();
  EXPECT_EQ(identifiersOf(controller), rowsWithSwitches());
}

TEST_F(RootSpecifiers, TabletHasNoneOfTheSevenRowsAndNoWalk) {
  writeRoot();
  storeStyle(1);
  beTablet();
  EXPECT_EQ(identifiersOf(makePage()), (Identifiers{"first", "before", "last", "after"}));
  EXPECT_TRUE(logLines().empty());
}

TEST_F(RootSpecifiers, OtherIdiomsCountAsAPhone) {
  writeRoot();
  storeStyle(1);
  process.traits().idiom = platform::UserInterfaceIdiom::unspecified;
  EXPECT_EQ(identifiersOf(makePage()), rowsWithSwitches());
}

TEST_F(RootSpecifiers, ListWithoutTheRowsIsShownAsItIs) {
  writeRoot({item("PSGroupCell", "first"), item("PSSwitchCell", "before")});
  storeStyle(1);
  const auto controller = showPage();
  EXPECT_EQ(identifiersOf(controller), (Identifiers{"first", "before"}));
}

TEST_F(RootSpecifiers, MissingListGivesNoRows) {
  const auto controller = makePage();
  EXPECT_TRUE(controller->specifiers()->empty());
  EXPECT_TRUE(controller->problem());
}

// --- Changing a value ---

class RootChange : public RootSpecifiers {
 protected:
  void change(const Value& value) {
    page->setPreferenceValue(value, page->specifierForID("presentationStyle"));
  }
  std::size_t count(std::string_view identifier) {
    return static_cast<std::size_t>(std::ranges::count(identifiersOf(page), identifier));
  }
};

TEST_F(RootChange, StyleOneIsStoredAndInsertsBothSwitches) {
  writeRoot();
  showPage();
  change(1);
  EXPECT_EQ(inFile("presentationStyle"), Value(1));
  EXPECT_EQ(identifiersOf(page), rowsWithSwitches());
  EXPECT_EQ(footerOf(page, "presentationGroup"), Value(presentationText));
  EXPECT_EQ(page->specifierForID("alwaysPresentFromTop")->target(), page);
}

TEST_F(RootChange, StyleOneSetsTheFooterAnew) {
  writeRoot();
  showPage();
  page->specifierForID("presentationGroup")->setProperty("changed", "footerText");
  change(1);
  EXPECT_EQ(footerOf(page, "presentationGroup"), Value(presentationText));
}

// Each of the two is a separate animated change.
TEST_F(RootChange, SwitchesComeAndGoWithAnimation) {
  const auto animations = [] { return platform::UIKitState::current().makeAnimationIdentifier(); };
  writeRoot();
  showPage();
  for (const int style : {1, 0}) {
    const auto before = animations();
    change(style);
    EXPECT_EQ(animations(), before + 3) << style;
    ASSERT_TRUE(page->table()->lastAnimation());
    EXPECT_EQ(page->table()->lastAnimation()->identifier, before + 2) << style;
  }
}

// The value is in the file before the rows change.
TEST_F(RootChange, ValueIsStoredThoughTheRowsCannotChange) {
  writeRoot();
  showPage();
  EXPECT_THROW(change(Array{1}), platform::Exception);
  EXPECT_EQ(inFile("presentationStyle"), Value(Array{1}));
  EXPECT_EQ(identifiersOf(page), rowsWithoutSwitches());
}

TEST_F(RootChange, StyleZeroRemovesBothSwitchesAndKeepsTheFooter) {
  writeRoot();
  storeStyle(1);
  showPage();
  page->specifierForID("presentationGroup")->setProperty("changed", "footerText");
  change(0);
  EXPECT_EQ(identifiersOf(page), rowsWithoutSwitches());
  EXPECT_EQ(footerOf(page, "presentationGroup"), Value(presentationText));
}

TEST_F(RootChange, NoneCountsAsZero) {
  writeRoot();
  storeStyle(1);
  showPage();
  change(nullptr);
  EXPECT_TRUE(inFile("presentationStyle").isNone());
  EXPECT_EQ(identifiersOf(page), rowsWithoutSwitches());
}

TEST_F(RootChange, OtherStylesChangeNoRows) {
  writeRoot();
  showPage();
  change(2);
  EXPECT_EQ(identifiersOf(page), rowsWithoutSwitches());
  change(1);
  change(2);
  EXPECT_EQ(identifiersOf(page), rowsWithSwitches());
  EXPECT_EQ(inFile("presentationStyle"), Value(2));
}

TEST_F(RootChange, StyleAsATextCounts) {
  writeRoot();
  showPage();
  change("1");
  EXPECT_EQ(identifiersOf(page), rowsWithSwitches());
  EXPECT_EQ(inFile("presentationStyle"), Value("1"));
  change("0");
  EXPECT_EQ(identifiersOf(page), rowsWithoutSwitches());
}

// The style row only reports changes; setting 1 twice adds a second pair.
TEST_F(RootChange, StyleOneTwiceInsertsASecondPair) {
  writeRoot();
  storeStyle(1);
  showPage();
  change(1);
  EXPECT_EQ(count("alwaysPresentFromTop"), 2U);
  EXPECT_EQ(count("reverseWhenTopPresented"), 2U);
  const auto rows = identifiersOf(page);
  EXPECT_EQ(Identifiers(rows.begin() + 4, rows.begin() + 9),
            (Identifiers{"presentationStyle", "alwaysPresentFromTop", "reverseWhenTopPresented",
                         "alwaysPresentFromTop", "reverseWhenTopPresented"}));
  // One removal removes one pair.
  change(0);
  EXPECT_EQ(identifiersOf(page), rowsWithSwitches());
}

TEST_F(RootChange, OtherRowsAreOnlyStored) {
  auto items = allItems();
  items[1] = items[1].asDictionary()->with("key", "before");
  writeRoot(items);
  showPage();
  page->setPreferenceValue(1, page->specifierForID("before"));
  EXPECT_EQ(inFile("before"), Value(1));
  EXPECT_EQ(identifiersOf(page), rowsWithoutSwitches());
}

// The identifier decides, not the row's key.
TEST_F(RootChange, IdentifierDecidesNotTheKey) {
  auto items = allItems();
  items[4] = choice("presentationStyle", "otherKey");
  items[8] = choice("gestureSegmentCell", "presentationStyle");
  writeRoot(items);
  showPage();
  page->setPreferenceValue(1, page->specifierForID("gestureSegmentCell"));
  EXPECT_EQ(identifiersOf(page), rowsWithoutSwitches());
  change(1);
  EXPECT_EQ(inFile("otherKey"), Value(1));
  EXPECT_EQ(identifiersOf(page), rowsWithSwitches());
}

TEST_F(RootChange, TabletStoresTheStyleAndAddsNoRows) {
  writeRoot();
  beTablet();
  showPage();
  const auto style = platform::PSSpecifier::preferenceSpecifierNamed(
      "Style", page, std::nullopt, std::nullopt, std::nullopt, platform::PSSegmentCell,
      std::nullopt);
  style->setProperty("presentationStyle", "id");
  style->setProperty("presentationStyle", "key");
  page->insertSpecifier(style, std::size_t{1}, false);
  const Identifiers rows{"first", "presentationStyle", "before", "last", "after"};
  ASSERT_EQ(identifiersOf(page), rows);
  page->setPreferenceValue(1, style);
  EXPECT_EQ(inFile("presentationStyle"), Value(1));
  EXPECT_EQ(identifiersOf(page), rows);
}

TEST_F(RootChange, ListWithoutGroupTakesTheSwitchesAllTheSame) {
  writeRoot({choice("presentationStyle", "presentationStyle")});
  showPage();
  change(1);
  EXPECT_EQ(identifiersOf(page),
            (Identifiers{"presentationStyle", "alwaysPresentFromTop", "reverseWhenTopPresented"}));
}

TEST_F(RootChange, TableShowsTheRowsThatTheListHas) {
  writeRoot();
  showPage();
  const auto rowsOfSection = [this] { return page->table()->numberOfRowsInSection(1); };
  EXPECT_EQ(rowsOfSection(), 3);
  change(1);
  EXPECT_EQ(rowsOfSection(), 5);
  change(0);
  EXPECT_EQ(rowsOfSection(), 3);
}

TEST_F(RootChange, PageIsReleased) {
  writeRoot();
  const auto before = aliveWithoutPage();
  showPage();
  change(1);
  leavePage();
  process.scheduler().advance(10);
  EXPECT_EQ(platform::Object::liveCount(), before);
}

}  // namespace
}  // namespace zentrova::tests

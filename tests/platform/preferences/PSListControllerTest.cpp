#include <thread>

#include "platform/preferences/PSListController.h"
#include "tests/platform/preferences/PreferencesTest.h"

namespace preferences_test {

using namespace platform;
using ::testing::ElementsAre;
using Rows = std::vector<std::vector<std::string>>;

namespace {

std::shared_ptr<PSSpecifier> made(const std::string& identifier, PSCellType type = PSSwitchCell) {
  auto specifier = PSSpecifier::preferenceSpecifierNamed(identifier, nullptr, {}, {}, {}, type, {});
  specifier->setIdentifier(identifier);
  return specifier;
}

}  // namespace

class PSListControllerTest : public PreferencesTest {
 protected:
  // Two groups, "one" with the rows a and b, "two" with c.
  void showTwoGroups() {
    show({row("PSGroupCell", "One", textEntry("id", "one") + textEntry("footerText", "Foot")),
          row("PSSwitchCell", "a"), row("PSSwitchCell", "b"),
          row("PSGroupCell", "Two", textEntry("id", "two")),
          row("PSButtonCell", "c", textEntry("id", "c"))});
  }
};

// --- The list ---

TEST_F(PSListControllerTest, GroupsBecomeSectionsWithHeaderAndFooter) {
  showTwoGroups();
  EXPECT_EQ(rowsShown(), (Rows{{"a", "b"}, {"c"}}));
  EXPECT_EQ(page->table()->headerTitle(0), "One");
  EXPECT_EQ(page->table()->footerTitle(0), "Foot");
  EXPECT_EQ(page->table()->headerTitle(1), "Two");
  EXPECT_EQ(page->table()->footerTitle(1), std::nullopt);
}

TEST_F(PSListControllerTest, FooterThatIsSetLaterShowsWhenTheTableAsksAnew) {
  showTwoGroups();
  specifier("two")->setProperty("Later", "footerText");
  EXPECT_EQ(page->titleForFooterInSection(page->table(), 1), "Later");
  page->reloadSpecifierID("two");
  EXPECT_EQ(page->table()->footerTitle(1), "Later");
}

TEST_F(PSListControllerTest, TitleOfTheListIsThePages) {
  show({}, textEntry("title", "Zentrova"));
  EXPECT_EQ(page->title(), "Zentrova");
}

TEST_F(PSListControllerTest, ListIsBuiltOnceWhenTheViewLoads) {
  showTwoGroups();
  page->table()->reloadData();
  layOut();
  EXPECT_EQ(page->timesBuilt, 1);
}

TEST_F(PSListControllerTest, PageWithoutListHasNoRows) {
  page = make<TestPage>();
  EXPECT_EQ(page->specifiers(), nullptr);
  page->view();
  EXPECT_EQ(page->table()->numberOfSections(), 0);
  EXPECT_EQ(page->specifierForID("a"), nullptr);
  page->insertSpecifier(made("x"), "a", true);
  page->removeSpecifierID("a", true);
  EXPECT_EQ(page->keptSpecifiers(), nullptr);
}

TEST_F(PSListControllerTest, MissingListIsAPageThatSaysSo) {
  page = make<TestPage>();
  page->listName = "Nowhere";
  page->view();
  ASSERT_TRUE(page->problem());
  EXPECT_THAT(page->problem()->text, testing::StartsWith("Nowhere.plist cannot be loaded: "));
  EXPECT_EQ(page->table()->numberOfSections(), 0);
  writeList("Nowhere", listOf({row("PSButtonCell", "A")}));
  page->reloadSpecifiers();
  EXPECT_FALSE(page->problem());
  EXPECT_EQ(rowsShown(), (Rows{{"A"}}));
}

TEST_F(PSListControllerTest, BundleIsTheProcesss) {
  page = make<TestPage>();
  EXPECT_EQ(page->bundlePath(), bundle);
}

TEST_F(PSListControllerTest, TableStyleFollowsTheSystemVersion) {
  test.traits().systemVersion = {15, 0, 0};
  showTwoGroups();
  EXPECT_EQ(page->table()->style(), UITableViewStyle::insetGrouped);
  test.traits().systemVersion = {14, 8, 0};
  showTwoGroups();
  EXPECT_EQ(page->table()->style(), UITableViewStyle::grouped);
}

TEST_F(PSListControllerTest, ValuesAreReadByKey) {
  showTwoGroups();
  EXPECT_EQ(page->valueForKey("_table").as<UITableView>(), page->table());
  const Value rows = page->valueForKey("_specifiers");
  ASSERT_NE(rows.asArray(), nullptr);
  EXPECT_EQ(rows.asArray()->size(), 5U);
  EXPECT_EQ(page->valueForKey("specifiers"), rows);
  EXPECT_EQ(page->perform("specifiers"), rows);
  EXPECT_EQ(page->valueForKey("_parentViewController").as<UINavigationController>(), navigation);
}

TEST_F(PSListControllerTest, OffersItsRowsByName) {
  showTwoGroups();
  const auto added = made("x");
  page->perform("insertSpecifier:afterSpecifier:animated:",
                {Value(added), Value(specifier("a")), Value(true)});
  page->perform("insertSpecifier:afterSpecifierID:animated:",
                {Value(made("y")), Value("c"), Value(false)});
  page->perform("insertSpecifier:atIndex:animated:", {Value(made("z")), Value(1), Value(false)});
  page->perform("removeSpecifierID:animated:", {Value("b"), Value(true)});
  EXPECT_EQ(rowsShown(), (Rows{{"z", "a", "x"}, {"c", "y"}}));
  EXPECT_EQ(page->perform("specifierForID:", {Value("x")}).as<PSSpecifier>(), added);
  EXPECT_TRUE(page->perform("specifierForID:", {Value("nobody")}).isNone());
  page->perform("reloadSpecifiers");
  EXPECT_EQ(rowsShown(), (Rows{{"a", "b"}, {"c"}}));
}

// --- Cells ---

TEST_F(PSListControllerTest, OneCellPerSpecifierIsHandedOutAgain) {
  showTwoGroups();
  const auto before = cell("a");
  ASSERT_NE(before, nullptr);
  EXPECT_EQ(page->cellForRowAtIndexPath(page->table(), {0, 0}), before);
  page->table()->reloadData();
  layOut();
  EXPECT_EQ(cell("a"), before);
  EXPECT_EQ(page->table()->cellForRowAtIndexPath({0, 0}), before);
}

TEST_F(PSListControllerTest, CellIsMadeWhenItsRowComesIntoSight) {
  std::vector<std::string> items;
  for (int index = 0; index < 60; ++index) {
    items.push_back(row("PSSwitchCell", "row" + std::to_string(index)));
  }
  show(items);
  EXPECT_NE(cell("row0"), nullptr);
  EXPECT_EQ(cell("row59"), nullptr);
  const auto first = cell("row0");
  page->table()->scrollToRowAtIndexPath({0, 59});
  layOut();
  EXPECT_NE(cell("row59"), nullptr);
  page->table()->scrollToRowAtIndexPath({0, 0});
  layOut();
  EXPECT_EQ(page->table()->cellForRowAtIndexPath({0, 0}), first);
}

// Changes of a page to a cell are kept, since the row keeps its cell.
TEST_F(PSListControllerTest, CellKeepsWhatAPageHasSet) {
  showTwoGroups();
  cell("a")->setUserInteractionEnabled(false);
  cell("a")->setAlpha(0.6);
  page->table()->reloadData();
  layOut();
  EXPECT_FALSE(cell("a")->isUserInteractionEnabled());
  EXPECT_EQ(cell("a")->alpha(), 0.6);
}

TEST_F(PSListControllerTest, NoPlaceNoCell) {
  showTwoGroups();
  for (const IndexPath path :
       {IndexPath{-1, 0}, IndexPath{0, -1}, IndexPath{0, 2}, IndexPath{2, 0}}) {
    EXPECT_EQ(page->specifierAtIndexPath(path), nullptr);
    EXPECT_EQ(page->cellForRowAtIndexPath(page->table(), path), nullptr);
  }
  EXPECT_EQ(page->cachedCellForSpecifierID("nobody"), nullptr);
  EXPECT_EQ(page->indexPathForSpecifier(specifier("one")), std::nullopt);
  EXPECT_EQ(page->numberOfRowsInSection(page->table(), 7), 0);
  EXPECT_EQ(page->numberOfRowsInSection(page->table(), -1), 0);
}

TEST_F(PSListControllerTest, HeightIsTheRowsOwnElseTheTables) {
  show({row("PSSwitchCell", "a", "<key>height</key><integer>90</integer>"),
        row("PSSwitchCell", "b")});
  EXPECT_EQ(page->table()->heightOfRow({0, 0}), 90);
  EXPECT_EQ(page->heightForRowAtIndexPath(page->table(), {0, 1}),
            UITableViewDelegate::automaticDimension);
}

// --- Insert and remove ---

TEST_F(PSListControllerTest, InsertsAndRemovesRows) {
  showTwoGroups();
  const auto kept = cell("b");
  const auto token = page->table()->rowToken({0, 1});
  page->insertSpecifier(made("x"), specifier("a"), true);
  page->insertSpecifier(made("y"), specifier("a"), true);
  layOut();
  EXPECT_EQ(rowsShown(), (Rows{{"a", "y", "x", "b"}, {"c"}}));
  EXPECT_EQ(cell("b"), kept);
  EXPECT_EQ(page->table()->rowToken({0, 3}), token);
  EXPECT_NE(cell("x"), nullptr);
  page->removeSpecifierID("y", true);
  page->removeSpecifier(specifier("x"), false);
  layOut();
  EXPECT_EQ(rowsShown(), (Rows{{"a", "b"}, {"c"}}));
  EXPECT_EQ(page->table()->rowToken({0, 1}), token);
}

TEST_F(PSListControllerTest, InsertsAtTheEndAndAtAnIndex) {
  showTwoGroups();
  page->addSpecifier(made("end"));
  page->insertSpecifier(made("first"), std::size_t{1}, false);
  page->insertContiguousSpecifiers({made("x"), made("y")}, std::size_t{5}, true);
  page->insertContiguousSpecifiers({made("v"), made("w")}, specifier("two"), true);
  EXPECT_EQ(rowsShown(), (Rows{{"first", "a", "b"}, {"v", "w", "x", "y", "c", "end"}}));
}

TEST_F(PSListControllerTest, SecondPairOfEqualIdentifiersIsInsertedAndGoesFirstPairFirst) {
  showTwoGroups();
  for (int round = 0; round < 2; ++round) {
    page->insertSpecifier(made("reverse"), specifier("a"), true);
    page->insertSpecifier(made("always"), specifier("a"), true);
  }
  EXPECT_EQ(rowsShown()[0],
            (std::vector<std::string>{"a", "always", "reverse", "always", "reverse", "b"}));
  const auto later = page->specifierAtIndexPath({0, 3});
  page->removeSpecifierID("always", true);
  page->removeSpecifierID("reverse", true);
  EXPECT_EQ(rowsShown()[0], (std::vector<std::string>{"a", "always", "reverse", "b"}));
  EXPECT_EQ(specifier("always"), later);
}

TEST_F(PSListControllerTest, GroupWithItsRowsIsASection) {
  showTwoGroups();
  const auto token = page->table()->sectionToken(1);
  const PSSpecifierList added{made("three", PSGroupCell), made("x")};
  page->insertContiguousSpecifiers(added, std::size_t{3}, true);
  EXPECT_EQ(rowsShown(), (Rows{{"a", "b"}, {"x"}, {"c"}}));
  EXPECT_EQ(page->table()->sectionToken(2), token);
  page->removeContiguousSpecifiers(added, true);
  EXPECT_EQ(rowsShown(), (Rows{{"a", "b"}, {"c"}}));
  EXPECT_EQ(page->table()->sectionToken(1), token);
}

TEST_F(PSListControllerTest, GroupInTheMiddleDividesASection) {
  showTwoGroups();
  page->insertSpecifier(made("between", PSGroupCell), specifier("a"), true);
  EXPECT_EQ(rowsShown(), (Rows{{"a"}, {"b"}, {"c"}}));
  page->removeSpecifierID("between", true);
  page->removeSpecifierID("two", true);
  EXPECT_EQ(rowsShown(), (Rows{{"a", "b", "c"}}));
}

TEST_F(PSListControllerTest, RowBeforeTheFirstGroupMakesASection) {
  showTwoGroups();
  page->insertSpecifier(made("top"), std::size_t{0}, true);
  EXPECT_EQ(rowsShown(), (Rows{{"top"}, {"a", "b"}, {"c"}}));
  page->removeSpecifierID("top", true);
  EXPECT_EQ(rowsShown(), (Rows{{"a", "b"}, {"c"}}));
}

TEST_F(PSListControllerTest, ReplacesRows) {
  showTwoGroups();
  page->replaceContiguousSpecifiers({specifier("a"), specifier("b")}, {made("x")}, true);
  EXPECT_EQ(rowsShown(), (Rows{{"x"}, {"c"}}));
  page->replaceContiguousSpecifiers({specifier("x"), specifier("c")}, {made("y")}, true);
  EXPECT_EQ(rowsShown(), (Rows{{"x"}, {"c"}}));
}

TEST_F(PSListControllerTest, WhatIsNotThereChangesNothing) {
  showTwoGroups();
  const auto before = page->keptSpecifiers();
  page->insertSpecifier(made("x"), made("nobody"), true);
  page->insertSpecifier(made("x"), "nobody", true);
  page->insertSpecifier(made("x"), std::size_t{6}, true);
  page->insertSpecifier(nullptr, specifier("a"), true);
  page->addSpecifier(nullptr);
  page->removeSpecifierID("nobody", true);
  page->removeSpecifier(nullptr, true);
  page->reloadSpecifierID("nobody");
  EXPECT_EQ(page->keptSpecifiers(), before);
  EXPECT_EQ(page->indexOfSpecifierID("nobody"), std::nullopt);
  EXPECT_EQ(page->specifierAtIndex(9), nullptr);
}

TEST_F(PSListControllerTest, RowsChangeBeforeTheViewIsLoaded) {
  writeList("Main", listOf({row("PSSwitchCell", "a")}));
  page = make<TestPage>();
  page->listName = "Main";
  ASSERT_EQ(page->specifiers()->size(), 1U);
  page->insertSpecifier(made("x"), specifier("a"), true);
  page->view();
  EXPECT_EQ(rowsShown(), (Rows{{"a", "x"}}));
}

TEST_F(PSListControllerTest, RowsChangeBeforeTheTableIsLaidOut) {
  writeList("Main", listOf({row("PSSwitchCell", "a")}));
  page = make<TestPage>();
  page->listName = "Main";
  page->view();
  page->insertSpecifier(made("x"), specifier("a"), true);
  page->removeSpecifierID("a", true);
  EXPECT_EQ(rowsShown(), (Rows{{"x"}}));
}

// --- Reload ---

TEST_F(PSListControllerTest, ReloadDropsTheRowsAndAsksAgain) {
  showTwoGroups();
  const auto before = specifier("a");
  const std::weak_ptr<PSTableCell> cellBefore = cell("a");
  page->insertSpecifier(made("x"), specifier("a"), true);
  page->reloadSpecifiers();
  layOut();
  EXPECT_EQ(page->timesBuilt, 2);
  EXPECT_EQ(rowsShown(), (Rows{{"a", "b"}, {"c"}}));
  EXPECT_NE(specifier("a"), before);
  EXPECT_NE(cell("a"), nullptr);
  EXPECT_TRUE(cellBefore.expired());
}

TEST_F(PSListControllerTest, SetSpecifiersShowsThem) {
  showTwoGroups();
  const auto kept = specifier("a");
  const auto keptCell = cell("a");
  page->setSpecifiers(makeSpecifiers({made("x"), kept}));
  layOut();
  EXPECT_EQ(rowsShown(), (Rows{{"x", "a"}}));
  EXPECT_EQ(cell("a"), keptCell);
}

// --- Threads ---

TEST_F(PSListControllerTest, ChangeFromAnotherThreadReachesTheTableOnTheMainThread) {
  showTwoGroups();
  auto& process = test.process();
  std::thread([&] {
    const ProcessScope scope(process);
    page->insertSpecifier(made("x"), page->specifierForID("a"), true);
    page->specifierForID("c")->setName("Change");
  }).join();
  EXPECT_EQ(page->indexOfSpecifierID("x"), 2U);
  test.scheduler().runMain();
  layOut();
  EXPECT_EQ(rowsShown(), (Rows{{"a", "x", "b"}, {"c"}}));
  EXPECT_EQ(cell("c")->textLabel()->text(), "Change");
}

TEST_F(PSListControllerTest, ReadersOfAnotherThreadMeetRowsThatChange) {
  showTwoGroups();
  constexpr int rounds = 200;
  bool alwaysFound = true;
  auto& process = test.process();
  std::thread reader([&] {
    const ProcessScope scope(process);
    for (int round = 0; round < rounds; ++round) {
      alwaysFound = page->specifierForID("c") && page->indexOfSpecifierID("a") && alwaysFound;
    }
  });
  for (int round = 0; round < rounds; ++round) {
    page->insertSpecifier(made("x"), specifier("a"), true);
    page->removeSpecifierID("x", true);
  }
  reader.join();
  EXPECT_TRUE(alwaysFound);
  EXPECT_EQ(rowsShown(), (Rows{{"a", "b"}, {"c"}}));
}

TEST_F(PSListControllerTest, PageAndItsCellsGoWithIt) {
  showTwoGroups();  // creates the objects that live as long as the process
  page.reset();
  navigation.reset();
  const auto before = Object::liveCount();
  showTwoGroups();
  page.reset();
  navigation.reset();
  EXPECT_EQ(Object::liveCount(), before);
}

}  // namespace preferences_test

#include "platform/preferences/PSListItemsController.h"
#include "platform/preferences/PSValueTableCell.h"
#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/controllers/UIApplication.h"
#include "tests/platform/preferences/PreferencesTest.h"

namespace preferences_test {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PSListControllerTapTest : public PreferencesTest {
 protected:
  std::shared_ptr<UIAlertController> alert() {
    return std::dynamic_pointer_cast<UIAlertController>(page->presentedViewController());
  }
};

TEST_F(PSListControllerTapTest, ButtonPerformsItsActionOnTheTarget) {
  show({row("PSButtonCell", "A", textEntry("action", "restart")),
        row("PSLinkCell", "B", textEntry("action", "openRow:"))});
  EXPECT_TRUE(tap("A"));
  EXPECT_TRUE(tap("B"));
  EXPECT_THAT(page->performed, ElementsAre("restart", "openRow B"));
  EXPECT_EQ(page->table()->indexPathForSelectedRow(), std::nullopt);
}

TEST_F(PSListControllerTapTest, RowsWithoutActionTakeNoTap) {
  show({row("PSButtonCell", "A"), row("PSLinkCell", "B"), row("PSStaticTextCell", "C"),
        row("PSTitleValueCell", "D")});
  for (const std::string name : {"A", "B", "C", "D"}) EXPECT_FALSE(tap(name)) << name;
}

TEST_F(PSListControllerTapTest, RowWithAProblemTakesNoTap) {
  show({row("PSButtonCell", "A", textEntry("action", "noSuchAction"))});
  ASSERT_TRUE(specifier("A")->problem());
  EXPECT_FALSE(tap("A"));
  page->performActionForSpecifier(specifier("A"));
  EXPECT_THAT(page->performed, IsEmpty());
}

TEST_F(PSListControllerTapTest, ActionThatIsSetLaterAndDoesNotExistRaises) {
  show({row("PSButtonCell", "A")});
  specifier("A")->setButtonAction("noSuchAction");
  EXPECT_THROW(tap("A"), Exception);
}

TEST_F(PSListControllerTapTest, ActionThatTakesItsOwnRowAwayIsPerformedOnce) {
  show({row("PSButtonCell", "A", textEntry("action", "restart"))});
  specifier("A")->setButtonAction("reloadSpecifiers");
  EXPECT_TRUE(tap("A"));
  EXPECT_EQ(page->timesBuilt, 2);
}

// --- Confirmation ---

TEST_F(PSListControllerTapTest, ConfirmationAsksFirst) {
  show({row("PSButtonCell", "A",
            textEntry("action", "restart") +
                "<key>isDestructive</key><true/><key>confirmation</key><dict>" +
                textEntry("title", "Respring?") + textEntry("prompt", "It restarts.") +
                textEntry("okTitle", "Respring") + textEntry("cancelTitle", "Not now") +
                "</dict>")});
  EXPECT_TRUE(tap("A"));
  ASSERT_NE(alert(), nullptr);
  EXPECT_EQ(alert()->title(), "Respring?");
  EXPECT_EQ(alert()->message(), "It restarts.");
  EXPECT_EQ(alert()->preferredStyle(), UIAlertControllerStyle::actionSheet);
  ASSERT_EQ(alert()->actions().size(), 2U);
  EXPECT_EQ(alert()->actions()[0]->title(), "Respring");
  EXPECT_EQ(alert()->actions()[0]->style(), UIAlertActionStyle::destructive);
  EXPECT_EQ(alert()->actions()[1]->title(), "Not now");
  EXPECT_THAT(page->performed, IsEmpty());
  EXPECT_TRUE(alert()->userChoose(0));
  EXPECT_THAT(page->performed, ElementsAre("restart"));
}

TEST_F(PSListControllerTapTest, ConfirmationThatIsCancelledDoesNothing) {
  test.traits().idiom = UserInterfaceIdiom::pad;
  show({row("PSButtonCell", "A",
            textEntry("action", "restart") + "<key>confirmation</key><dict/>")});
  EXPECT_TRUE(tap("A"));
  ASSERT_NE(alert(), nullptr);
  EXPECT_EQ(alert()->preferredStyle(), UIAlertControllerStyle::alert);
  EXPECT_EQ(alert()->actions()[0]->title(), "OK");
  EXPECT_EQ(alert()->actions()[0]->style(), UIAlertActionStyle::standard);
  EXPECT_TRUE(alert()->userCancel());
  EXPECT_THAT(page->performed, IsEmpty());
  EXPECT_EQ(alert(), nullptr);
}

// --- Links ---

class NotingOpener final : public URLOpener {
 public:
  std::vector<std::string> opened;
  void openURL(const std::shared_ptr<NSURL>& url) override {
    opened.push_back(url->absoluteString());
  }
};

class PSListControllerLinkTest : public PSListControllerTapTest {
 protected:
  PSListControllerLinkTest() { test.process().provide<URLOpener>(opener); }

  std::shared_ptr<NotingOpener> opener = std::make_shared<NotingOpener>();
};

constexpr const char* webPage = "https://example.org/";

TEST_F(PSListControllerLinkTest, RowWithAnAddressHandsItToTheApplication) {
  show({row("PSLinkCell", "A", textEntry("url", webPage)), row("PSButtonCell", "B")});
  EXPECT_TRUE(tap("A"));
  EXPECT_THAT(opener->opened, ElementsAre(webPage));
  EXPECT_EQ(page->table()->indexPathForSelectedRow(), std::nullopt);
  specifier("B")->setProperty(Value(NSURL::URLWithString("mailto:x@example.org")), "url");
  EXPECT_TRUE(tap("B"));
  EXPECT_THAT(opener->opened, ElementsAre(webPage, "mailto:x@example.org"));
}

TEST_F(PSListControllerLinkTest, ActionOrPageOfARowComesBeforeItsAddress) {
  show({row("PSLinkCell", "A", textEntry("url", webPage) + textEntry("action", "restart")),
        row("PSLinkCell", "B", textEntry("url", webPage) + textEntry("detail", "TestPage"))});
  EXPECT_TRUE(tap("A"));
  EXPECT_THAT(page->performed, ElementsAre("restart"));
  EXPECT_TRUE(tap("B"));
  EXPECT_NE(navigation->topViewController(), page);
  EXPECT_THAT(opener->opened, IsEmpty());
}

TEST_F(PSListControllerLinkTest, AddressThatDoesNotParseIsARowThatSaysSo) {
  show({row("PSLinkCell", "A", textEntry("url", "not a url"))});
  EXPECT_TRUE(tap("A"));
  EXPECT_THAT(opener->opened, IsEmpty());
  ASSERT_TRUE(specifier("A")->problem());
  EXPECT_THAT(*specifier("A")->problem(), ::testing::EndsWith(": \"url\" is not an address"));
  EXPECT_FALSE(tap("A"));
}

TEST_F(PSListControllerLinkTest, ValueOfAnotherKindIsNoAddress) {
  show({row("PSLinkCell", "A", "<key>url</key><integer>5</integer>"),
        row("PSLinkCell", "B", "<key>url</key><array/>")});
  EXPECT_FALSE(tap("A"));
  EXPECT_FALSE(tap("B"));
}

TEST_F(PSListControllerLinkTest, DisabledRowTakesNoTap) {
  show({row("PSLinkCell", "A", textEntry("url", webPage) + "<key>enabled</key><false/>")});
  EXPECT_FALSE(tap("A"));
}

TEST_F(PSListControllerLinkTest, ConfirmationComesFirst) {
  show({row("PSLinkCell", "A", textEntry("url", webPage) + "<key>confirmation</key><dict/>")});
  EXPECT_TRUE(tap("A"));
  EXPECT_THAT(opener->opened, IsEmpty());
  ASSERT_NE(alert(), nullptr);
  EXPECT_TRUE(alert()->userChoose(0));
  EXPECT_THAT(opener->opened, ElementsAre(webPage));
}

TEST_F(PSListControllerTapTest, AddressGoesNowhereWhereTheApplicationTakesNone) {
  show({row("PSLinkCell", "A", textEntry("url", "https://example.org/"))});
  EXPECT_TRUE(tap("A"));
  UIApplication::sharedApplication()->openURL(nullptr);
  EXPECT_EQ(alert(), nullptr);
  EXPECT_EQ(specifier("A")->problem(), std::nullopt);
}

// --- Sub-pages ---

TEST_F(PSListControllerTapTest, LinkOpensThePageOfItsDetailClass) {
  show(
      {row("PSLinkCell", "Sub", textEntry("detail", "TestPage") + textEntry("action", "restart"))});
  EXPECT_TRUE(tap("Sub"));
  const auto sub = std::dynamic_pointer_cast<TestPage>(navigation->topViewController());
  ASSERT_NE(sub, nullptr);
  ASSERT_NE(sub, page);
  EXPECT_EQ(sub->specifier(), specifier("Sub"));
  EXPECT_EQ(sub->parentController(), page);
  EXPECT_EQ(sub->bundlePath(), bundle);
  EXPECT_EQ(sub->title(), "Sub");
  EXPECT_THAT(page->performed, IsEmpty());
}

TEST_F(PSListControllerTapTest, LinkRowIsSelectedUntilItsPageIsLeft) {
  show({row("PSLinkCell", "Sub", textEntry("detail", "TestPage"))});
  EXPECT_TRUE(tap("Sub"));
  EXPECT_EQ(page->table()->indexPathForSelectedRow(), (IndexPath{0, 0}));
  navigation->popViewControllerAnimated(false);
  EXPECT_EQ(page->table()->indexPathForSelectedRow(), std::nullopt);
}

TEST_F(PSListControllerTapTest, PageThatRefusesOrIsGoneIsARowThatSaysSo) {
  show({row("PSLinkCell", "A", textEntry("detail", "RefusingPage")),
        row("PSLinkCell", "B", textEntry("detail", "TestPage"))});
  EXPECT_TRUE(tap("A"));
  EXPECT_EQ(specifier("A")->problem(),
            "Main.plist, row 1 (\"A\"): the page class \"RefusingPage\" could not be initialized");
  EXPECT_EQ(cell("A")->detailTextLabel()->text(), specifier("A")->problem());
  EXPECT_TRUE(test.log().contains("[Preferences] " + *specifier("A")->problem()));
  test.classes().remove("TestPage");
  page->pushDetailForSpecifier(specifier("B"));
  EXPECT_THAT(specifier("B")->problem().value_or(""), testing::HasSubstr("does not exist"));
  EXPECT_EQ(navigation->viewControllers().size(), 1U);
}

// --- Choices ---

class PSListItemsControllerTest : public PSListControllerTapTest {
 protected:
  static constexpr const char* choices =
      "<key>validValues</key><array><integer>0</integer><integer>1</integer>"
      "<string>auto</string></array><key>validTitles</key><array><string>Low</string>"
      "<string>High</string><string>Automatic</string></array><key>default</key>"
      "<integer>0</integer>";

  void open() {
    show({row("PSLinkListCell", "Quality", textEntry("key", "quality") + choices)});
    ASSERT_TRUE(tap("quality"));
    items = std::dynamic_pointer_cast<PSListItemsController>(navigation->topViewController());
    ASSERT_NE(items, nullptr);
  }
  bool choose(std::int64_t index) {
    const bool done = items->table()->userTapRow({0, index});
    layOut();
    return done;
  }
  std::vector<bool> ticks() {
    std::vector<bool> found;
    for (const auto& each : items->table()->visibleCells()) {
      found.push_back(each->accessoryType() == UITableViewCellAccessoryType::checkmark);
    }
    return found;
  }

  std::shared_ptr<PSListItemsController> items;
};

TEST_F(PSListItemsControllerTest, RowShowsTheTitleOfItsValue) {
  open();
  EXPECT_EQ(cell("quality")->detailTextLabel()->text(), "Low");
}

TEST_F(PSListItemsControllerTest, PageShowsTheChoicesWithATick) {
  open();
  EXPECT_EQ(items->title(), "Quality");
  ASSERT_EQ(items->table()->numberOfSections(), 1);
  std::vector<std::string> titles;
  for (const auto& each : items->table()->visibleCells()) {
    titles.push_back(each->textLabel()->text().value_or(""));
  }
  EXPECT_THAT(titles, ElementsAre("Low", "High", "Automatic"));
  EXPECT_THAT(ticks(), ElementsAre(true, false, false));
}

TEST_F(PSListItemsControllerTest, ChoosingWritesTheElementAndGoesOnShowing) {
  open();
  EXPECT_TRUE(choose(2));
  EXPECT_THAT(page->written, ElementsAre(std::pair<std::string, Value>("quality", "auto")));
  EXPECT_THAT(ticks(), ElementsAre(false, false, true));
  EXPECT_EQ(navigation->topViewController(), items);
  EXPECT_EQ(cell("quality")->detailTextLabel()->text(), "Automatic");
  EXPECT_TRUE(choose(1));
  EXPECT_EQ(page->written.back().second.kind(), ValueKind::integer);
  EXPECT_EQ(items->table()->indexPathForSelectedRow(), std::nullopt);
}

TEST_F(PSListItemsControllerTest, ChoosingTheSameAgainWritesNothing) {
  open();
  EXPECT_TRUE(choose(0));
  EXPECT_THAT(page->written, IsEmpty());
  choose(1);
  choose(1);
  EXPECT_EQ(page->written.size(), 1U);
}

TEST_F(PSListItemsControllerTest, ValueThatIsNoneOfTheChoicesHasNoTick) {
  open();
  page->values["quality"] = "1";
  items->table()->reloadData();
  layOut();
  EXPECT_THAT(ticks(), ElementsAre(false, false, false));
}

TEST_F(PSListItemsControllerTest, TickStaysWithAValueThatTheSetterRefuses) {
  open();
  specifier("quality")->setSetter("noSuchSetter:");
  EXPECT_THROW(choose(1), Exception);
  layOut();
  EXPECT_THAT(ticks(), ElementsAre(true, false, false));
}

TEST_F(PSListItemsControllerTest, SpecifierWithoutGetterShowsWhatWasChosen) {
  open();
  specifier("quality")->setGetter(std::nullopt);
  choose(1);
  EXPECT_THAT(ticks(), ElementsAre(false, true, false));
}

TEST_F(PSListItemsControllerTest, OwnDetailClassTakesItsPlace) {
  show({row("PSLinkListCell", "Quality",
            textEntry("key", "quality") + textEntry("detail", "TestPage") + choices)});
  EXPECT_TRUE(tap("quality"));
  EXPECT_NE(std::dynamic_pointer_cast<TestPage>(navigation->topViewController()), nullptr);
}

TEST_F(PSListItemsControllerTest, PageOfNoSpecifierHasNoRows) {
  items = make<PSListItemsController>();
  items->view();
  EXPECT_EQ(items->table()->numberOfSections(), 0);
}

}  // namespace preferences_test

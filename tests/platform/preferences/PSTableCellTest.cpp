#include "platform/preferences/PSTableCell.h"
#include "platform/preferences/PSValueTableCell.h"
#include "tests/platform/preferences/PreferencesTest.h"

namespace preferences_test {

using namespace platform;

class PSTableCellTest : public PreferencesTest {};

TEST_F(PSTableCellTest, ShowsNameAndKind) {
  show({row("PSLinkCell", "Link", textEntry("action", "restart")),
        row("PSButtonCell", "Button", textEntry("action", "restart")),
        row("PSStaticTextCell", "Text")});
  EXPECT_EQ(cell("Link")->textLabel()->text(), "Link");
  EXPECT_EQ(cell("Link")->accessoryType(), UITableViewCellAccessoryType::disclosureIndicator);
  EXPECT_EQ(cell("Link")->cellType(), PSLinkCell);
  EXPECT_TRUE(sameColor(cell("Button")->textLabel()->textColor(), cell("Button")->tintColor()));
  EXPECT_EQ(cell("Button")->accessoryType(), UITableViewCellAccessoryType::none);
  EXPECT_EQ(cell("Text")->textLabel()->numberOfLines(), 0);
}

TEST_F(PSTableCellTest, ButtonFollowsTheTint) {
  show({row("PSButtonCell", "Button")});
  const auto green = UIColor::systemGreenColor();
  page->view()->setTintColor(green);
  EXPECT_TRUE(sameColor(cell("Button")->textLabel()->textColor(), green));
}

TEST_F(PSTableCellTest, RefreshShowsTheSpecifierAsItIsNow) {
  show({row("PSButtonCell", "Set", textEntry("id", "button"))});
  specifier("button")->setName("Change");
  EXPECT_EQ(cell("button")->textLabel()->text(), "Set");
  page->table()->reloadData();
  layOut();
  EXPECT_EQ(cell("button")->textLabel()->text(), "Change");
}

TEST_F(PSTableCellTest, IconImageOfTheSpecifierIsShown) {
  show({row("PSButtonCell", "A")});
  EXPECT_EQ(cell("A")->imageView()->image(), nullptr);
  const auto symbol = UIImage::systemImageNamed("safari");
  specifier("A")->setProperty(Value(symbol), "iconImage");
  page->reloadSpecifierID("A");
  EXPECT_EQ(cell("A")->imageView()->image(), symbol);
}

TEST_F(PSTableCellTest, DisabledRowIsDimmedAndTakesNoTap) {
  show({row("PSButtonCell", "A", textEntry("action", "restart") + "<key>enabled</key><false/>"),
        row("PSSwitchCell", "S", "<key>enabled</key><false/>")});
  EXPECT_FALSE(cell("A")->cellEnabled());
  EXPECT_FALSE(cell("A")->textLabel()->isEnabled());
  EXPECT_FALSE(tap("A"));
  EXPECT_TRUE(page->performed.empty());
  EXPECT_FALSE(control<UIControl>("S")->isEnabled());
  specifier("S")->setProperty(true, "enabled");
  page->reloadSpecifierID("S");
  EXPECT_TRUE(control<UIControl>("S")->isEnabled());
}

TEST_F(PSTableCellTest, TitleAndValueShowsTheTitleOfTheValue) {
  show({row("PSTitleValueCell", "Plain", textEntry("key", "plain")),
        row("PSTitleValueCell", "Titled",
            textEntry("key", "titled") +
                "<key>validValues</key><array><integer>0</integer><integer>1</integer></array>"
                "<key>validTitles</key><array><string>Low</string><string>High</string></array>")});
  EXPECT_EQ(cell("plain")->style(), UITableViewCellStyle::value1);
  EXPECT_EQ(cell("plain")->detailTextLabel()->text(), std::nullopt);
  page->values["plain"] = 5;
  page->values["titled"] = 1;
  page->table()->reloadData();
  layOut();
  EXPECT_EQ(cell("plain")->detailTextLabel()->text(), "5");
  EXPECT_EQ(cell("titled")->detailTextLabel()->text(), "High");
  specifier("titled")->setProperty(Array{Value("Few"), Value("Many")}, "validTitles");
  page->reloadSpecifierID("titled");
  EXPECT_EQ(cell("titled")->detailTextLabel()->text(), "Many");
  page->values["titled"] = "neither";
  page->reloadSpecifierID("titled");
  EXPECT_EQ(cell("titled")->detailTextLabel()->text(), "neither");
}

// The row names the cell's class, and the cell provides target and action of a tap.
TEST_F(PSTableCellTest, CellOfItsOwnClassTakesTheTap) {
  show(
      {row("PSLinkCell", "A", textEntry("cellClass", "TapCell") + textEntry("action", "restart"))});
  const auto own = std::dynamic_pointer_cast<TapCell>(cell("A"));
  ASSERT_NE(own, nullptr);
  EXPECT_TRUE(tap("A"));
  EXPECT_EQ(own->taps, 1);
  EXPECT_TRUE(page->performed.empty());
}

TEST_F(PSTableCellTest, TargetAndActionAreTheSpecifiersUnlessTheCellHasItsOwn) {
  show({row("PSButtonCell", "A", textEntry("action", "restart"))});
  EXPECT_EQ(cell("A")->target(), page);
  EXPECT_EQ(cell("A")->action(), "restart");
  EXPECT_EQ(cell("A")->cellTarget(), nullptr);
  EXPECT_EQ(cell("A")->cellAction(), std::nullopt);
  cell("A")->setAction("openRow:");
  EXPECT_TRUE(tap("A"));
  EXPECT_THAT(page->performed, testing::ElementsAre("openRow A"));
  cell("A")->setCellTarget(page);
  cell("A")->setCellAction("restart");
  EXPECT_TRUE(tap("A"));
  EXPECT_THAT(page->performed, testing::ElementsAre("openRow A", "restart"));
}

// A cell may make itself the target when it joins the table.
TEST_F(PSTableCellTest, ButtonActionAndTargetOfTheSpecifierMayBeSetLater) {
  show({row("PSButtonCell", "A")});
  EXPECT_FALSE(tap("A"));
  specifier("A")->setTarget(page);
  specifier("A")->setButtonAction("restart");
  EXPECT_TRUE(tap("A"));
  EXPECT_THAT(page->performed, testing::ElementsAre("restart"));
}

TEST_F(PSTableCellTest, CellThatRefusesIsARowThatSaysSo) {
  show({row("PSLinkCell", "A", textEntry("cellClass", "RefusingCell"))});
  EXPECT_EQ(specifier("A")->problem(),
            "Main.plist, row 1 (\"A\"): the cell class \"RefusingCell\" could not be initialized");
  EXPECT_EQ(cell("A")->detailTextLabel()->text(), specifier("A")->problem());
  EXPECT_FALSE(tap("A"));
}

TEST_F(PSTableCellTest, CellClassThatGoesAwayIsARowThatSaysSo) {
  show(
      {row("PSLinkCell", "A", textEntry("cellClass", "TapCell") + textEntry("action", "restart"))});
  test.classes().remove("TapCell");
  writeList("Main", listOf({row("PSLinkCell", "A", textEntry("cellClass", "TapCell"))}));
  page->reloadSpecifiers();
  layOut();
  EXPECT_THAT(specifier("A")->problem().value_or(""), testing::HasSubstr("\"TapCell\""));
  EXPECT_EQ(cell("A")->className(), "PSTableCell");
}

TEST_F(PSTableCellTest, DisabledRowOfAMissingClassIsShownByItsKind) {
  show({row("PSSwitchCell", "A", textEntry("cellClass", "Later") + "<key>enabled</key><false/>")});
  EXPECT_EQ(specifier("A")->problem(), std::nullopt);
  EXPECT_EQ(cell("A")->className(), "PSSwitchTableCell");
}

TEST_F(PSTableCellTest, ProblemIsShownInTheRow) {
  show({row("PSSwichCell", "Reverse")});
  EXPECT_EQ(cell("Reverse")->style(), UITableViewCellStyle::subtitle);
  EXPECT_EQ(cell("Reverse")->textLabel()->text(), "Reverse");
  EXPECT_EQ(cell("Reverse")->detailTextLabel()->text(), specifier("Reverse")->problem());
  EXPECT_EQ(cell("Reverse")->detailTextLabel()->numberOfLines(), 0);
  EXPECT_FALSE(cell("Reverse")->cellEnabled());
}

TEST_F(PSTableCellTest, OffersItsOperationsByName) {
  show({row("PSSwitchCell", "A")});
  const auto shown = cell("A");
  EXPECT_EQ(shown->valueForKeyPath("specifier.name"), Value("A"));
  EXPECT_EQ(shown->valueForKey("control").as<UIControl>(), shown->control());
  specifier("A")->setName("B");
  shown->perform("refreshCellContentsWithSpecifier:", {Value(shown->specifier())});
  EXPECT_EQ(shown->textLabel()->text(), "B");
}

}  // namespace preferences_test

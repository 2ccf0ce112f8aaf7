#include "tests/cells/CellsFixture.h"

namespace zentrova::tests {
namespace {

using platform::make;
using platform::UIColor;
using platform::UIView;
using platform::UIWindow;
using testing::Each;

class TintedCell : public CellsTest {
 protected:
  static std::shared_ptr<HBTintedTableCell> makeTinted() {
    return makeCell<HBTintedTableCell>(makeRow(), UITableViewCellStyle::standard);
  }
  static void expectTitle(const HBTintedTableCell& cell, const std::shared_ptr<UIColor>& color) {
    EXPECT_TRUE(platform::sameColor(cell.textLabel()->textColor(), color));
    EXPECT_TRUE(platform::sameColor(cell.textLabel()->highlightedTextColor(), color));
  }
};

TEST_F(TintedCell, HandsAllThreeToTheBaseInitialiser) {
  const auto row = makeRow();
  const auto cell = makeCell<HBTintedTableCell>(row, UITableViewCellStyle::value1);
  ASSERT_TRUE(cell);
  EXPECT_EQ(cell->style(), UITableViewCellStyle::value1);
  EXPECT_EQ(cell->reuseIdentifier(), "identifier");
  EXPECT_EQ(cell->specifier(), row);
}

TEST_F(TintedCell, ARefreshGivesTheTitleTheTint) {
  const auto cell = makeTinted();
  cell->setTintColor(UIColor::systemPinkColor());
  cell->textLabel()->setTextColor(UIColor::blackColor());
  cell->textLabel()->setHighlightedTextColor(nullptr);
  cell->refreshCellContentsWithSpecifier(makeRow());
  EXPECT_EQ(cell->textLabel()->text(), "Title") << "the base has run";
  expectTitle(*cell, UIColor::systemPinkColor());
}

TEST_F(TintedCell, TheTintWinsOverWhatTheBaseSets) {
  const auto row = makeRow();
  row->setCellType(platform::PSButtonCell);
  const auto cell = makeCell<HBTintedTableCell>(row);
  cell->setTintColor(UIColor::systemTealColor());
  cell->refreshCellContentsWithSpecifier(row);
  expectTitle(*cell, UIColor::systemTealColor());
}

TEST_F(TintedCell, AChangeOfTheInheritedTintReachesEveryTitleAtOnce) {
  const auto window = make<UIWindow>();
  const auto page = make<UIView>();
  window->addSubview(page);
  std::vector<std::shared_ptr<HBTintedTableCell>> cells;
  for (int i = 0; i < 3; ++i) page->addSubview(cells.emplace_back(makeTinted()));
  page->setTintColor(UIColor::systemRedColor());
  for (const auto& cell : cells) expectTitle(*cell, UIColor::systemRedColor());
  page->setTintColor(UIColor::systemGreenColor());
  for (const auto& cell : cells) expectTitle(*cell, UIColor::systemGreenColor());
}

TEST_F(TintedCell, ACellThatJoinsAPageTakesItsTint) {
  const auto page = make<UIView>();
  page->setTintColor(UIColor::systemOrangeColor());
  const auto cell = makeTinted();
  page->addSubview(cell);
  expectTitle(*cell, UIColor::systemOrangeColor());
}

TEST_F(TintedCell, AHighlightedTitleFollowsTheTintToo) {
  const auto page = make<UIView>();
  const auto cell = makeTinted();
  page->addSubview(cell);
  cell->setHighlighted(true);
  page->setTintColor(UIColor::systemPurpleColor());
  EXPECT_TRUE(cell->textLabel()->isHighlighted());
  expectTitle(*cell, UIColor::systemPurpleColor());
}

TEST_F(TintedCell, TheDevicesTintReachesTheCellsOfTheWindow) {
  const auto window = make<UIWindow>();
  const auto cell = makeTinted();
  window->addSubview(cell);
  process.traits().tint = "FF3B30FF";
  window->traitsDidChange();
  expectTitle(*cell, std::make_shared<UIColor>(*platform::colorComponentsFromHex("FF3B30FF")));
}

TEST_F(TintedCell, SubtitleAndAccessoryKeepTheirColours) {
  const auto cell = makeLink({{"subtitle", "below"}});
  cell->setTintColor(UIColor::systemPinkColor());
  cell->refreshCellContentsWithSpecifier(cell->specifier());
  EXPECT_EQ(cell->detailTextLabel()->textColor()->systemName(), "secondaryLabelColor");
  EXPECT_EQ(cell->detailTextLabel()->highlightedTextColor(), nullptr);
  EXPECT_EQ(cell->accessoryView()->tintColor()->systemName(), "systemGray3Color");
}

TEST_F(TintedCell, IsRefreshedAndToldOfTheTintByName) {
  const auto cell = makeTinted();
  cell->setTintColor(UIColor::systemPinkColor());
  cell->textLabel()->setTextColor(nullptr);
  cell->perform("tintColorDidChange");
  expectTitle(*cell, UIColor::systemPinkColor());
  cell->textLabel()->setTextColor(nullptr);
  cell->perform("refreshCellContentsWithSpecifier:", {Value(makeRow())});
  expectTitle(*cell, UIColor::systemPinkColor());
}

TEST_F(TintedCell, AnEmptySpecifierLeavesTheContentsAlone) {
  const auto cell = makeTinted();
  cell->textLabel()->setText("kept");
  cell->refreshCellContentsWithSpecifier(nullptr);
  EXPECT_EQ(cell->textLabel()->text(), "kept");
}

}  // namespace
}  // namespace zentrova::tests

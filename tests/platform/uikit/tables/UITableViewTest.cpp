#include "platform/foundation/values/Exception.h"
#include "platform/uikit/tables/UITableView.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UITableViewTest : public TableTest {};

TEST_F(UITableViewTest, OnlyRowsInSightHaveACell) {
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("a", "b", "c", "d"));
  EXPECT_EQ(source->asked.size(), 4U);
  EXPECT_EQ(table->cellForRowAtIndexPath({0, 4}), nullptr);
  EXPECT_EQ(table->contentSize(), (Size{320, 400}));
}

TEST_F(UITableViewTest, ATableWithoutASizeHasNoCells) {
  table->setFrame({});
  table->layoutIfNeeded();
  EXPECT_THAT(source->asked, IsEmpty());
  EXPECT_EQ(table->numberOfRowsInSection(0), 8);
}

TEST_F(UITableViewTest, ScrollingRecyclesTheCellsThatLeave) {
  table->layoutIfNeeded();
  const auto first = table->cellForRowAtIndexPath({0, 0});
  table->setContentOffset({0, 50});
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("b", "c", "d", "e"));
  EXPECT_EQ(table->cellForRowAtIndexPath({0, 4}), first);
  EXPECT_EQ(first->frame(), (Rect{0, 200, 320, 50}));
}

TEST_F(UITableViewTest, ARecycledCellKeepsWhatNobodySetAnew) {
  table->layoutIfNeeded();
  const auto first = table->cellForRowAtIndexPath({0, 0});
  const auto chevron = make<UIView>();
  first->setEditingAccessoryView(chevron);
  first->textLabel()->setTextColor(UIColor::systemRedColor());
  table->setContentOffset({0, 50});
  table->layoutIfNeeded();
  const auto recycled = table->cellForRowAtIndexPath({0, 4});
  EXPECT_EQ(recycled->editingAccessoryView(), chevron);
  EXPECT_EQ(recycled->textLabel()->textColor()->systemName(), "systemRedColor");
  EXPECT_EQ(recycled->textLabel()->text(), "e") << "the setters take effect";
}

TEST_F(UITableViewTest, ReloadingRecyclesToo) {
  table->layoutIfNeeded();
  const auto first = table->cellForRowAtIndexPath({0, 0});
  source->sections = {{"z"}};
  table->reloadData();
  table->layoutIfNeeded();
  EXPECT_EQ(table->cellForRowAtIndexPath({0, 0}), first);
  EXPECT_THAT(visibleTexts(), ElementsAre("z"));
  EXPECT_EQ(table->subviews().size(), 1U) << "the cells of the other rows have left";
}

// A presenter then sees the same cells in the same places.
TEST_F(UITableViewTest, ARowGetsItsCellBackWhenTheTableIsLoadedAgain) {
  source->sections = {{"a", "b", "c"}};
  table->reloadData();
  table->layoutIfNeeded();
  const auto cells = table->visibleCells();
  table->reloadData();
  table->layoutIfNeeded();
  EXPECT_EQ(table->visibleCells(), cells);
}

TEST_F(UITableViewTest, ANewRowTakesNoCellThatAnotherRowWaitsFor) {
  class Named final : public TextSource {
    Value identityForRowAtIndexPath(const Table&, IndexPath path) override { return textAt(path); }
  };
  source = std::make_shared<Named>();
  source->sections = {{"a", "b", "c"}};
  table->setDataSource(source);
  table->layoutIfNeeded();
  const auto first = table->cellForRowAtIndexPath({0, 0});
  const auto last = table->cellForRowAtIndexPath({0, 2});
  source->sections = {{"new", "c", "a"}};
  table->reloadData();
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("new", "c", "a"));
  EXPECT_EQ(table->cellForRowAtIndexPath({0, 1}), last);
  EXPECT_EQ(table->cellForRowAtIndexPath({0, 2}), first);
}

TEST_F(UITableViewTest, AnUnregisteredCellIsNeverRecycled) {
  EXPECT_EQ(table->dequeueReusableCellWithIdentifier("other"), nullptr);
  EXPECT_THROW(table->dequeueReusableCellWithIdentifier("other", {0, 0}), Exception);
  table->registerClass("NoSuchCell", "broken");
  EXPECT_THROW(table->dequeueReusableCellWithIdentifier("broken"), Exception);
}

TEST_F(UITableViewTest, OverscanBringsCellsBeforeTheirRowsAreInSight) {
  table->setOverscan(100);
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("a", "b", "c", "d", "e", "f"));
}

TEST_F(UITableViewTest, PointsAndRowsFindEachOther) {
  EXPECT_EQ(table->indexPathForRowAtPoint({5, 149.9}), (IndexPath{0, 2}));
  EXPECT_EQ(table->indexPathForRowAtPoint({5, 150}), (IndexPath{0, 3}));
  EXPECT_EQ(table->indexPathForRowAtPoint({5, -1}), std::nullopt);
  EXPECT_EQ(table->indexPathForRowAtPoint({5, 400}), std::nullopt);
  EXPECT_EQ(table->rectForRowAtIndexPath({0, 3}), (Rect{0, 150, 320, 50}));
  EXPECT_EQ(table->rectForRowAtIndexPath({3, 3}), Rect{});
  table->layoutIfNeeded();
  EXPECT_EQ(table->indexPathForCell(table->cellForRowAtIndexPath({0, 2})), (IndexPath{0, 2}));
  EXPECT_EQ(table->indexPathForCell(make<UITableViewCell>()), std::nullopt);
  EXPECT_EQ(table->indexPathForCell(nullptr), std::nullopt);
}

TEST_F(UITableViewTest, ARowScrollsIntoSight) {
  table->scrollToRowAtIndexPath({0, 7});
  EXPECT_EQ(table->contentOffset(), (Point{0, 200}));
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("e", "f", "g", "h"));
  table->scrollToRowAtIndexPath({0, 5});
  EXPECT_EQ(table->contentOffset(), (Point{0, 200})) << "it is already visible";
  table->scrollToRowAtIndexPath({4, 4});
  EXPECT_EQ(table->contentOffset(), (Point{0, 200}));
}

TEST_F(UITableViewTest, TheHeaderViewStandsAboveTheRowsAndGetsTheTablesWidth) {
  const auto header = makeWithFrame<UIView>({0, 0, 10, 100});
  table->setTableHeaderView(header);
  EXPECT_EQ(header->frame(), (Rect{0, 0, 320, 100}));
  EXPECT_EQ(header->superview(), table);
  EXPECT_EQ(table->rectForRowAtIndexPath({0, 0}).y, 100);
  table->setFrame({0, 0, 500, 200});
  EXPECT_EQ(header->frame(), (Rect{0, 0, 500, 100}));
  table->setTableHeaderView(nullptr);
  EXPECT_EQ(header->superview(), nullptr);
  EXPECT_EQ(table->rectForRowAtIndexPath({0, 0}).y, 0);
}

TEST_F(UITableViewTest, TheFooterViewStandsBelowTheRows) {
  const auto footer = makeWithFrame<UIView>({0, 0, 10, 30});
  table->layoutIfNeeded();
  table->setTableFooterView(footer);
  EXPECT_EQ(footer->frame(), (Rect{0, 400, 320, 30}));
  EXPECT_EQ(table->contentSize().height, 430);
}

TEST_F(UITableViewTest, RowsAreFortyFourPointsHighUnlessTold) {
  source->rowHeight = UITableView::automaticDimension;
  EXPECT_EQ(table->heightOfRow({0, 0}), 44);
  table->setRowHeight(60);
  EXPECT_EQ(table->heightOfRow({0, 0}), 60);
  source->rowHeight = 0;
  table->reloadData();
  EXPECT_EQ(table->heightOfRow({0, 0}), 0) << "a row may have a height of zero";
}

TEST_F(UITableViewTest, AnAutomaticRowGrowsWithItsText) {
  source->rowHeight = UITableView::automaticDimension;
  table->layoutIfNeeded();
  const auto cell = table->cellForRowAtIndexPath({0, 0});
  cell->textLabel()->setNumberOfLines(0);
  source->textAt({0, 0}) = std::string(40, 'm') + " " + std::string(40, 'm');
  table->reloadData();
  table->layoutIfNeeded();
  EXPECT_GT(table->heightOfRow({0, 0}), 60);
  EXPECT_EQ(table->cellForRowAtIndexPath({0, 0})->frame().height, table->heightOfRow({0, 0}));
  EXPECT_EQ(table->rectForRowAtIndexPath({0, 1}).y, table->heightOfRow({0, 0}));
}

TEST_F(UITableViewTest, ANegativeNumberOfRowsOrSectionsCountsAsNone) {
  class NegativeSource : public TextSource {
   public:
    std::int64_t numberOfSectionsInTableView(const Table&) override { return sectionCount; }
    std::int64_t numberOfRowsInSection(const Table&, std::int64_t) override { return -3; }
    std::int64_t sectionCount = 1;
  };
  const auto negative = make<NegativeSource>();
  table->setDataSource(negative);
  table->layoutIfNeeded();
  EXPECT_EQ(table->numberOfRowsInSection(0), 0);
  negative->sectionCount = -1;
  table->reloadData();
  EXPECT_EQ(table->numberOfSections(), 0);
}

TEST_F(UITableViewTest, ADataSourceThatGivesNoCellRaises) {
  class EmptySource : public TextSource {
   public:
    std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(const Table& asking,
                                                           IndexPath path) override {
      return path.row == 1 ? nullptr : TextSource::cellForRowAtIndexPath(asking, path);
    }
  };
  const auto empty = make<EmptySource>();
  empty->sections = {{"a", "b", "c"}};
  table->setDataSource(empty);
  try {
    table->layoutIfNeeded();
    FAIL() << "nothing was raised";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), internalInconsistencyException);
    EXPECT_EQ(exception.reason(),
              "UITableView failed to obtain a cell from its dataSource for row 1 of section 0");
  }
  // The other rows remain usable; the row without a cell has the reason.
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("a", "c"));
  EXPECT_TRUE(table->rowProblem({0, 1}).has_value());
  EXPECT_FALSE(table->rowProblem({0, 0}).has_value());
}

TEST_F(UITableViewTest, ADataSourceThatDiesLeavesNoRows) {
  table->layoutIfNeeded();
  source.reset();
  table->layoutIfNeeded();
  EXPECT_EQ(table->numberOfSections(), 0);
  EXPECT_THAT(visibleTexts(), IsEmpty());
  EXPECT_EQ(table->cellForRowAtIndexPath({0, 0}), nullptr);
  table->reloadData();
  table->layoutIfNeeded();
  EXPECT_FALSE(table->userTapRow({0, 0}));
}

TEST_F(UITableViewTest, ADataSourceMayReloadTheTableWhileItIsAsked) {
  class RestlessSource : public TextSource {
   public:
    std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(const Table& asking,
                                                           IndexPath path) override {
      auto cell = TextSource::cellForRowAtIndexPath(asking, path);
      if (sections[0].size() > 2) {
        sections[0].pop_back();
        asking->reloadData();
      }
      return cell;
    }
  };
  const auto restless = make<RestlessSource>();
  restless->sections = {{"a", "b", "c"}};
  table->setDataSource(restless);
  table->layoutIfNeeded();
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("a", "b"));
}

TEST_F(UITableViewTest, TheScrollViewOfATableIsTheTable) {
  const auto scrollView = table->valueForKey("_scrollView").as<UIScrollView>();
  EXPECT_EQ(scrollView, table);
  scrollView->setDelegate(source);
  EXPECT_EQ(table->tableDelegate(), source) << "one delegate for both";
}

TEST_F(UITableViewTest, ScrollingTellsTheDelegate) {
  class ScrollDelegate : public Object, public UIScrollViewDelegate {
   public:
    void scrollViewDidScroll(const std::shared_ptr<UIScrollView>& scrollView) override {
      offsets.push_back(scrollView->contentOffset().y);
    }
    std::vector<double> offsets;
  };
  const auto delegate = make<ScrollDelegate>();
  table->setDelegate(delegate);
  table->setContentOffset({0, -0.5});
  table->setContentOffset({0, -0.5});
  table->setContentOffset({0, 0});
  EXPECT_THAT(delegate->offsets, ElementsAre(-0.5, 0));
  EXPECT_EQ(table->heightOfRow({0, 0}), 44) << "a scroll view delegate has no heights";
}

TEST_F(UITableViewTest, HeadersAndFootersTakeTheirTextsHeight) {
  class TitledSource : public TextSource {
   public:
    std::optional<std::string> titleForHeaderInSection(const Table&, std::int64_t) override {
      return "Enabled modules:";
    }
    std::optional<std::string> titleForFooterInSection(const Table&,
                                                       std::int64_t section) override {
      if (section == 0) return std::nullopt;
      return "Reverse module order: When presented from the top, reverse the module order.";
    }
  };
  const auto grouped = std::make_shared<UITableView>();
  ASSERT_TRUE(grouped->initWithFrame({0, 0, 200, 300}, UITableViewStyle::grouped));
  const auto titled = make<TitledSource>();
  titled->sections = {{}, {}};
  grouped->setDataSource(titled);
  EXPECT_EQ(grouped->headerTitle(0), "Enabled modules:");
  EXPECT_EQ(grouped->footerTitle(0), std::nullopt);
  EXPECT_GT(grouped->headerHeight(0), 30);
  const double narrow = grouped->footerHeight(1);
  grouped->setFrame({0, 0, 2000, 300});
  EXPECT_LT(grouped->footerHeight(1), narrow) << "a wider table needs fewer lines";
  EXPECT_EQ(grouped->headerTitle(9), std::nullopt);
}

TEST_F(UITableViewTest, HeadersAndFootersAreAsHighAsTheDelegateSays) {
  class HighSource : public TextSource {
   public:
    double heightForHeaderInSection(const Table&, std::int64_t section) override {
      return section == 0 ? 70 : automaticDimension;
    }
    double heightForFooterInSection(const Table&, std::int64_t section) override {
      return section == 0 ? 30 : automaticDimension;
    }
  };
  const auto high = make<HighSource>();
  high->sections = {{"a"}, {"b"}};
  table->setDataSource(high);
  table->setDelegate(high);
  EXPECT_EQ(table->rectForRowAtIndexPath({0, 0}).y, 70);
  EXPECT_EQ(table->headerHeight(1), 0) << "a plain section without a title has no header";
  EXPECT_EQ(table->rectForRowAtIndexPath({1, 0}).y, 70 + 50 + 30);
}

TEST_F(UITableViewTest, TheDelegateIsToldOfACellBeforeItIsShown) {
  class WatchingSource : public TextSource {
   public:
    void willDisplayCell(const Table&, const std::shared_ptr<UITableViewCell>& cell,
                         IndexPath path) override {
      EXPECT_EQ(cell->superview(), nullptr);
      EXPECT_EQ(cell->textLabel()->text(), textAt(path));
      shown.push_back(textAt(path));
    }
    std::vector<std::string> shown;
  };
  const auto watching = make<WatchingSource>();
  watching->sections = {{"a", "b", "c", "d", "e"}};
  table->setDataSource(watching);
  table->setDelegate(watching);
  table->layoutIfNeeded();
  EXPECT_THAT(watching->shown, ElementsAre("a", "b", "c", "d"));
}

TEST_F(UITableViewTest, AnInsetTableKeepsItsRowsAwayFromTheSides) {
  const auto inset = std::make_shared<UITableView>();
  ASSERT_TRUE(inset->initWithFrame({0, 0, 320, 300}, UITableViewStyle::insetGrouped));
  inset->setDataSource(source);
  const Rect row = inset->rectForRowAtIndexPath({0, 0});
  EXPECT_EQ(row.x, 16);
  EXPECT_EQ(row.width, 288);
}

}  // namespace
}  // namespace uikit_test

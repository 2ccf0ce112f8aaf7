#include "platform/foundation/values/Exception.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::ElementsAre;

constexpr auto animation = UITableViewRowAnimation::automatic;

class UITableViewUpdatesTest : public TableTest {
 protected:
  UITableViewUpdatesTest() {
    source->sections = {{"a", "b", "c"}, {"x"}};
    table->layoutIfNeeded();
  }

  std::vector<std::uint64_t> tokens(std::int64_t section) {
    std::vector<std::uint64_t> result;
    for (std::int64_t row = 0; row < table->numberOfRowsInSection(section); ++row) {
      result.push_back(table->rowToken({section, row}));
    }
    return result;
  }
};

TEST_F(UITableViewUpdatesTest, RowsKeepTheirIdentityWhenOneIsInserted) {
  const auto before = tokens(0);
  const auto cell = table->cellForRowAtIndexPath({0, 1});
  source->sections[0].insert(source->sections[0].begin() + 1, "new");
  table->insertRowsAtIndexPaths({{0, 1}}, animation);
  const auto after = tokens(0);
  ASSERT_EQ(after.size(), 4U);
  EXPECT_EQ(after[0], before[0]);
  EXPECT_EQ(after[2], before[1]);
  EXPECT_EQ(after[3], before[2]);
  EXPECT_EQ(table->cellForRowAtIndexPath({0, 2}), cell);
  EXPECT_EQ(cell->frame().y, 100);
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("a", "new", "b", "c"));
}

TEST_F(UITableViewUpdatesTest, AnInsertionThatIsAnimatedIsRememberedByTheTable) {
  source->sections[0].emplace_back("d");
  table->insertRowsAtIndexPaths({{0, 3}}, UITableViewRowAnimation::none);
  EXPECT_FALSE(table->lastAnimation().has_value());
  source->sections[0].emplace_back("e");
  table->insertRowsAtIndexPaths({{0, 4}}, animation);
  ASSERT_TRUE(table->lastAnimation().has_value());
  EXPECT_GT(table->lastAnimation()->duration, 0);
}

TEST_F(UITableViewUpdatesTest, ADeletedRowTakesItsIdentityAndItsCellAway) {
  const auto before = tokens(0);
  const auto cell = table->cellForRowAtIndexPath({0, 0});
  source->sections[0].erase(source->sections[0].begin());
  table->deleteRowsAtIndexPaths({{0, 0}}, animation);
  EXPECT_THAT(tokens(0), ElementsAre(before[1], before[2]));
  EXPECT_EQ(table->indexPathForRowToken(before[0]), std::nullopt);
  table->layoutIfNeeded();
  EXPECT_EQ(cell->superview(), nullptr);
  EXPECT_THAT(visibleTexts(), ElementsAre("b", "c", "x"));
}

TEST_F(UITableViewUpdatesTest, AMovedRowKeepsItsIdentityAndItsCell) {
  const std::uint64_t token = table->rowToken({0, 0});
  const auto cell = table->cellForRowAtIndexPath({0, 0});
  source->sections = {{"b", "c"}, {"x", "a"}};
  table->moveRowAtIndexPath({0, 0}, {1, 1});
  EXPECT_EQ(table->indexPathForRowToken(token), (IndexPath{1, 1}));
  EXPECT_EQ(table->cellForRowAtIndexPath({1, 1}), cell);
}

TEST_F(UITableViewUpdatesTest, InABatchDeletionsCountBeforeAndInsertionsAfter) {
  const auto before = tokens(0);
  source->sections[0] = {"n", "b", "m"};
  table->beginUpdates();
  table->insertRowsAtIndexPaths({{0, 0}}, animation);
  table->deleteRowsAtIndexPaths({{0, 0}, {0, 2}}, animation);
  table->insertRowsAtIndexPaths({{0, 2}}, animation);
  EXPECT_EQ(tokens(0), before) << "nothing changes before the batch ends";
  table->endUpdates();
  EXPECT_EQ(tokens(0)[1], before[1]);
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("n", "b", "m", "x"));
}

TEST_F(UITableViewUpdatesTest, AnUpdateThatDoesNotFitTheDataSourceRaises) {
  try {
    table->insertRowsAtIndexPaths({{0, 0}}, animation);
    FAIL() << "nothing was raised";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), internalInconsistencyException);
    EXPECT_EQ(exception.reason(),
              "Invalid update: section 0 has 4 rows after the update, and its data source has 3");
  }
  EXPECT_EQ(table->numberOfRowsInSection(0), 3) << "the table shows the data source's rows";
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("a", "b", "c", "x"));
}

TEST_F(UITableViewUpdatesTest, IndicesThatAreNotThereRaise) {
  EXPECT_THROW(table->deleteRowsAtIndexPaths({{0, 3}}, animation), Exception);
  EXPECT_THROW(table->deleteRowsAtIndexPaths({{2, 0}}, animation), Exception);
  EXPECT_THROW(table->deleteRowsAtIndexPaths({{0, -1}}, animation), Exception);
  EXPECT_THROW(table->deleteRowsAtIndexPaths({{0, 1}, {0, 1}}, animation), Exception);
  EXPECT_THROW(table->insertRowsAtIndexPaths({{0, 9}}, animation), Exception);
  EXPECT_THROW(table->reloadRowsAtIndexPaths({{0, 9}}, animation), Exception);
  EXPECT_THROW(table->insertSections({7}, animation), Exception);
  EXPECT_THROW(table->deleteSections({7}, animation), Exception);
  EXPECT_THROW(table->reloadSections({7}, animation), Exception);
  EXPECT_EQ(table->numberOfRowsInSection(0), 3);
}

TEST_F(UITableViewUpdatesTest, AReloadedRowIsAskedForAgainAndKeepsItsIdentity) {
  const std::uint64_t token = table->rowToken({0, 1});
  source->asked.clear();
  source->textAt({0, 1}) = "B";
  table->reloadRowsAtIndexPaths({{0, 1}}, animation);
  table->layoutIfNeeded();
  EXPECT_THAT(source->asked, ElementsAre(IndexPath{0, 1}));
  EXPECT_THAT(visibleTexts(), ElementsAre("a", "B", "c", "x"));
  EXPECT_EQ(table->rowToken({0, 1}), token);
}

TEST_F(UITableViewUpdatesTest, SectionsComeWithTheirRowsAndGo) {
  const std::uint64_t second = table->sectionToken(1);
  source->sections.insert(source->sections.begin() + 1, {"p", "q"});
  table->insertSections({1}, animation);
  EXPECT_EQ(table->sectionToken(2), second);
  EXPECT_EQ(table->numberOfRowsInSection(1), 2);
  source->sections.erase(source->sections.begin());
  table->deleteSections({0}, animation);
  table->layoutIfNeeded();
  EXPECT_THAT(visibleTexts(), ElementsAre("p", "q", "x"));
}

TEST_F(UITableViewUpdatesTest, AReloadedSectionMayHaveOtherRows) {
  const auto before = tokens(0);
  source->sections[0] = {"n"};
  table->reloadSections({0}, animation);
  table->layoutIfNeeded();
  EXPECT_THAT(tokens(0), ElementsAre(before[0]));
  EXPECT_THAT(visibleTexts(), ElementsAre("n", "x"));
}

TEST_F(UITableViewUpdatesTest, AReloadKeepsTheIdentitiesOfPlaces) {
  const auto before = tokens(0);
  source->sections[0] = {"other", "rows"};
  table->reloadData();
  EXPECT_THAT(tokens(0), ElementsAre(before[0], before[1]));
}

TEST_F(UITableViewUpdatesTest, AReloadKeepsTheIdentityOfWhatARowStandsFor) {
  class KnowingSource : public TextSource {
   public:
    Value identityForRowAtIndexPath(const Table&, IndexPath path) override { return textAt(path); }
  };
  const auto knowing = make<KnowingSource>();
  knowing->sections = {{"a", "b", "b"}, {"x"}};
  table->setDataSource(knowing);
  const auto before = tokens(0);
  const std::uint64_t other = table->rowToken({1, 0});
  knowing->sections = {{"b", "x", "new"}, {"a", "b"}};
  table->reloadData();
  EXPECT_EQ(table->rowToken({1, 0}), before[0]);
  EXPECT_EQ(table->rowToken({0, 0}), before[1]);
  EXPECT_EQ(table->rowToken({1, 1}), before[2]) << "the second row of the same name";
  EXPECT_EQ(table->rowToken({0, 1}), other);
  EXPECT_GT(table->rowToken({0, 2}), other) << "an identity is never reused";
}

TEST_F(UITableViewUpdatesTest, RowsAndViewsNeverShareAnIdentity) {
  std::set<std::uint64_t> all = {table->nodeIdentifier(), table->sectionToken(0),
                                 table->sectionToken(1)};
  for (const std::uint64_t token : tokens(0)) all.insert(token);
  for (const auto& cell : table->visibleCells()) all.insert(cell->nodeIdentifier());
  EXPECT_EQ(all.size(), 3U + 3U + 4U);
}

TEST_F(UITableViewUpdatesTest, UpdatesBeforeTheFirstQuestionNeedNoCounting) {
  const auto fresh = make<UITableView>();
  fresh->setDataSource(source);
  fresh->insertRowsAtIndexPaths({{0, 0}}, animation);
  EXPECT_EQ(fresh->numberOfRowsInSection(0), 3);
}

TEST_F(UITableViewUpdatesTest, AnEndWithoutABeginningDoesNothing) {
  table->endUpdates();
  EXPECT_EQ(table->numberOfRowsInSection(0), 3);
}

}  // namespace
}  // namespace uikit_test

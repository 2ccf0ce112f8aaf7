#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string text(IndexPath path) {
  return std::to_string(path.section) + "." + std::to_string(path.row);
}

// The data source and delegate of an editing table. Records its calls.
class EditingSource : public TextSource {
 public:
  bool canEditRowAtIndexPath(const Table&, IndexPath path) override { return path.row != 2; }
  bool canMoveRowAtIndexPath(const Table&, IndexPath) override { return true; }
  UITableViewCellEditingStyle editingStyleForRowAtIndexPath(const Table&, IndexPath path) override {
    return path.section == 0 ? UITableViewCellEditingStyle::deletion
                             : UITableViewCellEditingStyle::insertion;
  }
  void commitEditingStyle(const Table&, UITableViewCellEditingStyle style,
                          IndexPath path) override {
    calls.push_back("commit " + std::to_string(static_cast<int>(style)) + " " + text(path));
  }
  void moveRowAtIndexPath(const Table& table, IndexPath from, IndexPath to) override {
    calls.push_back("move " + text(from) + " " + text(to));
    if (follows) {
      const std::string moved = textAt(from);
      auto& rows = sections[static_cast<std::size_t>(from.section)];
      rows.erase(rows.begin() + from.row);
      auto& target = sections[static_cast<std::size_t>(to.section)];
      target.insert(target.begin() + to.row, moved);
    }
    if (reloads) table->reloadData();
  }
  void didSelectRowAtIndexPath(const Table&, IndexPath path) override {
    calls.push_back("select " + text(path));
  }
  void didDeselectRowAtIndexPath(const Table&, IndexPath path) override {
    calls.push_back("deselect " + text(path));
  }
  bool shouldHighlightRowAtIndexPath(const Table&, IndexPath path) override {
    return path.row != 3;
  }

  bool follows = true;
  bool reloads = false;
  std::vector<std::string> calls;
};

class UITableViewInteractionTest : public TableTest {
 protected:
  UITableViewInteractionTest() {
    editing->sections = {{"a", "b", "c", "d"}, {"x", "y"}};
    table->setDataSource(editing);
    table->setDelegate(editing);
    table->layoutIfNeeded();
  }

  std::shared_ptr<EditingSource> editing = make<EditingSource>();
};

TEST_F(UITableViewInteractionTest, ATapSelectsTheRowAndTellsTheDelegate) {
  EXPECT_TRUE(table->userTapRow({0, 1}));
  EXPECT_TRUE(table->cellForRowAtIndexPath({0, 1})->isSelected());
  EXPECT_TRUE(table->userTapRow({0, 0}));
  EXPECT_FALSE(table->cellForRowAtIndexPath({0, 1})->isSelected());
  EXPECT_THAT(editing->calls, ElementsAre("select 0.1", "deselect 0.1", "select 0.0"));
  EXPECT_EQ(table->indexPathForSelectedRow(), (IndexPath{0, 0}));
}

TEST_F(UITableViewInteractionTest, AProgramThatSelectsTellsNobody) {
  table->selectRowAtIndexPath({0, 1});
  table->deselectRowAtIndexPath({0, 1}, true);
  EXPECT_THAT(editing->calls, IsEmpty());
  EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
  table->selectRowAtIndexPath({7, 7});
  table->deselectRowAtIndexPath({7, 7});
  EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
}

TEST_F(UITableViewInteractionTest, ARowThatIsNotHighlightedTakesNoTap) {
  EXPECT_FALSE(table->userTapRow({0, 3}));
  EXPECT_FALSE(table->userTapRow({5, 0}));
  EXPECT_THAT(editing->calls, IsEmpty());
}

TEST_F(UITableViewInteractionTest, TheDelegateMaySelectAnotherRowOrNone) {
  class ChoosySource : public EditingSource {
   public:
    std::optional<IndexPath> willSelectRowAtIndexPath(const Table&, IndexPath path) override {
      if (path.row == 1) return std::nullopt;
      return IndexPath{path.section, path.row + 1};
    }
  };
  const auto choosy = make<ChoosySource>();
  choosy->sections = editing->sections;
  table->setDelegate(choosy);
  EXPECT_FALSE(table->userTapRow({0, 1}));
  EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
  EXPECT_TRUE(table->userTapRow({0, 0}));
  EXPECT_EQ(table->indexPathForSelectedRow(), (IndexPath{0, 1}));
  EXPECT_THAT(choosy->calls, ElementsAre("select 0.1"));
}

TEST_F(UITableViewInteractionTest, ADisabledCellTakesNoTap) {
  table->cellForRowAtIndexPath({0, 0})->setUserInteractionEnabled(false);
  EXPECT_FALSE(table->canUserSelectRow({0, 0}));
  EXPECT_TRUE(table->canUserSelectRow({0, 1}));
}

TEST_F(UITableViewInteractionTest, RowsAreSelectableDuringEditingOnlyWhereAllowed) {
  table->setEditing(true);
  EXPECT_FALSE(table->userTapRow({0, 0}));
  table->setAllowsSelectionDuringEditing(true);
  EXPECT_TRUE(table->userTapRow({0, 0}));
  table->setEditing(false);
  table->setAllowsSelection(false);
  EXPECT_FALSE(table->userTapRow({0, 0}));
}

TEST_F(UITableViewInteractionTest, ASelectionEndsWithAReload) {
  table->userTapRow({0, 0});
  table->reloadData();
  table->layoutIfNeeded();
  EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
  EXPECT_FALSE(table->cellForRowAtIndexPath({0, 0})->isSelected());
}

TEST_F(UITableViewInteractionTest, ThereIsNoEditingStyleOutsideOfEditing) {
  EXPECT_EQ(table->editingStyleForRow({0, 0}), UITableViewCellEditingStyle::none);
  EXPECT_FALSE(table->canMoveRow({0, 0}));
  EXPECT_FALSE(table->userCommitRow({0, 0}));
  EXPECT_FALSE(table->userMoveRow({0, 0}, {0, 1}));
}

TEST_F(UITableViewInteractionTest, TheControlOfARowCommitsItsStyle) {
  table->setEditing(true);
  EXPECT_TRUE(table->cellForRowAtIndexPath({0, 0})->isEditing());
  EXPECT_TRUE(table->userCommitRow({0, 1}));
  EXPECT_TRUE(table->userCommitRow({1, 0}));
  EXPECT_FALSE(table->userCommitRow({0, 2})) << "the row cannot be edited";
  EXPECT_FALSE(table->userCommitRow({0, 9}));
  EXPECT_THAT(editing->calls, ElementsAre("commit 1 0.1", "commit 2 1.0"));
}

TEST_F(UITableViewInteractionTest, ADraggedRowIsInItsPlaceBeforeTheDataSourceIsTold) {
  table->setEditing(true);
  const std::uint64_t token = table->rowToken({0, 0});
  EXPECT_TRUE(table->userMoveRow({0, 0}, {1, 2}));
  EXPECT_THAT(editing->calls, ElementsAre("move 0.0 1.2"));
  EXPECT_EQ(table->indexPathForRowToken(token), (IndexPath{1, 2}));
  EXPECT_EQ(table->numberOfRowsInSection(0), 3);
}

TEST_F(UITableViewInteractionTest, ARefusedMoveIsUndoneByTheReload) {
  table->setEditing(true);
  editing->follows = false;
  editing->reloads = true;
  EXPECT_TRUE(table->userMoveRow({0, 0}, {1, 0}));
  table->layoutIfNeeded();
  EXPECT_EQ(table->numberOfRowsInSection(0), 4);
  EXPECT_THAT(visibleTexts(), ElementsAre("a", "b", "c", "d"));
}

TEST_F(UITableViewInteractionTest, ADataSourceThatNeitherFollowsNorReloadsIsShownAsItIs) {
  table->setEditing(true);
  editing->follows = false;
  EXPECT_TRUE(table->userMoveRow({0, 0}, {1, 0}));
  EXPECT_EQ(table->numberOfRowsInSection(0), 4);
}

TEST_F(UITableViewInteractionTest, AMoveToNowhereIsRefused) {
  table->setEditing(true);
  EXPECT_FALSE(table->userMoveRow({0, 0}, {0, 4})) << "there are three places without it";
  EXPECT_FALSE(table->userMoveRow({0, 0}, {2, 0}));
  EXPECT_FALSE(table->userMoveRow({0, 0}, {1, 3}));
  EXPECT_THAT(editing->calls, IsEmpty());
  EXPECT_TRUE(table->userMoveRow({0, 0}, {0, 0}));
  EXPECT_THAT(editing->calls, IsEmpty()) << "a row that returns to its place has not moved";
}

TEST_F(UITableViewInteractionTest, ADelegateThatHasDiedIsNotAsked) {
  table->setDataSource(source);
  editing.reset();
  table->setEditing(true);
  EXPECT_EQ(table->editingStyleForRow({0, 0}), UITableViewCellEditingStyle::deletion);
  table->setEditing(false);
  EXPECT_TRUE(table->userTapRow({0, 0}));
}

}  // namespace
}  // namespace uikit_test

#include <functional>

#include "tests/modules/FavoritesFixture.h"

namespace zentrova::tests {
namespace {

using platform::Value;

class FavoritesEditing : public FavoritesTest {};

TEST_F(FavoritesEditing, FourthModuleIsAddedAtTheEndAndSaved) {
  openWith(arrayOf({"a", "b", "c"}));
  table->userCommitRow({1, 2});
  EXPECT_EQ(active(), (Texts{"A", "B", "C", "D"}));
  EXPECT_EQ(available(), (Texts{"F", "E"}));
  expectStored({"a", "b", "c", "d"});
  EXPECT_EQ(writes(), savedFiles);
}

TEST_F(FavoritesEditing, FifthModuleIsRefused) {
  openWith(arrayOf({"a", "b", "c", "d"}));
  table->userCommitRow({1, 0});
  table->userMoveRow({1, 1}, {0, 0});
  EXPECT_EQ(active(), (Texts{"A", "B", "C", "D"}));
  EXPECT_EQ(available(), (Texts{"F", "E"}));
  EXPECT_EQ(writes(), Texts());
}

// Removals are saved only at three; additions at three and four.
TEST_F(FavoritesEditing, RemovalBelowThreeIsShownAndNotSaved) {
  openWith(arrayOf({"a", "b", "c", "d"}));
  table->userCommitRow({0, 0});
  expectStored({"b", "c", "d"});
  EXPECT_EQ(writes(), savedFiles);
  table->userCommitRow({0, 1});
  EXPECT_EQ(active(), (Texts{"B", "D"}));
  EXPECT_EQ(writes(), Texts());
  expectStored({"b", "c", "d"});
  table->userCommitRow({1, 0});
  expectStored({"b", "d", "f"});
  EXPECT_EQ(writes(), savedFiles);
}

TEST_F(FavoritesEditing, AdditionBelowThreeReachesTheConfigurationOnly) {
  openWith(arrayOf({"a"}));
  table->userCommitRow({1, 0});
  EXPECT_EQ(active(), (Texts{"A", "F"}));
  expectStored({"a"});
  EXPECT_EQ(writes(), Texts{std::string(configurationPath)});
  EXPECT_EQ(configured(), Value(arrayOf({"b", "a", "f"})));
}

TEST_F(FavoritesEditing, RemovalFromAStoredListOfFiveIsNotSaved) {
  openWith(arrayOf({"a", "b", "c", "d", "e"}));
  table->userCommitRow({1, 0});
  EXPECT_EQ(writes(), Texts());
  table->userCommitRow({0, 4});
  EXPECT_EQ(active(), (Texts{"A", "B", "C", "D"}));
  EXPECT_EQ(writes(), Texts());
  expectStored({"a", "b", "c", "d", "e"});
}

TEST_F(FavoritesEditing, SectionDecidesAndNotTheStyle) {
  openWith(arrayOf({"a", "b", "c", "d"}));
  page->commitEditingStyle(table, platform::UITableViewCellEditingStyle::insertion, {0, 0});
  expectStored({"b", "c", "d"});
  page->commitEditingStyle(table, platform::UITableViewCellEditingStyle::deletion, {1, 0});
  expectStored({"b", "c", "d", "f"});
}

TEST_F(FavoritesEditing, ReorderLogsBothRowsAndSaves) {
  openWith(arrayOf({"a", "b", "c"}));
  logLines();
  table->userMoveRow({0, 0}, {0, 2});
  EXPECT_EQ(logLines(), (Texts{"[Zentrova] source: a", "[Zentrova] destination: c"}));
  EXPECT_EQ(active(), (Texts{"B", "C", "A"}));
  expectStored({"b", "c", "a"});
  EXPECT_EQ(writes(), savedFiles);
}

// A reorder is not stored if there are too few or too many favourites.
TEST_F(FavoritesEditing, ReorderOfAnotherCountReachesTheConfigurationOnly) {
  for (const Texts& favorites : {Texts{"a", "c"}, Texts{"a", "c", "d", "e", "f"}}) {
    configure(arrayOf({"b"}));
    openWith(arrayOf(favorites));
    table->userMoveRow({0, 1}, {0, 0});
    EXPECT_EQ(active()[0], "C");
    expectStored(favorites);
    EXPECT_EQ(writes(), Texts{std::string(configurationPath)});
    EXPECT_EQ(configured().asArray()->size(), favorites.size() + 1);
  }
}

TEST_F(FavoritesEditing, DropPositionAmongTheAvailableIsIgnored) {
  openWith(arrayOf({"a", "b", "c", "d"}));
  logLines();
  table->userMoveRow({0, 1}, {1, 0});
  EXPECT_EQ(active(), (Texts{"A", "C", "D"}));
  EXPECT_EQ(available(), (Texts{"F", "E", "B"}));
  expectStored({"a", "c", "d"});
  EXPECT_EQ(writes(), savedFiles);
  table->userMoveRow({0, 0}, {1, 1});
  EXPECT_EQ(available(), (Texts{"F", "E", "B", "A"}));
  EXPECT_EQ(writes(), Texts());
  EXPECT_EQ(logLines(), Texts());
}

TEST_F(FavoritesEditing, AvailableModuleIsAddedWhereItIsDropped) {
  openWith(arrayOf({"a", "b", "c"}));
  table->userMoveRow({1, 1}, {0, 1});
  EXPECT_EQ(active(), (Texts{"A", "E", "B", "C"}));
  expectStored({"a", "e", "b", "c"});
  EXPECT_EQ(writes(), savedFiles);
}

// Even a rejected change reloads the table, which undoes it.
TEST_F(FavoritesEditing, TableIsReloadedAfterEveryEdit) {
  openWith(arrayOf({"a", "b", "c", "d"}));
  const auto reloads = [&](const std::function<void()>& edit) {
    const auto queries = neighbours->queries;
    edit();
    return neighbours->queries > queries;
  };
  const auto move = [&](platform::IndexPath from, platform::IndexPath to) {
    return reloads([&] { page->moveRowAtIndexPath(table, from, to); });
  };
  const auto commit = [&](platform::IndexPath row) {
    return reloads([&] { page->commitEditingStyle(table, table->editingStyleForRow(row), row); });
  };
  EXPECT_TRUE(commit({1, 0}));
  EXPECT_TRUE(move({1, 0}, {0, 0}));
  EXPECT_TRUE(move({1, 0}, {1, 1}));
  EXPECT_TRUE(move({0, 0}, {0, 1}));
  EXPECT_TRUE(move({0, 0}, {1, 1}));
  EXPECT_TRUE(commit({0, 0}));
}

TEST_F(FavoritesEditing, AvailableModulesKeepTheirOrder) {
  openWith(arrayOf({"a", "b", "c"}));
  table->userMoveRow({1, 0}, {1, 2});
  EXPECT_EQ(available(), (Texts{"F", "E", "D"}));
  EXPECT_EQ(writes(), Texts());
}

// Without a stored value there is no list to add to, which differs from an empty list.
TEST_F(FavoritesEditing, NothingCanBeAddedWithoutAStoredList) {
  open();
  EXPECT_TRUE(page->valueForKey("groupedIdentifiers").isNone());
  EXPECT_EQ(table->numberOfRowsInSection(0), 0);
  table->userCommitRow({1, 0});
  table->userMoveRow({1, 0}, {0, 0});
  EXPECT_EQ(active(), Texts());
  EXPECT_EQ(available(), (Texts{"F", "E", "D", "C", "B", "A"}));
  EXPECT_FALSE(process.tree().exists(test_support::TestProcess::preferencePath));
  EXPECT_EQ(configured(), Value(arrayOf({"b"})));
}

TEST_F(FavoritesEditing, EmptyStoredListCanBeFilled) {
  openWith(platform::Array{});
  for (int count = 0; count < 3; ++count) table->userCommitRow({1, 0});
  expectStored({"f", "e", "d"});
}

TEST_F(FavoritesEditing, StoredValueOfAnotherTypeIsNoListAndStays) {
  for (const Value& value : {Value("a"), Value(3), Value(platform::Dictionary{{"a", 1}})}) {
    openWith(value);
    EXPECT_EQ(table->numberOfRowsInSection(0), 0);
    table->userCommitRow({1, 0});
    EXPECT_EQ(stored("groupedIdentifiers"), value);
  }
}

// The table's rows are older than the repository's answer.
TEST_F(FavoritesEditing, ModuleThatVanishedIsNotAdded) {
  openWith(arrayOf({"a", "b", "c"}));
  neighbours->loadable = arrayOf({"a", "b", "c", "f"});
  table->userMoveRow({1, 2}, {0, 0});
  EXPECT_EQ(active(), (Texts{"A", "B", "C"}));
  EXPECT_EQ(available(), Texts{"F"});
  EXPECT_EQ(writes(), Texts());
}

class FavoritesConfiguration : public FavoritesTest {
 protected:
  // Saves the favourites "a", "b" and "c".
  void save() {
    openWith(arrayOf({"a", "b", "c"}));
    page->saveSettings();
    expectStored({"a", "b", "c"});
  }
};

TEST_F(FavoritesConfiguration, FavoritesAreAddedInOrderAndNothingIsRemoved) {
  configure(arrayOf({"z", "b", "y"}));
  save();
  EXPECT_EQ(configured(), Value(arrayOf({"z", "b", "y", "a", "c"})));
  EXPECT_EQ(inList(configurationPath, "version"), Value(3));
  table->userCommitRow({0, 0});
  table->userCommitRow({1, 0});
  EXPECT_EQ(configured(), Value(arrayOf({"z", "b", "y", "a", "c", "f"})));
}

TEST_F(FavoritesConfiguration, NoneIsAddedTwice) {
  openWith(arrayOf({"a", "a", "b", "a"}));
  page->saveSettings();
  EXPECT_EQ(configured(), Value(arrayOf({"b", "a"})));
}

TEST_F(FavoritesConfiguration, FileIsReadAfreshAtEverySave) {
  save();
  configure(arrayOf({"q"}));
  page->saveSettings();
  EXPECT_EQ(configured(), Value(arrayOf({"q", "a", "b", "c"})));
}

TEST_F(FavoritesConfiguration, MissingFileIsNotMade) {
  process.tree().remove(configurationPath);
  save();
  EXPECT_FALSE(process.tree().exists(configurationPath));
  EXPECT_TRUE(page->enabledIdentifiers().isNone());
}

TEST_F(FavoritesConfiguration, FileWithoutTheKeyStaysAsItIs) {
  writeList(configurationPath, {{"version", 3}});
  const auto before = process.tree().read(configurationPath);
  save();
  EXPECT_EQ(process.tree().read(configurationPath), before);
}

TEST_F(FavoritesConfiguration, KeyOfAnotherTypeStaysAsItIs) {
  for (const Value& value : {Value("a"), Value(1), Value(platform::Dictionary{})}) {
    configure(value);
    save();
    EXPECT_EQ(configured(), value);
    EXPECT_TRUE(page->enabledIdentifiers().isNone());
  }
}

TEST_F(FavoritesConfiguration, DamagedFileStaysAsItIs) {
  process.tree().write(configurationPath, "<plist><dict><key>module-");
  save();
  EXPECT_EQ(process.tree().read(configurationPath), "<plist><dict><key>module-");
}

TEST_F(FavoritesConfiguration, FailedWriteLeavesTheFileWhole) {
  openWith(arrayOf({"a", "b", "c"}));
  process.systemCalls().fail("renameat", 30, test_support::FaultySystemCalls::always);
  table->userMoveRow({0, 0}, {0, 1});
  EXPECT_EQ(active(), (Texts{"B", "A", "C"}));
  expectStored({"a", "b", "c"});
  EXPECT_EQ(configured(), Value(arrayOf({"b"})));
}

}  // namespace
}  // namespace zentrova::tests

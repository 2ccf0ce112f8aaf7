#include "tests/modules/ArrangeFixture.h"

namespace zentrova::tests {
namespace {

using platform::IndexPath;
using platform::UITableViewCellEditingStyle;
using platform::Value;

class ArrangeEditing : public ArrangeTest {
 protected:
  const Texts four{pinned, brightness, audio, media};

  // Records the order of the table's queries and the writes of the settings.
  class Recorder final : public platform::UITableViewDataSource {
   public:
    Recorder(std::shared_ptr<ZVRArrangeModulesViewController> page, Texts& events)
        : _page(std::move(page)), _events(events) {}
    std::int64_t numberOfSectionsInTableView(
        const std::shared_ptr<platform::UITableView>& tableView) override {
      _events.push_back("reload");
      return _page->numberOfSectionsInTableView(tableView);
    }
    std::int64_t numberOfRowsInSection(const std::shared_ptr<platform::UITableView>& tableView,
                                       std::int64_t section) override {
      return _page->numberOfRowsInSection(tableView, section);
    }
    std::shared_ptr<platform::UITableViewCell> cellForRowAtIndexPath(
        const std::shared_ptr<platform::UITableView>& tableView, IndexPath indexPath) override {
      return _page->cellForRowAtIndexPath(tableView, indexPath);
    }

   private:
    std::shared_ptr<ZVRArrangeModulesViewController> _page;
    Texts& _events;
  };

  void record() {
    recorder = std::make_shared<Recorder>(page, events);
    table->setDataSource(recorder);
    table->reloadData();
    process.files().addObserver([this](const platform::FileWrite&) { events.push_back("save"); });
    events.clear();
  }
  void expectEvents(const Texts& expected) {
    EXPECT_EQ(events, expected);
    events.clear();
  }

  Texts events;
  std::shared_ptr<Recorder> recorder;
};

TEST_F(ArrangeEditing, EnabledRowsAreDeletedAndDisabledOnesInserted) {
  open();
  for (std::int64_t row = 0; row < 4; ++row) {
    EXPECT_EQ(table->editingStyleForRow({0, row}), UITableViewCellEditingStyle::deletion);
    EXPECT_TRUE(table->canMoveRow({0, row}));
    EXPECT_TRUE(page->canEditRowAtIndexPath(table, {0, row}));
  }
  EXPECT_EQ(table->editingStyleForRow({1, 0}), UITableViewCellEditingStyle::insertion);
  EXPECT_TRUE(table->canMoveRow({1, 0}));
  EXPECT_TRUE(page->canEditRowAtIndexPath(table, {1, 0}));
}

TEST_F(ArrangeEditing, InsertedRowGoesToTheEndOfTheEnabledList) {
  openWith(arrayOf({pinned, power}));
  table->userCommitRow({1, 1});
  EXPECT_EQ(enabled(), (Texts{pinned, power, audio}));
  EXPECT_EQ(disabled(), (Texts{brightness, media}));
  expectSaved();
  EXPECT_EQ(rowsOf(table, 0), (Texts{"Connectivity & favorites modules", "Power module", "Audio"}));
}

TEST_F(ArrangeEditing, DeletedRowGoesToTheEndOfTheDisabledList) {
  open();
  table->userCommitRow({0, 1});
  EXPECT_EQ(enabled(), (Texts{pinned, audio, media}));
  EXPECT_EQ(disabled(), (Texts{power, brightness}));
  expectSaved();
  EXPECT_EQ(rowsOf(table, 1), (Texts{"Power module", "Brightness"}));
}

// Every style except deletion inserts.
TEST_F(ArrangeEditing, StyleNoneInserts) {
  open();
  page->commitEditingStyle(table, UITableViewCellEditingStyle::none, {0, 0});
  EXPECT_EQ(enabled(), (Texts{pinned, brightness, audio, media, power}));
  expectSaved();
}

TEST_F(ArrangeEditing, PinnedRowCannotBeDeleted) {
  open();
  record();
  page->commitEditingStyle(table, UITableViewCellEditingStyle::deletion, {0, 0});
  expectUntouched(four, {power});
  expectEvents({"reload"});
  EXPECT_FALSE(process.tree().exists(test_support::TestProcess::preferencePath));
}

TEST_F(ArrangeEditing, RowsOfTheEnabledListChangeTheirOrder) {
  open();
  table->userMoveRow({0, 0}, {0, 2});
  EXPECT_EQ(enabled(), (Texts{brightness, audio, pinned, media}));
  expectSaved();
  table->userMoveRow({0, 3}, {0, 0});
  EXPECT_EQ(enabled(), (Texts{media, brightness, audio, pinned}));
  expectSaved();
  EXPECT_EQ(rowsOf(table, 0),
            (Texts{"Media", "Brightness", "Audio", "Connectivity & favorites modules"}));
}

TEST_F(ArrangeEditing, DisabledRowIsEnabledWhereItIsDropped) {
  openWith(arrayOf({pinned, media}));
  table->userMoveRow({1, 2}, {0, 1});
  EXPECT_EQ(enabled(), (Texts{pinned, power, media}));
  EXPECT_EQ(disabled(), (Texts{brightness, audio}));
  expectSaved();
  table->userMoveRow({1, 0}, {0, 0});
  EXPECT_EQ(enabled(), (Texts{brightness, pinned, power, media}));
  table->userMoveRow({1, 0}, {0, 4});
  EXPECT_EQ(enabled(), (Texts{brightness, pinned, power, media, audio}));
  EXPECT_EQ(disabled(), Texts());
}

TEST_F(ArrangeEditing, EnabledRowIsDisabledWhereItIsDropped) {
  openWith(arrayOf({pinned, brightness, audio}));
  table->userMoveRow({0, 1}, {1, 1});
  EXPECT_EQ(enabled(), (Texts{pinned, audio}));
  EXPECT_EQ(disabled(), (Texts{media, brightness, power}));
  expectSaved();
  table->userMoveRow({0, 1}, {1, 0});
  EXPECT_EQ(enabled(), Texts{pinned});
  EXPECT_EQ(disabled(), (Texts{audio, media, brightness, power}));
  expectSaved();
}

TEST_F(ArrangeEditing, PinnedRowGoesBackFromTheDisabledList) {
  open();
  record();
  page->moveRowAtIndexPath(table, {0, 0}, {1, 1});
  expectUntouched(four, {power});
  expectEvents({"reload"});
  EXPECT_EQ(rowsOf(table, 1), Texts{"Power module"});
}

TEST_F(ArrangeEditing, DisabledListKeepsItsOrder) {
  openWith(arrayOf({pinned}));
  record();
  page->moveRowAtIndexPath(table, {1, 0}, {1, 2});
  expectUntouched({pinned}, {brightness, audio, media, power});
  expectEvents({"reload"});
  EXPECT_EQ(rowsOf(table, 1), (Texts{"Brightness", "Audio", "Media", "Power module"}));
}

TEST_F(ArrangeEditing, ControlsSaveBeforeTheTableIsReloaded) {
  open();
  record();
  page->commitEditingStyle(table, UITableViewCellEditingStyle::deletion, {0, 1});
  expectEvents({"save", "reload"});
  page->commitEditingStyle(table, UITableViewCellEditingStyle::insertion, {1, 0});
  expectEvents({"save", "reload"});
}

TEST_F(ArrangeEditing, MovesSaveAfterTheTableIsReloaded) {
  open();
  record();
  for (const auto& [from, to] : std::vector<std::pair<IndexPath, IndexPath>>{
           {{0, 0}, {0, 1}}, {{1, 0}, {0, 0}}, {{0, 0}, {1, 0}}}) {
    page->moveRowAtIndexPath(table, from, to);
    expectEvents({"reload", "save"});
  }
}

TEST_F(ArrangeEditing, MoveOfAnotherSectionChangesNothing) {
  open();
  record();
  page->moveRowAtIndexPath(table, {0, 1}, {2, 0});
  page->moveRowAtIndexPath(table, {2, 0}, {0, 0});
  page->moveRowAtIndexPath(table, {-1, 0}, {1, 0});
  expectUntouched(four, {power});
  expectEvents({});
}

// The lists have no limits except for the pinned entry.
TEST_F(ArrangeEditing, AllMayBeEnabledAndAllOthersDisabled) {
  open();
  table->userCommitRow({1, 0});
  EXPECT_EQ(enabled(), (Texts{pinned, brightness, audio, media, power}));
  for (int count = 0; count < 4; ++count) table->userCommitRow({0, 1});
  EXPECT_EQ(enabled(), Texts{pinned});
  EXPECT_EQ(disabled(), (Texts{brightness, audio, media, power}));
  EXPECT_EQ(stored("moduleConfig"), Value(arrayOf({pinned})));
}

TEST_F(ArrangeEditing, OtherKeysOfTheSettingsStay) {
  writeList(test_support::TestProcess::preferencePath, {{"enabled", false}, {"other", "x"}});
  open();
  table->userCommitRow({1, 0});
  EXPECT_EQ(stored("enabled"), Value(false));
  EXPECT_EQ(stored("other"), Value("x"));
}

TEST_F(ArrangeEditing, FailedWriteLeavesTheChangeOnThePage) {
  open();
  process.systemCalls().fail("renameat", 28, test_support::FaultySystemCalls::always);
  table->userCommitRow({1, 0});
  EXPECT_EQ(enabled(), (Texts{pinned, brightness, audio, media, power}));
  EXPECT_FALSE(process.tree().exists(test_support::TestProcess::preferencePath));
}

}  // namespace
}  // namespace zentrova::tests

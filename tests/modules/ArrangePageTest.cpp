#include "tests/modules/ArrangeFixture.h"

namespace zentrova::tests {
namespace {

class ArrangePage : public ArrangeTest {
 protected:
  // Whether each row has the chevron, over both sections.
  Texts namesWithChevron() {
    Texts names;
    for (std::int64_t section = 0; section < 2; ++section) {
      for (std::int64_t row = 0; row < table->numberOfRowsInSection(section); ++row) {
        const auto cell = cellAt(table, section, row);
        const auto view =
            std::dynamic_pointer_cast<platform::UIImageView>(cell->editingAccessoryView());
        if (!view) continue;
        EXPECT_EQ(view->image()->contentHash(), cell->disclosureChevronImage()->contentHash());
        names.push_back(cell->textLabel()->text().value_or(""));
      }
    }
    return names;
  }
  std::optional<std::string> plistNameOnTop() {
    const auto top =
        std::dynamic_pointer_cast<ZVRManageModuleViewController>(navigation->topViewController());
    return top ? top->plistName() : std::nullopt;
  }
};

TEST_F(ArrangePage, IsATableThatIsAlwaysBeingEdited) {
  open();
  expectEditingPage(page, table);
  // The product shows the title with this spelling.
  EXPECT_EQ(page->title(), "Arrage modules");
  EXPECT_TRUE(table->allowsSelectionDuringEditing());
  EXPECT_EQ(page->preferences()->identifier_rl(), "com.hollowmere.zentrovaprefs");
  EXPECT_EQ(table->dataSource(), page);
  EXPECT_EQ(table->tableDelegate(), page);
}

TEST_F(ArrangePage, SectionsHaveHeadersAndNoFooters) {
  open();
  EXPECT_EQ(table->headerTitle(0), "Enabled modules:");
  EXPECT_EQ(table->headerTitle(1), "Disabled modules:");
  EXPECT_EQ(page->titleForHeaderInSection(table, 5), "Disabled modules:");
  EXPECT_EQ(table->footerTitle(0), std::nullopt);
  EXPECT_EQ(table->footerTitle(1), std::nullopt);
}

TEST_F(ArrangePage, RowsWithSettingsCarryTheChevronInEitherSection) {
  openWith(arrayOf({brightness, pinned, audio}));
  EXPECT_EQ(namesWithChevron(),
            (Texts{"Connectivity & favorites modules", "Media", "Power module"}));
  table->userMoveRow({1, 1}, {0, 0});
  table->userCommitRow({0, 1});
  EXPECT_EQ(namesWithChevron(),
            (Texts{"Power module", "Connectivity & favorites modules", "Media"}));
}

TEST_F(ArrangePage, NoOtherAccessoryIsSet) {
  open();
  const auto cell = cellAt(table, 0, 0);
  EXPECT_EQ(cell->accessoryView(), nullptr);
  EXPECT_EQ(cell->accessoryType(), platform::UITableViewCellAccessoryType::none);
  EXPECT_EQ(cell->editingAccessoryType(), platform::UITableViewCellAccessoryType::none);
}

TEST_F(ArrangePage, ReusedCellLosesItsChevron) {
  open();
  page->setDisabledModuleIdentifiers(platform::Array{});
  page->setEnabledModuleIdentifiers(arrayOf({media}));
  table->reloadData();
  const auto cell = cellAt(table, 0, 0);
  const auto chevron = cell->editingAccessoryView();
  ASSERT_TRUE(chevron);
  EXPECT_EQ(chevron->superview(), cell);
  // Enough rows to reuse every cell in the pool.
  page->setEnabledModuleIdentifiers(arrayOf(Texts(8, audio)));
  table->reloadData();
  EXPECT_EQ(rowsOf(table, 0), Texts(8, "Audio"));
  EXPECT_TRUE(table->indexPathForCell(cell));
  EXPECT_EQ(cell->editingAccessoryView(), nullptr);
  EXPECT_EQ(chevron->superview(), nullptr);
}

TEST_F(ArrangePage, RowsWithSettingsOpenTheirPage) {
  open();
  for (const auto& [path, name] : std::vector<std::pair<platform::IndexPath, std::string>>{
           {{0, 0}, "ConnectivityFavoritesModule"},
           {{0, 3}, "MediaModule"},
           {{1, 0}, "PowerModule"}}) {
    EXPECT_TRUE(table->userTapRow(path));
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(navigation->viewControllers().size(), 2U);
    EXPECT_EQ(plistNameOnTop(), name);
    navigation->popViewControllerAnimated(false);
  }
}

// Records how it was covered.
class CoveredArrangePage : public ZVRArrangeModulesViewController {
 public:
  void viewWillDisappear(bool animated) override { animations.push_back(animated); }
  std::vector<bool> animations;
};

TEST_F(ArrangePage, SettingsSlideIn) {
  const auto covered = platform::make<CoveredArrangePage>();
  show(covered);
  EXPECT_TRUE(covered->tableView()->userTapRow({0, 0}));
  EXPECT_EQ(covered->animations, std::vector<bool>{true});
}

TEST_F(ArrangePage, OtherRowsAreOnlyDeselected) {
  openWith(arrayOf({pinned, brightness, audio, "com.example.Other"}));
  for (std::int64_t row = 1; row < 4; ++row) {
    EXPECT_TRUE(table->userTapRow({0, row}));
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(navigation->topViewController(), page);
  }
}

TEST_F(ArrangePage, IsReleasedWhenItIsLeft) {
  open();
  leave();
  const auto before = platform::Object::liveCount();
  open();
  table->userMoveRow({1, 0}, {0, 0});
  leave();
  EXPECT_EQ(platform::Object::liveCount(), before);
}

}  // namespace
}  // namespace zentrova::tests

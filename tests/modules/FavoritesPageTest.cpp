#include "platform/foundation/objects/MutableDictionary.h"
#include "tests/modules/FavoritesFixture.h"

namespace zentrova::tests {
namespace {

using platform::Array;
using platform::Value;

constexpr const char* nothingHere = "Nothing here? Please try doing a ldrestart.";

class FavoritesPage : public FavoritesTest {};

TEST_F(FavoritesPage, IsATableThatIsAlwaysBeingEdited) {
  openWith(arrayOf({"a", "b", "c"}));
  expectEditingPage(page, table);
  EXPECT_EQ(page->title(), "Favorite modules");
  EXPECT_FALSE(table->allowsSelectionDuringEditing());
  EXPECT_FALSE(table->userTapRow({0, 0}));
  EXPECT_EQ(table->dataSource(), page);
  EXPECT_EQ(table->tableDelegate(), page);
}

TEST_F(FavoritesPage, ListsFavoritesInTheirOrderAndTheOthersInTheRepositorys) {
  openWith(arrayOf({"c", "a", "b"}));
  EXPECT_EQ(active(), (Texts{"C", "A", "B"}));
  EXPECT_EQ(available(), (Texts{"F", "E", "D"}));
  EXPECT_EQ(table->headerTitle(0), "Active modules (min 3, max 4)");
  EXPECT_EQ(table->headerTitle(1), "Available modules");
  EXPECT_EQ(table->footerTitle(0), "");
  EXPECT_EQ(table->footerTitle(1), "");
  EXPECT_EQ(writes(), Texts());
}

TEST_F(FavoritesPage, SectionDecidesTheControl) {
  openWith(arrayOf({"a", "b", "c"}));
  using enum platform::UITableViewCellEditingStyle;
  EXPECT_EQ(table->editingStyleForRow({0, 2}), deletion);
  EXPECT_EQ(table->editingStyleForRow({1, 0}), insertion);
  EXPECT_TRUE(table->canMoveRow({0, 0}));
  EXPECT_TRUE(table->canMoveRow({1, 0}));
}

TEST_F(FavoritesPage, RowsShowTheirIcon) {
  openWith(arrayOf({"c", "gone", "b"}));
  EXPECT_EQ(cellAt(table, 0, 0)->imageView()->image()->symbolName(), "icon.C");
  EXPECT_EQ(cellAt(table, 0, 1)->imageView()->image(), nullptr);
  EXPECT_EQ(cellAt(table, 1, 0)->imageView()->image()->symbolName(), "icon.F");
}

TEST_F(FavoritesPage, FavoriteThatIsNotInstalledIsListedByItsIdentifier) {
  openWith(arrayOf({"a", "com.example.gone", "c", "b"}));
  EXPECT_EQ(active(), (Texts{"A", "com.example.gone (not installed)", "C", "B"}));
  table->userMoveRow({0, 1}, {0, 0});
  expectStored({"com.example.gone", "a", "c", "b"});
  table->userCommitRow({0, 0});
  expectStored({"a", "c", "b"});
}

// An available module without a description keeps the cell's text, but not its image.
TEST_F(FavoritesPage, AvailableRowWithoutDescriptionKeepsTheTextOfItsCell) {
  neighbours->loadable = arrayOf({"d"});
  open();
  const auto cell = cellAt(table, 1, 0);
  EXPECT_EQ(cell->textLabel()->text(), "D");
  page->setModuleDescriptionByIdentifier(platform::Dictionary{});
  table->reloadData();
  ASSERT_EQ(cellAt(table, 1, 0), cell);
  EXPECT_EQ(cell->textLabel()->text(), "D");
  EXPECT_EQ(cell->imageView()->image(), nullptr);
}

TEST_F(FavoritesPage, FooterOfTheEmptyAvailableSectionSaysWhatToDo) {
  neighbours->loadable = arrayOf({"a", "b", "c", "x"});
  openWith(arrayOf({"a", "b", "c"}));
  EXPECT_EQ(table->footerTitle(0), "");
  EXPECT_EQ(table->footerTitle(1), nothingHere);
  EXPECT_EQ(page->titleForFooterInSection(table, 2), "");
}

TEST_F(FavoritesPage, InstalledModulesAreAskedForAtEveryQuery) {
  openWith(arrayOf({"a", "b", "c"}));
  neighbours->loadable = arrayOf({"a", "e"});
  EXPECT_EQ(page->allIdentifiers(), Value(arrayOf({"a", "e"})));
  EXPECT_EQ(page->nonGroupedIdentifiers(), Value(arrayOf({"e"})));
  table->reloadData();
  EXPECT_EQ(available(), Texts{"E"});
  neighbours->forbidden = arrayOf({"e"});
  EXPECT_EQ(page->nonGroupedIdentifiers(), Value(Array{}));
}

TEST_F(FavoritesPage, FavoritesAndDescriptionsAreReadOnce) {
  openWith(arrayOf({"a", "b", "c"}));
  store("groupedIdentifiers", arrayOf({"d", "e", "f"}));
  neighbours->descriptions = {};
  table->reloadData();
  EXPECT_EQ(active(), (Texts{"A", "B", "C"}));
}

TEST_F(FavoritesPage, PropertiesCanBeSetByName) {
  openWith(arrayOf({"a", "b", "c"}));
  page->setValueForKey(arrayOf({"x", "a", "f"}), "allIdentifiers");
  page->setValueForKey(arrayOf({"f"}), "groupedIdentifiers");
  EXPECT_EQ(page->valueForKey("nonGroupedIdentifiers"), Value(arrayOf({"x", "a"})));
  page->setValueForKey({}, "allIdentifiers");
  EXPECT_EQ(page->valueForKey("allIdentifiers"), Value(arrayOf({"f", "e", "d", "c", "b", "a"})));
  EXPECT_TRUE(page->valueForKey("disabledIdentifiers").isNone());
  page->setValueForKey(arrayOf({"q"}), "disabledIdentifiers");
  EXPECT_EQ(page->valueForKey("disabledIdentifiers"), Value(arrayOf({"q"})));
}

// The system's map may be mutable.
TEST_F(FavoritesPage, DescriptionsMayBeAMutableDictionary) {
  openWith(arrayOf({"a", "b", "c"}));
  const auto descriptions = std::make_shared<platform::MutableDictionary>(
      platform::Dictionary{{"a", std::make_shared<ModuleDescription>("Other A")}});
  page->setValueForKey(Value(descriptions), "moduleDescriptionByIdentifier");
  table->reloadData();
  EXPECT_EQ(active(), (Texts{"Other A", "b (not installed)", "c (not installed)"}));
}

TEST_F(FavoritesPage, LoadedModulesAreReadOnce) {
  open();
  EXPECT_EQ(page->enabledIdentifiers(), Value(arrayOf({"b"})));
  configure(arrayOf({"c"}));
  EXPECT_EQ(page->enabledIdentifiers(), Value(arrayOf({"b"})));
}

TEST_F(FavoritesPage, NothingIsInstalledBeforeSystem15) {
  process.traits().systemVersion = {14, 8, 1};
  openWith(arrayOf({"a", "b", "c"}));
  EXPECT_EQ(active(), (Texts{"A", "B", "C"}));
  EXPECT_EQ(available(), Texts());
  EXPECT_EQ(table->footerTitle(1), nothingHere);
  EXPECT_TRUE(page->allIdentifiers().isNone());
  EXPECT_EQ(page->nonGroupedIdentifiers(), Value(Array{}));
  process.traits().systemVersion = {15, 0, 0};
  table->reloadData();
  EXPECT_EQ(available(), (Texts{"F", "E", "D"}));
}

TEST_F(FavoritesPage, ModulesThatWereSetAreListedBeforeSystem15) {
  process.traits().systemVersion = {13, 7, 0};
  page = platform::make<ZVRFavoriteModules>();
  page->setAllIdentifiers(arrayOf({"d"}));
  EXPECT_EQ(page->allIdentifiers(), Value(arrayOf({"d"})));
}

TEST_F(FavoritesPage, SettingsControllerHasAnotherNameBeforeSystem14) {
  process.traits().systemVersion = {14, 0, 0};
  openWith(arrayOf({"a", "b", "c"}));
  EXPECT_EQ(active(), (Texts{"A", "B", "C"}));
  process.traits().systemVersion = {13, 7, 0};
  open();
  EXPECT_EQ(active(), (Texts{"Old A", "b (not installed)", "c (not installed)"}));
}

TEST_F(FavoritesPage, MissingRepositoriesLeaveNothingAvailable) {
  for (const char* name : {"CCSModuleRepository", "ZVModuleRepository"}) {
    process.classes().remove(name);
    openWith(arrayOf({"a", "b", "c"}));
    EXPECT_EQ(available(), Texts()) << name;
    EXPECT_EQ(table->footerTitle(1), nothingHere);
  }
}

TEST_F(FavoritesPage, EitherMissingRepositoryIsEnough) {
  process.classes().remove("ZVModuleRepository");
  open();
  EXPECT_EQ(page->allIdentifiers(), Value(Array{}));
}

TEST_F(FavoritesPage, MissingSettingsControllerMeansNotInstalled) {
  process.classes().remove("CCUISettingsListController");
  openWith(arrayOf({"a", "b", "c"}));
  EXPECT_EQ(active(), (Texts{"a (not installed)", "b (not installed)", "c (not installed)"}));
  EXPECT_TRUE(page->moduleDescriptionByIdentifier().isNone());
}

TEST_F(FavoritesPage, OddElementsAreRowsThatCanBeRemoved) {
  openWith(Array{7, "a", Array{"b"}, "a"});
  EXPECT_EQ(active()[0], "7 (not installed)");
  EXPECT_EQ(active()[3], "A");
  table->userCommitRow({0, 2});
  EXPECT_EQ(stored("groupedIdentifiers"), Value(Array{7, "a", "a"}));
  EXPECT_EQ(configured(), Value(Array{"b", 7, "a"}));
}

// The cost of a table of a thousand rows: each query asks the repository once, and only visible
// rows are queried.
TEST_F(FavoritesPage, RowsOutOfSightAreNotAskedFor) {
  Texts many;
  for (int index = 0; index < 1000; ++index) many.push_back("module" + std::to_string(index));
  neighbours->loadable = arrayOf(many);
  openWith(arrayOf({"a", "b", "c"}));
  EXPECT_EQ(table->numberOfRowsInSection(1), 1000);
  const auto cells = static_cast<int>(table->visibleCells().size());
  EXPECT_GT(cells, 10);
  EXPECT_LT(cells, 40);
  // The rows, the footer, and each cell of the section.
  EXPECT_EQ(neighbours->queries, 2 + cells - 3);
  const int before = neighbours->queries;
  EXPECT_EQ(page->nonGroupedIdentifiers().asArray()->size(), 1000U);
  EXPECT_EQ(neighbours->queries, before + 1);
}

// Other programs can store thousands of favourites.
TEST_F(FavoritesPage, ThousandsOfFavoritesStayUsable) {
  Texts many{"a"};
  for (int index = 0; index < 5000; ++index) many.push_back("gone" + std::to_string(index));
  openWith(arrayOf(many));
  EXPECT_EQ(table->numberOfRowsInSection(0), 5001);
  EXPECT_TRUE(table->userMoveRow({0, 5000}, {0, 0}));
  EXPECT_EQ(cellAt(table, 0, 0)->textLabel()->text(), "gone4999 (not installed)");
  EXPECT_EQ(configured().asArray()->size(), 5002U);
  EXPECT_EQ(stored("groupedIdentifiers"), Value(arrayOf(many)));
}

TEST_F(FavoritesPage, FavoriteThatIsThereTwiceIsTwoRows) {
  openWith(arrayOf({"a", "b", "a"}));
  EXPECT_EQ(active(), (Texts{"A", "B", "A"}));
  EXPECT_NE(table->rowToken({0, 0}), table->rowToken({0, 2}));
  table->userCommitRow({0, 2});
  EXPECT_EQ(active(), (Texts{"A", "B"}));
  EXPECT_EQ(available(), (Texts{"F", "E", "D", "C"}));
}

// Modules have disappeared since the table counted its rows.
TEST_F(FavoritesPage, RowOfAModuleThatVanishedHasNoTextAndStays) {
  openWith(arrayOf({"a", "b", "c"}));
  neighbours->loadable = arrayOf({"a", "b", "c", "f"});
  const auto cell = page->cellForRowAtIndexPath(table, {1, 2});
  EXPECT_EQ(cell->textLabel()->text(), std::nullopt);
  EXPECT_EQ(cell->imageView()->image(), nullptr);
  EXPECT_EQ(table->numberOfRowsInSection(1), 3);
}

TEST_F(FavoritesPage, IsReleasedWhenItIsLeft) {
  openWith(arrayOf({"a", "b", "c"}));
  leave();
  const auto before = platform::Object::liveCount();
  openWith(arrayOf({"a", "b", "c"}));
  table->userMoveRow({1, 0}, {0, 0});
  leave();
  EXPECT_EQ(platform::Object::liveCount(), before);
}

TEST_F(FavoritesPage, LongAndRightToLeftNamesAreShownWhole) {
  const std::string name = "\u05e9\u05dc\u05d5\u05dd" + std::string(10000, 'n');
  neighbours->descriptions = platform::Dictionary{{"a", std::make_shared<ModuleDescription>(name)}};
  openWith(arrayOf({"a", "b", "c"}));
  EXPECT_EQ(cellAt(table, 0, 0)->textLabel()->text(), name);
}

}  // namespace
}  // namespace zentrova::tests

#include "tests/modules/ArrangeFixture.h"

namespace zentrova::tests {
namespace {

using platform::Array;
using platform::Value;

class ArrangeLists : public ArrangeTest {};

TEST_F(ArrangeLists, CatalogueHoldsFiveEntriesInItsOrder) {
  const Value identifiers =
      process.classes().find("ZVRArrangeModulesViewController")->perform("zvModuleIdentifiers");
  EXPECT_EQ(textsOf(identifiers), (Texts{"com.hollowmere.ZentrovaModule.ConnectivityModule,"
                                         "com.hollowmere.ZentrovaModule.GroupedTogglesModule",
                                         "com.hollowmere.ZentrovaModule.DisplaySliderModule",
                                         "com.hollowmere.ZentrovaModule.AudioSliderModule",
                                         "com.hollowmere.ZentrovaModule.MediaModule",
                                         "com.hollowmere.ZentrovaModule.PowerModule"}));
}

TEST_F(ArrangeLists, EntriesHaveTheirNames) {
  open();
  const auto name = [this](const Value& entry) {
    return page->perform("moduleDisplayNameForIdentifier:", {entry});
  };
  EXPECT_EQ(name(pinned), Value("Connectivity & favorites modules"));
  EXPECT_EQ(name(brightness), Value("Brightness"));
  EXPECT_EQ(name(audio), Value("Audio"));
  EXPECT_EQ(name(media), Value("Media"));
  EXPECT_EQ(name(power), Value("Power module"));
  EXPECT_TRUE(name("com.hollowmere.ZentrovaModule.ConnectivityModule").isNone());
  EXPECT_TRUE(name("COM.HOLLOWMERE.ZENTROVAMODULE.POWERMODULE").isNone());
  EXPECT_TRUE(name(7).isNone());
  EXPECT_TRUE(name({}).isNone());
}

TEST_F(ArrangeLists, ThreeEntriesHaveSettings) {
  open();
  const auto hasSettings = [this](const Value& entry) {
    return page->perform("moduleHasSettingsWithID:", {entry}).boolValue();
  };
  EXPECT_TRUE(hasSettings(pinned));
  EXPECT_TRUE(hasSettings(media));
  EXPECT_TRUE(hasSettings(power));
  EXPECT_FALSE(hasSettings(brightness));
  EXPECT_FALSE(hasSettings(audio));
  EXPECT_FALSE(hasSettings("a,b"));
  EXPECT_FALSE(hasSettings({}));
}

TEST_F(ArrangeLists, FirstVisitShowsThePowerModuleDisabled) {
  open();
  EXPECT_EQ(rowsOf(table, 0),
            (Texts{"Connectivity & favorites modules", "Brightness", "Audio", "Media"}));
  EXPECT_EQ(rowsOf(table, 1), Texts{"Power module"});
  EXPECT_EQ(writes(), Texts());
}

TEST_F(ArrangeLists, StoredOrderIsShown) {
  openWith(arrayOf({media, pinned, power}));
  EXPECT_EQ(rowsOf(table, 0), (Texts{"Media", "Connectivity & favorites modules", "Power module"}));
  EXPECT_EQ(rowsOf(table, 1), (Texts{"Brightness", "Audio"}));
}

// The pinned entry is inserted at the front, in memory only; the next save stores it.
TEST_F(ArrangeLists, MissingPinnedEntryIsRepairedWithTheNextSave) {
  openWith(arrayOf({power}));
  EXPECT_EQ(rowsOf(table, 0), (Texts{"Connectivity & favorites modules", "Power module"}));
  EXPECT_EQ(rowsOf(table, 1), (Texts{"Brightness", "Audio", "Media"}));
  EXPECT_EQ(writes(), Texts());
  EXPECT_EQ(stored("moduleConfig"), Value(arrayOf({power})));
  table->userCommitRow({1, 0});
  EXPECT_EQ(stored("moduleConfig"), Value(arrayOf({pinned, power, brightness})));
}

TEST_F(ArrangeLists, EmptyListLeavesThePinnedEntryAlone) {
  openWith(Array{});
  EXPECT_EQ(enabled(), Texts{pinned});
  EXPECT_EQ(disabled(), (Texts{brightness, audio, media, power}));
}

// One of the two joined identifiers alone is not the pinned entry.
TEST_F(ArrangeLists, HalfOfThePinnedEntryDoesNotCount) {
  openWith(arrayOf({"com.hollowmere.ZentrovaModule.ConnectivityModule"}));
  EXPECT_EQ(enabled(), (Texts{pinned, "com.hollowmere.ZentrovaModule.ConnectivityModule"}));
}

TEST_F(ArrangeLists, UnknownTextIsARowWithoutTextOrChevron) {
  openWith(arrayOf({pinned, "com.example.Other", audio}));
  EXPECT_EQ(rowsOf(table, 0), (Texts{"Connectivity & favorites modules", "(null)", "Audio"}));
  EXPECT_EQ(cellAt(table, 0, 1)->editingAccessoryView(), nullptr);
}

// Saves keep it in place. It disappears when it is disabled, and does not come back.
TEST_F(ArrangeLists, UnknownTextLeavesTheStoreWhenItIsDisabled) {
  openWith(arrayOf({pinned, "com.example.Other", audio}));
  table->userMoveRow({0, 2}, {0, 0});
  EXPECT_EQ(stored("moduleConfig"), Value(arrayOf({audio, pinned, "com.example.Other"})));
  table->userCommitRow({0, 2});
  EXPECT_EQ(disabled(), (Texts{brightness, media, power, "com.example.Other"}));
  EXPECT_EQ(stored("moduleConfig"), Value(arrayOf({audio, pinned})));
  open();
  EXPECT_EQ(disabled(), (Texts{brightness, media, power}));
}

// Only the comma makes an entry pinned.
TEST_F(ArrangeLists, UnknownTextWithACommaCannotBeDisabled) {
  openWith(arrayOf({pinned, "a,b"}));
  table->userCommitRow({0, 1});
  table->userMoveRow({0, 1}, {1, 0});
  expectUntouched({pinned, "a,b"}, {brightness, audio, media, power});
}

TEST_F(ArrangeLists, OtherElementsAreRowsWithoutTextThatSavesKeep) {
  openWith(Array{7, pinned, Array{media}, true});
  EXPECT_EQ(rowsOf(table, 0),
            (Texts{"(null)", "Connectivity & favorites modules", "(null)", "(null)"}));
  table->userCommitRow({1, 1});
  EXPECT_EQ(stored("moduleConfig"), Value(Array{7, pinned, Array{media}, true, audio}));
  EXPECT_TRUE(table->userCommitRow({0, 0}));
  EXPECT_EQ(stored("moduleConfig"), Value(Array{pinned, Array{media}, true, audio}));
}

TEST_F(ArrangeLists, DuplicatesAreRowsOfTheirOwn) {
  openWith(arrayOf({audio, pinned, audio, pinned}));
  table->userCommitRow({0, 2});
  EXPECT_EQ(enabled(), (Texts{audio, pinned, pinned}));
  EXPECT_EQ(disabled(), (Texts{brightness, media, power, audio}));
  EXPECT_EQ(rowsOf(table, 1), (Texts{"Brightness", "Media", "Power module", "Audio"}));
}

// A stored value that is not an array counts as missing, and is kept until a change is accepted.
TEST_F(ArrangeLists, ValueOfAnotherTypeCountsAsNone) {
  for (const Value& value :
       {Value("text"), Value(3), Value(platform::Dictionary{{pinned, true}}), Value(false)}) {
    openWith(value);
    EXPECT_EQ(enabled(), (Texts{pinned, brightness, audio, media})) << value.description();
    EXPECT_EQ(disabled(), Texts{power});
    EXPECT_EQ(stored("moduleConfig"), value);
  }
}

TEST_F(ArrangeLists, ThousandsOfEntriesStayUsable) {
  Texts many;
  for (int index = 0; index < 5000; ++index) many.push_back("entry" + std::to_string(index));
  openWith(arrayOf(many));
  EXPECT_EQ(table->numberOfRowsInSection(0), 5001);
  EXPECT_TRUE(table->userMoveRow({0, 5000}, {0, 0}));
  EXPECT_EQ(enabled().front(), "entry4999");
  expectSaved();
}

// The store is read once; later changes of the file by other programs are not seen.
TEST_F(ArrangeLists, ListsAreKeptForTheLifeOfThePage) {
  open();
  store("moduleConfig", arrayOf({power}));
  table->reloadData();
  EXPECT_EQ(enabled(), (Texts{pinned, brightness, audio, media}));
}

// Without a store there is no enabled list, and none is kept.
TEST_F(ArrangeLists, NothingIsEnabledBeforeThePageHasAStore) {
  store("moduleConfig", arrayOf({pinned, power}));
  page = platform::make<ZVRArrangeModulesViewController>();
  EXPECT_TRUE(page->valueForKey("enabledModuleIdentifiers").isNone());
  EXPECT_EQ(page->numberOfRowsInSection(nullptr, 0), 0);
  page->perform("saveSettings", {});
  EXPECT_EQ(stored("moduleConfig"), Value(arrayOf({pinned, power})));
  page->view();
  EXPECT_EQ(enabled(), (Texts{pinned, power}));
}

// The disabled list is kept from its first use on, even if there is no store yet.
TEST_F(ArrangeLists, DisabledListOfAPageWithoutAStoreIsTheCatalogueAndStays) {
  page = platform::make<ZVRArrangeModulesViewController>();
  const Texts catalogue{pinned, brightness, audio, media, power};
  EXPECT_EQ(disabled(), catalogue);
  page->commitEditingStyle(nullptr, platform::UITableViewCellEditingStyle::insertion, {1, 0});
  page->moveRowAtIndexPath(nullptr, {1, 0}, {0, 0});
  EXPECT_EQ(disabled(), catalogue);
  page->view();
  EXPECT_EQ(disabled(), catalogue);
  EXPECT_EQ(enabled(), (Texts{pinned, brightness, audio, media}));
}

TEST_F(ArrangeLists, CanBeSetByName) {
  open();
  page->setValueForKey(arrayOf({power}), "enabledModuleIdentifiers");
  page->setValueForKey(arrayOf({media, audio}), "disabledModuleIdentifiers");
  table->reloadData();
  EXPECT_EQ(rowsOf(table, 0), Texts{"Power module"});
  EXPECT_EQ(rowsOf(table, 1), (Texts{"Media", "Audio"}));
  page->perform("saveSettings", {});
  EXPECT_EQ(stored("moduleConfig"), Value(arrayOf({power})));
}

// A list that is set to none is rebuilt on its next use.
TEST_F(ArrangeLists, AreBuiltAnewAfterNoneWasSet) {
  open();
  store("moduleConfig", arrayOf({power}));
  page->setPreferences(platform::make(&HBPreferences::initWithIdentifier,
                                      std::string("com.hollowmere.zentrovaprefs")));
  page->setValueForKey({}, "enabledModuleIdentifiers");
  page->setValueForKey({}, "disabledModuleIdentifiers");
  EXPECT_EQ(enabled(), (Texts{pinned, power}));
  EXPECT_EQ(disabled(), (Texts{brightness, audio, media}));
}

// The disabled list's order lives as long as the page.
TEST_F(ArrangeLists, NewPageShowsTheDisabledListInCatalogueOrder) {
  open();
  table->userCommitRow({0, 1});
  EXPECT_EQ(disabled(), (Texts{power, brightness}));
  open();
  EXPECT_EQ(disabled(), (Texts{brightness, power}));
}

}  // namespace
}  // namespace zentrova::tests

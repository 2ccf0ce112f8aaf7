#include "platform/foundation/objects/ClassBuilder.h"
#include "tests/appearance/CustomizeFixture.h"

namespace zentrova::tests {
namespace {

using platform::Data;
using platform::Value;

class CustomizeRows : public CustomizeTest {};

TEST_F(CustomizeRows, ComeFromTheListAndAreKept) {
  showPage();
  const auto rows = page->specifiers();
  EXPECT_EQ(rows->size(), allRows().size());
  EXPECT_EQ(page->specifiers(), rows);
}

TEST_F(CustomizeRows, TitleIsCustomizeAndLarge) {
  showPage();
  EXPECT_EQ(page->title(), "Customize");
  EXPECT_EQ(page->navigationItem()->largeTitleDisplayMode(),
            platform::UINavigationItemLargeTitleDisplayMode::always);
  EXPECT_TRUE(navigation->navigationBar()->prefersLargeTitles());
}

TEST_F(CustomizeRows, EachBuildMakesANewStore) {
  showPage();
  const auto first = page->preferences();
  EXPECT_EQ(page->specifiers()->size(), allRows().size());
  EXPECT_EQ(page->preferences(), first);
  writePreferences({{"insetStyle", true}});
  EXPECT_TRUE(page->preferences()->objectForKey("insetStyle").isNone());
  page->reloadSpecifiers();
  EXPECT_NE(page->preferences(), first);
  EXPECT_EQ(page->preferences()->objectForKey("insetStyle"), Value(true));
}

TEST_F(CustomizeRows, ButtonKeepsTheListsTitleWithoutAnImage) {
  showPage();
  EXPECT_EQ(shownButtonTitle(), "backgroundImageCell");
}

TEST_F(CustomizeRows, ButtonChangesAnImageThatIsStored) {
  writePreferences({{"backgroundImage", Data("image")}});
  showPage();
  EXPECT_EQ(shownButtonTitle(), "Change background image");
}

// Any stored value makes the title "change".
TEST_F(CustomizeRows, ButtonChangesAnImageThatIsNoData) {
  writePreferences({{"backgroundImage", "text"}});
  showPage();
  EXPECT_EQ(shownButtonTitle(), "Change background image");
}

// The rows use the store that is made with them.
TEST_F(CustomizeRows, RowsThatAreBuiltAnewKnowAnImageStoredSince) {
  showPage();
  writePreferences({{"backgroundImage", Data("image")}});
  EXPECT_EQ(buttonTitle(), "backgroundImageCell");
  page->reloadSpecifiers();
  EXPECT_EQ(shownButtonTitle(), "Change background image");
}

TEST_F(CustomizeRows, OnlyTheFirstButtonIsRetitled) {
  writePreferences({{"backgroundImage", Data("image")}});
  auto rows = allRows();
  rows.push_back(button("backgroundImageCell", "backgroundViewButtonPressed"));
  showPage(rows);
  EXPECT_EQ(buttonTitle(), "Change background image");
  EXPECT_EQ(page->specifiers()->back()->name(), "backgroundImageCell");
}

TEST_F(CustomizeRows, ListWithoutTheImageRowsIsShown) {
  writePreferences({{"backgroundImage", Data("image")}});
  showPage({button("other", "restoreToggleSize")});
  EXPECT_EQ(page->specifiers()->size(), 1U);
  EXPECT_EQ(cellOf(*page, "other")->accessoryView(), nullptr);
}

TEST_F(CustomizeRows, MissingListIsAProblemAndNoRows) {
  page = show(makePage());
  EXPECT_EQ(page->specifiers()->size(), 0U);
  EXPECT_TRUE(page->problem());
}

// --- Opening the lists ---

class CustomizeColors : public CustomizeTest {
 protected:
  CustomizeColors() {
    writeList("GlobalColors", {colorRow("global", "red")});
    writeList("LightColors", {colorRow("light", "red")});
    writeList("DarkColors", {colorRow("dark", "red")});
  }
};

TEST_F(CustomizeColors, EachRowPushesItsList) {
  showPage();
  const std::vector<std::pair<std::string, std::string>> rows{
      {"globalColors", "global"}, {"lightColors", "light"}, {"darkColors", "dark"}};
  for (std::size_t style = 0; style < rows.size(); ++style) {
    const auto& [button, key] = rows[style];
    tap(*page, button);
    const auto top = std::dynamic_pointer_cast<ZVRCustomizeColorListViewController>(
        navigation->topViewController());
    ASSERT_TRUE(top) << button;
    EXPECT_EQ(top->style(), static_cast<std::int64_t>(style));
    EXPECT_EQ(top->specifiers()->front()->identifier(), key);
    navigation->popViewControllerAnimated(false);
  }
}

// Records how it was covered.
class CoveredCustomizePage : public ZVRCustomizeListController {
 public:
  void viewWillDisappear(bool animated) override { animations.push_back(animated); }
  std::vector<bool> animations;
};

TEST_F(CustomizeColors, ListsSlideIn) {
  writeList("Customize", allRows());
  const auto covered = show(platform::make<CoveredCustomizePage>());
  covered->showDarkColors();
  EXPECT_EQ(covered->animations, std::vector<bool>{true});
}

TEST_F(CustomizeColors, EachVisitIsANewPage) {
  showPage();
  page->showGlobalColors();
  const auto first = navigation->topViewController();
  navigation->popViewControllerAnimated(false);
  page->showGlobalColors();
  EXPECT_NE(navigation->topViewController(), first);
}

// The class is looked up by name.
TEST_F(CustomizeColors, ListIsFoundByName) {
  showPage();
  process.classes().remove("ZVRCustomizeColorListViewController");
  page->showLightColors();
  EXPECT_EQ(navigation->topViewController(), page);
}

TEST_F(CustomizeColors, WithoutNavigationNothingOpens) {
  writeList("Customize", allRows());
  const auto alone = makePage();
  alone->showDarkColors();
  EXPECT_EQ(alone->navigationController(), nullptr);
}

// A colour row of this page is reset as in the lists.
TEST_F(CustomizeColors, PressResetsAColorOfThisPage) {
  showPage();
  press(*page, "accent", 1.0);
  EXPECT_EQ(inFile("accent"), Value(resetValue));
  EXPECT_EQ(colorCellOf(*page, "accent")->colorPreview()->backgroundColor()->components().alpha, 0);
}

TEST_F(CustomizeColors, PressOnAnotherRowDoesNothing) {
  showPage();
  press(*page, "globalColors", 2.0);
  EXPECT_FALSE(process.tree().exists(preferences));
  EXPECT_EQ(navigation->topViewController(), page);
}

// --- The size of the toggles ---

// A store that records the value that the page sends.
class FloatStore : public HBPreferences {
  PLATFORM_CLASS(FloatStore)

 public:
  void setFloat(const Value& number, const std::string& name) {
    value = number;
    key = name;
  }
  Value value;
  std::string key;
};

class CustomizeToggleSize : public CustomizeTest {
 protected:
  CustomizeToggleSize() {
    process.classes().add(platform::ClassBuilder<FloatStore>("HBPreferences")
                              .operation("setFloat:forKey:", &FloatStore::setFloat)
                              .build());
  }
  Value computed(double width, const Value& inset) {
    process.traits().screenWidth = width;
    writePreferences({{"insetStyle", inset}});
    showPage();
    const auto store = process.classes().find("FloatStore")->allocateAs<FloatStore>();
    store->initWithIdentifier(preferencesDomain);
    page->setPreferences(store);
    page->restoreToggleSize();
    EXPECT_EQ(store->key, "toggleModuleOffsetSize");
    return store->value;
  }
};

TEST_F(CustomizeToggleSize, PhoneHasWhatAQuarterOfTheScreenIsMissing) {
  EXPECT_EQ(computed(390, false), Value(-12.0F));
  EXPECT_EQ(computed(390, true), Value(-5.75F));
  EXPECT_EQ(computed(375, false), Value(-8.25F));
  EXPECT_EQ(computed(375, true), Value(-2.0F));
  EXPECT_EQ(computed(320, false), Value(5.5F));
  EXPECT_EQ(computed(390, false).kind(), platform::ValueKind::single);
}

TEST_F(CustomizeToggleSize, TabletHasTheStandardSize) {
  process.traits().idiom = platform::UserInterfaceIdiom::pad;
  EXPECT_EQ(computed(1024, false), Value(0.0F));
  EXPECT_EQ(computed(1024, true), Value(0.0F));
}

TEST_F(CustomizeToggleSize, DeviceWithoutAnIdiomIsAPhone) {
  process.traits().idiom = platform::UserInterfaceIdiom::unspecified;
  EXPECT_EQ(computed(390, false), Value(-12.0F));
}

TEST_F(CustomizeToggleSize, InsetThatIsNoTruthIsOff) {
  EXPECT_EQ(computed(390, 2), Value(-12.0F));
  EXPECT_EQ(computed(390, "1"), Value(-12.0F));
  EXPECT_EQ(computed(390, 1), Value(-5.75F));
  EXPECT_EQ(computed(390, nullptr), Value(-12.0F));
}

// After a store that accepts the value, the page makes new rows with a new store.
TEST_F(CustomizeToggleSize, RowsAreShownAnewAfterwards) {
  computed(390, false);
  EXPECT_EQ(page->preferences()->className(), "HBPreferences");
}

// The product's own store has no setFloat:forKey:. Nothing is stored or reloaded.
TEST_F(CustomizeToggleSize, ProductsStoreRefusesBeforeAnythingIsStored) {
  for (const auto idiom :
       {platform::UserInterfaceIdiom::phone, platform::UserInterfaceIdiom::pad}) {
    process.traits().idiom = idiom;
    writePreferences({{"toggleModuleOffsetSize", 3.5F}});
    const std::string before = *process.tree().read(preferences);
    showPage();
    const auto rows = page->specifiers();
    try {
      page->performActionForSpecifier(page->specifierForID("restoreToggleSize"));
      FAIL() << "nothing was raised";
    } catch (const platform::Exception& raised) {
      EXPECT_EQ(raised.name(), "NSInvalidArgumentException");
      EXPECT_EQ(raised.reason(),
                "-[HBPreferences setFloat:forKey:]: unrecognized selector sent to instance");
    }
    EXPECT_EQ(process.tree().read(preferences), before);
    EXPECT_EQ(page->preferences()->objectForKey("toggleModuleOffsetSize"), Value(3.5F));
    EXPECT_EQ(page->specifiers(), rows);
  }
}

TEST_F(CustomizeToggleSize, WithoutAStoreTheRowsAreShownAnew) {
  showPage();
  page->setPreferences(nullptr);
  page->restoreToggleSize();
  EXPECT_TRUE(page->preferences());
}

}  // namespace
}  // namespace zentrova::tests

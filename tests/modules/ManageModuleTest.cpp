#include <fstream>
#include <iterator>

#include "tests/modules/ModulesFixture.h"

namespace zentrova::tests {
namespace {

using platform::UINavigationController;
using platform::Value;

struct ModulePage {
  std::string_view identifier;
  std::string plistName;
  std::string title;
};

const std::vector<ModulePage> modulePages{
    {powerEntry, "PowerModule", "Power"},
    {mediaEntry, "MediaModule", "Media"},
    {connectivityEntry, "ConnectivityFavoritesModule", "Connectivity & Favorites"},
};

class ManageModule : public ModulesTest {
 protected:
  static std::shared_ptr<ZVRManageModuleViewController> make(const Value& identifier) {
    return platform::make(&ZVRManageModuleViewController::initWithIdentifier, identifier);
  }
  static std::string source(const std::string& name) {
    std::ifstream in(std::string(ZENTROVA_RESOURCES) + "/" + name + ".plist", std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }
  void installLists() {
    for (const auto& each : modulePages) {
      process.tree().write(std::string(bundle) + "/" + each.plistName + ".plist",
                           source(each.plistName));
    }
  }
};

TEST_F(ManageModule, EntryChoosesTheList) {
  for (const auto& each : modulePages) {
    const auto page = make(each.identifier);
    EXPECT_EQ(page->plistName(), each.plistName);
    EXPECT_EQ(page->identifier(), std::nullopt);
  }
}

TEST_F(ManageModule, OtherIdentifiersChooseNone) {
  for (const Value& other :
       {Value("com.hollowmere.ZentrovaModule.ConnectivityModule"), Value(audioSliderEntry),
        Value("com.hollowmere.zentrovamodule.powermodule"), Value(""), Value(3), Value()}) {
    const auto page = make(other);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->plistName(), std::nullopt) << other.description();
    EXPECT_TRUE(page->specifiers()->empty());
    EXPECT_TRUE(page->problem());
    show(page);
  }
}

TEST_F(ManageModule, ListIsLoadedOnceWithThePageAsTarget) {
  installLists();
  const auto page = make(mediaEntry);
  EXPECT_FALSE(page->keptSpecifiers());
  const auto rows = page->specifiers();
  ASSERT_FALSE(rows->empty());
  for (const auto& row : *rows) EXPECT_EQ(row->target(), page);
  process.tree().remove(std::string(bundle) + "/MediaModule.plist");
  EXPECT_EQ(page->specifiers(), rows);
}

TEST_F(ManageModule, NameThatIsSetChoosesTheList) {
  installLists();
  const auto page = make({});
  page->setValueForKey("PowerModule", "plistName");
  EXPECT_FALSE(page->specifiers()->empty());
  EXPECT_FALSE(page->problem());
}

// The title of the navigation controller, not of the page: it is cleared unless a caller has set
// the identifier.
TEST_F(ManageModule, TitleOfTheNavigationControllerIsCleared) {
  show(platform::make<platform::UIViewController>());
  navigation->setTitle("Before");
  navigation->pushViewController(make(powerEntry), false);
  EXPECT_EQ(navigation->title(), std::nullopt);
}

TEST_F(ManageModule, IdentifierThatWasSetGivesTheTitle) {
  for (const auto& each : modulePages) {
    show(platform::make<platform::UIViewController>());
    const auto page = make(each.identifier);
    page->setValueForKey(each.identifier, "identifier");
    navigation->pushViewController(page, false);
    EXPECT_EQ(navigation->title(), each.title);
  }
}

TEST_F(ManageModule, UnknownIdentifierThatWasSetClearsTheTitle) {
  show(platform::make<platform::UIViewController>());
  navigation->setTitle("Before");
  const auto page = make(powerEntry);
  page->setIdentifier("PowerModule");
  navigation->pushViewController(page, false);
  EXPECT_EQ(navigation->title(), std::nullopt);
}

TEST_F(ManageModule, OuterBarShowsItsTitleAgain) {
  show(platform::make<platform::UIViewController>());
  const auto outer =
      platform::make(&UINavigationController::initWithRootViewController, navigation);
  outer->view();
  outer->navigationBar()->setTitleOpacity(0.25);
  navigation->navigationBar()->setTitleOpacity(0.5);
  navigation->pushViewController(make(mediaEntry), false);
  navigation->topViewController()->view();
  EXPECT_EQ(outer->navigationBar()->titleOpacity(), 1.0);
  EXPECT_EQ(navigation->navigationBar()->titleOpacity(), 0.5);
}

TEST_F(ManageModule, OwnBarKeepsItsOpacityWhereThereIsNoOuterOne) {
  show(platform::make<platform::UIViewController>());
  navigation->navigationBar()->setTitleOpacity(0.5);
  navigation->pushViewController(make(mediaEntry), false);
  EXPECT_EQ(navigation->navigationBar()->titleOpacity(), 0.5);
}

TEST_F(ManageModule, LoadsItsViewOutsideOfANavigationController) {
  installLists();
  EXPECT_TRUE(make(mediaEntry)->view());
}

// The shipped lists.
TEST_F(ManageModule, ShippedListsLoadWithoutAProblem) {
  installLists();
  for (const auto& each : modulePages) {
    const auto page = make(each.identifier);
    EXPECT_GT(page->specifiers()->size(), 5U) << each.plistName;
    EXPECT_FALSE(page->problem()) << each.plistName;
    EXPECT_EQ(page->title(), each.title);
    for (const auto& row : *page->specifiers()) {
      EXPECT_EQ(row->problem(), std::nullopt) << row->identifier().value_or("");
    }
    show(page);
    for (const auto& cell : page->table()->visibleCells()) EXPECT_TRUE(cell);
  }
}

TEST_F(ManageModule, ShippedListsAreInThePlatformsForm) {
  for (const auto& each : modulePages) {
    const auto list = platform::readPropertyList(source(each.plistName));
    ASSERT_FALSE(list.error) << each.plistName << ": " << list.error->text();
    EXPECT_EQ(platform::writeXmlPropertyList(list.value).bytes, source(each.plistName));
  }
}

// No two rows of the three pages share a key. Each has the domain, and a default from its choices.
TEST_F(ManageModule, ShippedRowsHaveAKeyOfTheirOwnAndADefault) {
  installLists();
  Texts keys;
  for (const auto& each : modulePages) {
    const auto page = make(each.identifier);
    for (const auto& row : *page->specifiers()) {
      const auto key = row->propertyForKey("key").text();
      if (!key) continue;
      EXPECT_THAT(keys, testing::Not(testing::Contains(*key)));
      keys.push_back(*key);
      EXPECT_EQ(row->propertyForKey("defaults"), Value("com.hollowmere.zentrovaprefs")) << *key;
      const Value preset = page->readPreferenceValue(row);
      EXPECT_TRUE(preset) << *key;
      const Value choices = row->propertyForKey("validValues");
      EXPECT_TRUE(!choices || choices.asArray()->contains(preset)) << *key;
    }
  }
}

TEST_F(ManageModule, RowsAreStoredInTheSettingsDomain) {
  installLists();
  const auto page = make(powerEntry);
  const auto rows = page->specifiers();
  const auto row = page->specifierForID("powerConfirm");
  ASSERT_TRUE(row);
  EXPECT_EQ(page->readPreferenceValue(row), Value(true));
  page->setPreferenceValue(false, row);
  EXPECT_EQ(stored("powerConfirm"), Value(false));
}

}  // namespace
}  // namespace zentrova::tests

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/foundation/values/Exception.h"
#include "platform/preferences/DarwinNotifications.h"
#include "platform/preferences/PreferencesClasses.h"
#include "platform/uikit/UIKitClasses.h"
#include "prefs/HBRootListController.h"
#include "tests/prefs/StoreFixture.h"

namespace zentrova::tests {
namespace {

using platform::Array;
using platform::Dictionary;
using platform::PSSpecifier;
using platform::Value;

class HBRootListControllerTest : public StoreTest {
 protected:
  void SetUp() override {
    platform::registerUIKitClasses(process.classes());
    platform::registerPreferencesClasses(process.classes());
    HBPreferences::registerClass(process.classes());
    HBRootListController::registerClass(process.classes());
  }

  std::shared_ptr<HBRootListController> makePage() {
    return platform::make<HBRootListController>();
  }
  static std::shared_ptr<PSSpecifier> makeRow(const Value& key, const Value& defaultValue = {}) {
    auto row =
        PSSpecifier::preferenceSpecifierNamed("Row", nullptr, std::nullopt, std::nullopt,
                                              std::nullopt, platform::PSSwitchCell, std::nullopt);
    row->setProperty(key, "key");
    row->setProperty(defaultValue, "default");
    return row;
  }
};

TEST_F(HBRootListControllerTest, EachPageHasAStoreOfItsOwn) {
  const auto first = makePage();
  const auto second = makePage();
  EXPECT_EQ(first->preferences()->identifier_rl(), "com.hollowmere.zentrovaprefs");
  EXPECT_NE(first->preferences(), second->preferences());
}

TEST_F(HBRootListControllerTest, NewPageReadsTheFileAnew) {
  const auto row = makeRow("key");
  const auto first = makePage();
  first->setPreferenceValue(5, row);
  EXPECT_EQ(makePage()->readPreferenceValue(row), Value(5));
}

TEST_F(HBRootListControllerTest, AbsentKeyShowsTheDefault) {
  const auto page = makePage();
  EXPECT_EQ(page->readPreferenceValue(makeRow("key", 0.5)), Value(0.5));
  EXPECT_TRUE(page->readPreferenceValue(makeRow("key")).isNone());
}

TEST_F(HBRootListControllerTest, ChangeIsInTheFileAtOnce) {
  const auto page = makePage();
  const auto row = makeRow("key", false);
  page->setPreferenceValue(true, row);
  EXPECT_EQ(inFile("key"), Value(true));
  EXPECT_EQ(page->readPreferenceValue(row), Value(true));
}

TEST_F(HBRootListControllerTest, SettingNoneRemovesTheKey) {
  writeFile(Dictionary{{"key", 1}, {"other", 2}});
  makePage()->setPreferenceValue(nullptr, makeRow("key"));
  EXPECT_EQ(fileContent(), (Dictionary{{"other", 2}}));
}

TEST_F(HBRootListControllerTest, StoredValueOfAnotherTypeIsHandedOverUnchanged) {
  for (const Value& stored : {Value("1"), Value(Array{1}), Value(4294967296), Value(-0.5)}) {
    writeFile(Dictionary{{"key", stored}});
    EXPECT_EQ(makePage()->readPreferenceValue(makeRow("key", false)), stored);
  }
}

TEST_F(HBRootListControllerTest, RowWithoutKeyReadsItsDefault) {
  EXPECT_EQ(makePage()->readPreferenceValue(makeRow(nullptr, "1.0.0")), Value("1.0.0"));
  EXPECT_TRUE(makePage()->readPreferenceValue(makeRow(nullptr)).isNone());
}

TEST_F(HBRootListControllerTest, RowWithoutKeyRaisesOnWriting) {
  try {
    makePage()->setPreferenceValue(1, makeRow(nullptr));
    FAIL() << "nothing was raised";
  } catch (const platform::Exception& exception) {
    EXPECT_EQ(exception.name(), "NSInvalidArgumentException");
  }
  EXPECT_FALSE(process.tree().exists(path));
}

TEST_F(HBRootListControllerTest, DomainIsFixedWhateverTheRowSays) {
  const auto row = makeRow("key");
  row->setProperty("com.example.other", "defaults");
  makePage()->setPreferenceValue(1, row);
  EXPECT_EQ(inFile("key"), Value(1));
}

// Records the posted notifications.
class NotedNotifications : public platform::DarwinNotifications {
 public:
  void post(const std::string& name) override { names.push_back(name); }
  std::vector<std::string> names;
};

// The platform's own handling, which would also write the row's domain and post its notification,
// is not used.
TEST_F(HBRootListControllerTest, NothingIsPostedLoggedOrWrittenElsewhereByAChange) {
  const auto notifications = std::make_shared<NotedNotifications>();
  process.process().provide<platform::DarwinNotifications>(notifications);
  const auto row = makeRow("key");
  row->setProperty("com.example.other", "defaults");
  row->setProperty("com.example.changed", "PostNotification");
  process.files().takeWrites();
  makePage()->setPreferenceValue(1, row);
  EXPECT_TRUE(notifications->names.empty());
  EXPECT_TRUE(process.log().entries().empty());
  const auto writes = process.files().takeWrites();
  ASSERT_EQ(writes.size(), 1U);
  EXPECT_EQ(writes[0].path, path);
}

TEST_F(HBRootListControllerTest, StoreCanBeReplaced) {
  const auto page = makePage();
  const auto other = HBPreferences::preferencesForIdentifier("com.example.other");
  page->setValueForKey(other, "preferences");
  EXPECT_EQ(page->valueForKey("preferences").asObject(), other);
  page->setPreferenceValue(1, makeRow("key"));
  EXPECT_FALSE(process.tree().exists(path));
  page->setPreferences(nullptr);
  EXPECT_EQ(page->readPreferenceValue(makeRow("key", 3)), Value(3));
}

TEST_F(HBRootListControllerTest, OperationsAreOfferedByName) {
  const auto page = makePage();
  page->perform("setPreferenceValue:specifier:", {2, makeRow("key")});
  EXPECT_EQ(inFile("key"), Value(2));
  EXPECT_EQ(page->perform("readPreferenceValue:", {makeRow("key")}), Value(2));
}

// Switch rows always use the page's own operations.
TEST_F(HBRootListControllerTest, RowsAreBoundToThePagesStore) {
  const auto page = makePage();
  const auto row = PSSpecifier::preferenceSpecifierNamed(
      "Row", page, "setPreferenceValue:specifier:", "readPreferenceValue:", std::nullopt,
      platform::PSSwitchCell, std::nullopt);
  row->setProperty("key", "key");
  row->performSetterWithValue(true);
  EXPECT_EQ(inFile("key"), Value(true));
  EXPECT_EQ(row->performGetter(), Value(true));
}

TEST_F(HBRootListControllerTest, PageIsReleasedWithItsStore) {
  const auto usePage = [this] {
    const auto page = makePage();
    page->view();
    page->setPreferenceValue(1, makeRow("key"));
  };
  // The first page also creates objects that live as long as the process.
  usePage();
  const auto before = platform::Object::liveCount();
  usePage();
  EXPECT_EQ(platform::Object::liveCount(), before);
}

}  // namespace
}  // namespace zentrova::tests

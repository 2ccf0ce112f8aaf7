#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/preferences/DarwinNotifications.h"
#include "platform/preferences/PSPreferenceFile.h"
#include "tests/platform/preferences/PreferencesTest.h"

namespace preferences_test {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class RecordingNotifications : public DarwinNotifications {
 public:
  void post(const std::string& name) override { posted.push_back(name); }
  std::vector<std::string> posted;
};

}  // namespace

// A page that uses the base's handling of values.
class PSPreferenceFileTest : public PreferencesTest {
 protected:
  static constexpr const char* path = "/var/jb/var/mobile/Library/Preferences/com.sample.plist";

  PSPreferenceFileTest() {
    test.process().provide<DarwinNotifications>(notifications);
    specifier->setProperty("com.sample", "defaults");
    specifier->setProperty("size", "key");
    specifier->setProperty(3, "default");
    specifier->setProperty("com.sample.changed", "PostNotification");
  }

  std::shared_ptr<RecordingNotifications> notifications =
      std::make_shared<RecordingNotifications>();
  std::shared_ptr<PSListController> base = make<PSListController>();
  std::shared_ptr<PSSpecifier> specifier =
      PSSpecifier::preferenceSpecifierNamed("Size", base, {}, {}, {}, PSSliderCell, {});
};

TEST_F(PSPreferenceFileTest, AbsentValueIsTheDefault) {
  EXPECT_EQ(base->readPreferenceValue(specifier), Value(3));
  specifier->removePropertyForKey("default");
  EXPECT_TRUE(base->readPreferenceValue(specifier).isNone());
  EXPECT_TRUE(base->readPreferenceValue(nullptr).isNone());
}

TEST_F(PSPreferenceFileTest, ValueIsWrittenAndTheNotificationPosted) {
  ASSERT_TRUE(writeToFileAtomically(Dictionary{{"other", 1}, {"size", 2}}, path));
  base->setPreferenceValue(Value::single(7.5F), specifier);
  EXPECT_EQ(dictionaryWithContentsOfFile(path), (Dictionary{{"other", 1}, {"size", 7.5}}));
  EXPECT_EQ(base->readPreferenceValue(specifier), Value(7.5));
  EXPECT_THAT(notifications->posted, ElementsAre("com.sample.changed"));
}

TEST_F(PSPreferenceFileTest, NoneRemovesTheValue) {
  ASSERT_TRUE(writeToFileAtomically(Dictionary{{"other", 1}, {"size", 2}}, path));
  base->setPreferenceValue({}, specifier);
  EXPECT_EQ(dictionaryWithContentsOfFile(path), (Dictionary{{"other", 1}}));
}

TEST_F(PSPreferenceFileTest, MissingFileIsMade) {
  base->setPreferenceValue(1, specifier);
  EXPECT_EQ(dictionaryWithContentsOfFile(path), (Dictionary{{"size", 1}}));
}

TEST_F(PSPreferenceFileTest, DamagedFileIsNotWritten) {
  test.tree().write(path, "damaged");
  EXPECT_EQ(base->readPreferenceValue(specifier), Value(3));
  base->setPreferenceValue(1, specifier);
  EXPECT_EQ(test.tree().read(path), "damaged");
  EXPECT_THAT(notifications->posted, IsEmpty());
  ASSERT_EQ(test.log().entries().size(), 1U);
  EXPECT_THAT(test.log().entries()[0].message,
              testing::StartsWith("[Preferences] size of com.sample was not written: "));
}

TEST_F(PSPreferenceFileTest, FailedWriteLeavesTheFileAndIsLogged) {
  ASSERT_TRUE(writeToFileAtomically(Dictionary{{"size", 2}}, path));
  const auto before = test.tree().read(path);
  test.systemCalls().fail("renameat", EIO, test_support::FaultySystemCalls::always);
  base->setPreferenceValue(1, specifier);
  EXPECT_EQ(test.tree().read(path), before);
  EXPECT_EQ(test.log().entries().size(), 1U);
  EXPECT_THAT(notifications->posted, IsEmpty());
}

TEST_F(PSPreferenceFileTest, WithoutDomainOrKeyNothingIsWritten) {
  specifier->removePropertyForKey("key");
  base->setPreferenceValue(1, specifier);
  specifier->setProperty("size", "key");
  specifier->removePropertyForKey("defaults");
  base->setPreferenceValue(1, specifier);
  base->setPreferenceValue(1, nullptr);
  EXPECT_THAT(test.files().takeWrites(), IsEmpty());
}

// A domain is a file name; it never leads to another folder.
TEST_F(PSPreferenceFileTest, DomainLeadsToNoOtherFolder) {
  EXPECT_TRUE(setValueInDomain("../Other/com.sample", "size", 1));
  EXPECT_TRUE(setValueInDomain("", "size", 1));
  EXPECT_TRUE(valueInDomain("../Preferences/com.sample", "size").isNone());
  EXPECT_THAT(test.files().takeWrites(), IsEmpty());
}

TEST_F(PSPreferenceFileTest, WithoutANotificationServiceTheValueIsWrittenAllTheSame) {
  test.process().provide<DarwinNotifications>(nullptr);
  base->setPreferenceValue(1, specifier);
  EXPECT_EQ(base->readPreferenceValue(specifier), Value(1));
}

}  // namespace preferences_test

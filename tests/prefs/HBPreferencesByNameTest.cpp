#include <gtest/gtest.h>

#include "platform/foundation/values/Exception.h"
#include "tests/prefs/StoreFixture.h"

namespace zentrova::tests {
namespace {

using platform::Exception;
using platform::Value;

// The store's operations by selector and values by key.
class HBPreferencesByName : public StoreTest {
 protected:
  void SetUp() override { HBPreferences::registerClass(process.classes()); }

  std::string reasonOf(std::string_view selector, std::initializer_list<Value> arguments) {
    try {
      makeStore()->perform(selector, arguments);
    } catch (const Exception& exception) {
      return exception.name() + ": " + exception.reason();
    }
    return "none";
  }
};

TEST_F(HBPreferencesByName, ClassMakesAStoreForAnIdentifier) {
  writeFile(platform::Dictionary{{"key", 7}});
  const auto* storeClass = process.classes().find("HBPreferences");
  ASSERT_NE(storeClass, nullptr);
  const auto first = storeClass->perform("preferencesForIdentifier:", {preferencesDomain});
  const auto second = storeClass->perform("preferencesForIdentifier:", {preferencesDomain});
  EXPECT_NE(first.asObject(), second.asObject());
  EXPECT_EQ(first.asObject()->perform("integerForKey:", {"key"}), Value(7));
}

TEST_F(HBPreferencesByName, AllocatedStoreIsInitialisedByName) {
  writeFile(platform::Dictionary{{"key", 7}});
  const auto store = process.classes().find("HBPreferences")->allocate();
  EXPECT_EQ(store->perform("initWithIdentifier:", {preferencesDomain}), Value(true));
  EXPECT_EQ(store->perform("objectForKey:", {"key"}), Value(7));
}

TEST_F(HBPreferencesByName, GettersAndSettersAnswer) {
  const auto store = makeStore();
  store->perform("setObject:forKey:", {5000000000, "number"});
  store->perform("_setObject:forKey:", {"text", "string"});
  EXPECT_EQ(inFile("number"), Value(5000000000));
  EXPECT_EQ(store->perform("objectForKey:", {"number"}), Value(5000000000));
  EXPECT_EQ(store->perform("_objectForKey:", {"number"}), Value(5000000000));
  EXPECT_EQ(store->perform("objectForKey:default:", {"absent", "default"}), Value("default"));
  EXPECT_EQ(store->perform("integerForKey:", {"number"}), Value(705032704));
  EXPECT_EQ(store->perform("integerForKey:default:", {"number", 1}), Value(5000000000));
  EXPECT_EQ(store->perform("boolForKey:", {"number"}), Value(false));
  EXPECT_EQ(store->perform("boolForKey:default:", {"number", true}), Value(true));
  EXPECT_EQ(store->perform("floatForKey:", {"number"}), Value(5e9));
  EXPECT_EQ(store->perform("floatForKey:default:", {"absent", 0.1}),
            Value(static_cast<double>(0.1F)));
  EXPECT_EQ(store->perform("stringForKey:", {"string"}), Value("text"));
  EXPECT_TRUE(store->perform("stringForKey:", {"number"}).isNone());
  EXPECT_EQ(store->perform("stringForKey:default:", {"number", "default"}), Value("default"));
  store->perform("removeObjectForKey:", {"number"});
  EXPECT_TRUE(inFile("number").isNone());
}

// There are no typed setters.
TEST_F(HBPreferencesByName, TypedSettersRaise) {
  EXPECT_EQ(reasonOf("setFloat:forKey:", {0.5, "key"}),
            "NSInvalidArgumentException: -[HBPreferences setFloat:forKey:]: unrecognized selector "
            "sent to instance");
  for (const char* selector : {"setBool:forKey:", "setInteger:forKey:", "setDouble:forKey:"}) {
    EXPECT_FALSE(makeStore()->respondsToSelector(selector)) << selector;
    EXPECT_NE(reasonOf(selector, {1, "key"}), "none") << selector;
  }
  EXPECT_FALSE(process.tree().exists(path));
}

TEST_F(HBPreferencesByName, PropertiesAreReadAndWrittenByKey) {
  const auto store = makeStore();
  EXPECT_EQ(store->valueForKey("identifier_rl"), Value(preferencesDomain));
  EXPECT_EQ(store->valueForKey("dictRep").asObject(), store->dictRep());
  EXPECT_EQ(store->perform("identifier_rl", {}), Value(preferencesDomain));
  store->setValueForKey("com.example.other", "identifier_rl");
  EXPECT_EQ(store->identifier_rl(), "com.example.other");
  const auto other = std::make_shared<platform::MutableDictionary>();
  store->perform("setDictRep:", {other});
  EXPECT_EQ(store->dictRep(), other);
}

TEST_F(HBPreferencesByName, UnknownKeyRaises) {
  try {
    makeStore()->valueForKey("dirty");
    FAIL() << "nothing was raised";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), "NSUnknownKeyException");
  }
}

TEST_F(HBPreferencesByName, DictRepAnswersKeyPaths) {
  writeFile(platform::Dictionary{{"key", 7}});
  EXPECT_EQ(makeStore()->valueForKeyPath("dictRep.key"), Value(7));
}

}  // namespace
}  // namespace zentrova::tests

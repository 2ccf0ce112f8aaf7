#include <cmath>
#include <gtest/gtest.h>

#include "tests/prefs/StoreFixture.h"

namespace zentrova::tests {
namespace {

using platform::Value;
using platform::ValueKind;

class HBPreferencesRegister : public StoreTest {};

TEST_F(HBPreferencesRegister, BoolOnAMissingKeyGivesAndStoresTheDefault) {
  bool variable = false;
  makeStore()->registerBool(&variable, true, "key");
  EXPECT_TRUE(variable);
  EXPECT_EQ(inFile("key"), Value(true));
  EXPECT_EQ(inFile("key").kind(), ValueKind::boolean);
}

// Unlike in boolForKey:, every number counts.
TEST_F(HBPreferencesRegister, BoolTakesEveryNumber) {
  for (const Value& number : {Value(2), Value(-1), Value(4294967296), Value(0.5)}) {
    const auto store = storeWith(number);
    bool variable = false;
    store->registerBool(&variable, false, "key");
    EXPECT_TRUE(variable) << number.description();
    EXPECT_EQ(inFile("key"), number);
  }
}

TEST_F(HBPreferencesRegister, StoredNumberWritesNoFile) {
  const auto store = storeWith(1);
  const auto before = process.systemCalls().count("renameat");
  bool truth = false;
  std::int64_t integer = 0;
  double real = 0.0;
  store->registerBool(&truth, false, "key");
  store->registerInteger(&integer, 7, "key");
  store->registerFloat(&real, 7.0, "key");
  EXPECT_EQ(process.systemCalls().count("renameat"), before);
}

TEST_F(HBPreferencesRegister, AnotherTypeIsReplacedByTheDefault) {
  for (const char* text : {"1", "YES"}) {
    bool variable = true;
    storeWith(text)->registerBool(&variable, false, "key");
    EXPECT_FALSE(variable);
    EXPECT_EQ(inFile("key").kind(), ValueKind::boolean);
  }
}

// registerInteger does not change the variable.
TEST_F(HBPreferencesRegister, IntegerOnAMissingKeyStoresTheDefaultButLeavesTheVariable) {
  std::int64_t variable = -5;
  makeStore()->registerInteger(&variable, 5000000000, "key");
  EXPECT_EQ(variable, -5);
  EXPECT_EQ(inFile("key"), Value(5000000000));
  EXPECT_EQ(inFile("key").kind(), ValueKind::integer);
}

TEST_F(HBPreferencesRegister, IntegerTakesAllOf64Bits) {
  std::int64_t variable = 0;
  storeWith(5000000000)->registerInteger(&variable, 1, "key");
  EXPECT_EQ(variable, 5000000000);
  storeWith(-2.75)->registerInteger(&variable, 1, "key");
  EXPECT_EQ(variable, -2);
}

TEST_F(HBPreferencesRegister, IntegerUnderAStringIsReplacedAndTheVariableLeft) {
  std::int64_t variable = 9;
  storeWith("3")->registerInteger(&variable, 4, "key");
  EXPECT_EQ(variable, 9);
  EXPECT_EQ(inFile("key"), Value(4));
}

// The caller gets the full double, the file the single-precision value.
TEST_F(HBPreferencesRegister, FloatOnAMissingKeyGivesTheDoubleAndStoresTheSingle) {
  double variable = 0.0;
  const auto store = makeStore();
  store->registerFloat(&variable, 0.1, "key");
  EXPECT_EQ(variable, 0.1);
  EXPECT_EQ(store->objectForKey("key").kind(), ValueKind::single);
  EXPECT_EQ(inFile("key").doubleValue(), static_cast<double>(0.1F));
}

TEST_F(HBPreferencesRegister, FloatGivesAStoredNumberInSinglePrecision) {
  double variable = 0.0;
  storeWith(0.1)->registerFloat(&variable, 3.0, "key");
  EXPECT_EQ(variable, static_cast<double>(0.1F));
  storeWith(true)->registerFloat(&variable, 3.0, "key");
  EXPECT_EQ(variable, 1.0);
}

// A default beyond single precision is narrowed like on the platform.
TEST_F(HBPreferencesRegister, FloatDefaultBeyondSinglePrecisionIsStoredAsInfinity) {
  double variable = 0.0;
  makeStore()->registerFloat(&variable, 1e300, "key");
  EXPECT_EQ(variable, 1e300);
  EXPECT_TRUE(std::isinf(inFile("key").doubleValue()));
}

}  // namespace
}  // namespace zentrova::tests

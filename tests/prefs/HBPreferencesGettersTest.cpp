#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "platform/foundation/values/Exception.h"
#include "tests/prefs/StoreFixture.h"

namespace zentrova::tests {
namespace {

using platform::Array;
using platform::Data;
using platform::Dictionary;
using platform::Value;

class HBPreferencesGetters : public StoreTest {};

// Without a file, every getter returns its fallback.
TEST_F(HBPreferencesGetters, GiveTheirFallbacksWhereThereIsNoFile) {
  const auto store = makeStore();
  EXPECT_TRUE(store->objectForKey("key").isNone());
  EXPECT_TRUE(store->_objectForKey("key").isNone());
  EXPECT_EQ(store->objectForKey("key", "default"), Value("default"));
  EXPECT_FALSE(store->boolForKey("key"));
  EXPECT_TRUE(store->boolForKey("key", true));
  EXPECT_EQ(store->integerForKey("key"), 0);
  EXPECT_EQ(store->integerForKey("key", 5000000001), 5000000001);
  EXPECT_EQ(store->floatForKey("key"), 0.0);
  EXPECT_EQ(store->stringForKey("key"), std::nullopt);
  EXPECT_EQ(store->stringForKey("key", "default"), "default");
  EXPECT_EQ(store->stringForKey("key", std::nullopt), std::nullopt);
}

// A single-precision default is widened exactly.
TEST_F(HBPreferencesGetters, FloatDefaultIsWidenedFromSinglePrecision) {
  const auto store = makeStore();
  EXPECT_EQ(store->floatForKey("key", 0.1F), static_cast<double>(0.1F));
  EXPECT_NE(store->floatForKey("key", 0.1F), 0.1);
}

TEST_F(HBPreferencesGetters, ObjectForKeyGivesEveryKindAsItIsStored) {
  const Dictionary content{{"array", Array{1, "two"}},
                           {"bool", true},
                           {"data", Data(std::string_view("\x00\x01", 2))},
                           {"dict", Dictionary{{"inner", 0.5}}},
                           {"empty", ""},
                           {"integer", std::int64_t{-7}},
                           {"real", 2.5},
                           {"string", "text"}};
  writeFile(content);
  const auto store = makeStore();
  EXPECT_EQ(store->dictRep()->snapshot(), content);
  for (const auto& [key, value] : content) {
    EXPECT_EQ(store->objectForKey(key), value) << key;
    EXPECT_EQ(store->_objectForKey(key), value) << key;
    EXPECT_EQ(store->objectForKey(key, "default"), value) << key;
  }
  EXPECT_EQ(store->objectForKey("bool").kind(), platform::ValueKind::boolean);
  EXPECT_EQ(store->objectForKey("integer").kind(), platform::ValueKind::integer);
}

// An empty string is a string: the default is not used.
TEST_F(HBPreferencesGetters, StringForKeyGivesAnEmptyStringAsStored) {
  const auto store = storeWith("");
  EXPECT_EQ(store->stringForKey("key"), "");
  EXPECT_EQ(store->stringForKey("key", "default"), "");
}

TEST_F(HBPreferencesGetters, StringForKeyRefusesWhatIsNoString) {
  for (const Value& value : {Value(1), Value(true), Value(1.5), Value(Array{"a"}),
                             Value(Dictionary{{"a", "b"}}), Value(Data(std::string_view("a")))}) {
    const auto store = storeWith(value);
    EXPECT_EQ(store->stringForKey("key"), std::nullopt) << value.description();
    EXPECT_EQ(store->stringForKey("key", "default"), "default") << value.description();
  }
}

struct Truth {
  const char* name;
  Value stored;
  bool accepted;
  bool value;
};

void PrintTo(const Truth& truth, std::ostream* out) {
  *out << truth.name;
}

class HBPreferencesTruth : public StoreTest, public testing::WithParamInterface<Truth> {};

// A number is accepted if its 32-bit value is 0 or 1; the result is whether the number is not 0.
TEST_P(HBPreferencesTruth, BoolForKeyTestsTheRangeAndThenConverts) {
  const auto store = makeStore();
  store->setObject(GetParam().stored, "key");
  EXPECT_EQ(store->boolForKey("key"), GetParam().accepted && GetParam().value);
  EXPECT_EQ(store->boolForKey("key", true), !GetParam().accepted || GetParam().value);
  EXPECT_EQ(store->boolForKey("key", false), GetParam().accepted && GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, HBPreferencesTruth,
    testing::Values(
        Truth{"No", Value(false), true, false}, Truth{"Yes", Value(true), true, true},
        Truth{"Zero", Value(0), true, false}, Truth{"One", Value(1), true, true},
        Truth{"Two", Value(2), false, true}, Truth{"MinusOne", Value(-1), false, true},
        Truth{"TwoToThe32", Value(4294967296), true, true},
        Truth{"TwoToThe32AndOne", Value(4294967297), true, true},
        Truth{"FiveBillion", Value(5000000000), false, true},
        Truth{"Largest", Value(std::numeric_limits<std::uint64_t>::max()), false, true},
        Truth{"Half", Value(0.5), true, true}, Truth{"MinusHalf", Value(-0.5), true, true},
        Truth{"OneAndAHalf", Value(1.5), true, true}, Truth{"RealTwo", Value(2.0), false, true},
        Truth{"RealMinusOne", Value(-1.0), false, true}, Truth{"RealZero", Value(0.0), true, false},
        Truth{"MinusZero", Value(-0.0), true, false},
        Truth{"Infinity", Value(std::numeric_limits<double>::infinity()), false, true},
        Truth{"NaN", Value(std::nan("")), true, true}, Truth{"SingleHalf", Value(0.5F), true, true},
        Truth{"TextOne", Value("1"), false, true}, Truth{"TextYes", Value("YES"), false, true},
        Truth{"List", Value(Array{1}), false, true}),
    [](const auto& parameter) { return std::string(parameter.param.name); });

struct Number {
  const char* name;
  Value stored;
  std::int64_t narrow;  // integerForKey:
  std::int64_t wide;    // integerForKey:default: with the default -77
  double real;          // floatForKey:
};

void PrintTo(const Number& number, std::ostream* out) {
  *out << number.name;
}

class HBPreferencesNumber : public StoreTest, public testing::WithParamInterface<Number> {};

// integerForKey: converts to 32 bits, integerForKey:default: to 64 and floatForKey: to single
// precision, also after a round trip through the file.
TEST_P(HBPreferencesNumber, ConvertsAsThePlatformsNumbersDo) {
  const auto store = makeStore();
  store->setObject(GetParam().stored, "key");
  for (const auto& reader : {store, makeStore()}) {
    EXPECT_EQ(reader->integerForKey("key"), GetParam().narrow);
    EXPECT_EQ(reader->integerForKey("key", -77), GetParam().wide);
    if (std::isnan(GetParam().real)) {
      EXPECT_TRUE(std::isnan(reader->floatForKey("key")));
      EXPECT_TRUE(std::isnan(reader->floatForKey("key", 1.0F)));
    } else {
      EXPECT_EQ(reader->floatForKey("key"), GetParam().real);
      EXPECT_EQ(reader->floatForKey("key", static_cast<float>(GetParam().real)), GetParam().real);
    }
  }
}

constexpr auto int32Max = std::numeric_limits<std::int32_t>::max();
constexpr auto int32Min = std::numeric_limits<std::int32_t>::min();
constexpr auto int64Max = std::numeric_limits<std::int64_t>::max();
constexpr auto int64Min = std::numeric_limits<std::int64_t>::min();

INSTANTIATE_TEST_SUITE_P(
    Numbers, HBPreferencesNumber,
    testing::Values(
        Number{"Small", Value(42), 42, 42, 42.0}, Number{"Negative", Value(-42), -42, -42, -42.0},
        Number{"Yes", Value(true), 1, 1, 1.0},
        Number{"FiveBillion", Value(5000000000), 705032704, 5000000000, 5e9},
        Number{"TwoToThe32", Value(4294967296), 0, 4294967296, 4294967296.0},
        Number{"TwoToThe31", Value(2147483648), int32Min, 2147483648, 2147483648.0},
        Number{"AllBits", Value(4294967295), -1, 4294967295, 4294967296.0},
        Number{"Half", Value(0.5), 0, 0, 0.5}, Number{"MinusHalf", Value(-0.5), 0, 0, -0.5},
        Number{"TruncatesTowardsZero", Value(-2.75), -2, -2, -2.75},
        Number{"Tenth", Value(0.1), 0, 0, static_cast<double>(0.1F)},
        Number{"RealBeyond32Bits", Value(1e10), int32Max, 10000000000, 1e10},
        Number{"RealBeyond64Bits", Value(1e30), int32Max, int64Max, static_cast<double>(1e30F)},
        Number{"NegativeInfinity", Value(-std::numeric_limits<double>::infinity()), int32Min,
               int64Min, -std::numeric_limits<double>::infinity()},
        Number{"BeyondSinglePrecision", Value(1e300), int32Max, int64Max,
               std::numeric_limits<double>::infinity()},
        Number{"NaN", Value(std::nan("")), 0, 0, std::nan("")},
        // Not numbers: the fallback. No getter converts strings.
        Number{"TextOne", Value("1"), 0, -77, 0.0}, Number{"TextHalf", Value("0.5"), 0, -77, 0.0},
        Number{"List", Value(Array{1}), 0, -77, 0.0}),
    [](const auto& parameter) { return std::string(parameter.param.name); });

// A none key reads as absent.
TEST_F(HBPreferencesGetters, NoneKeyGivesTheFallback) {
  const auto store = storeWith(1);
  EXPECT_TRUE(store->objectForKey(nullptr).isNone());
  EXPECT_EQ(store->objectForKey(nullptr, "default"), Value("default"));
  EXPECT_EQ(store->integerForKey(nullptr, 3), 3);
}

// The dictionary is read by key-value access, where such a key is a key of the dictionary itself.
TEST_F(HBPreferencesGetters, KeyWithASignIsAskedOfTheDictionary) {
  writeFile(Dictionary{{"@absent", 1}, {"other", 2}});
  const auto store = makeStore();
  EXPECT_EQ(store->integerForKey("@count"), 2);
  try {
    store->objectForKey("@absent", 5);
    FAIL() << "nothing was raised";
  } catch (const platform::Exception& exception) {
    EXPECT_EQ(exception.name(), "NSUnknownKeyException");
  }
}

// The dictionary is not read by key path: a key with dots is one key.
TEST_F(HBPreferencesGetters, KeyWithPointsIsOneKey) {
  writeFile(Dictionary{{"a.b", 1}, {"a", Dictionary{{"b", 2}}}});
  EXPECT_EQ(makeStore()->integerForKey("a.b"), 1);
}

}  // namespace
}  // namespace zentrova::tests

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

#include "platform/foundation/values/Collections.h"
#include "settings/device/JsonText.h"
#include "settings/device/PropertyListJson.h"

namespace settings {
namespace {

using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Value;
using platform::ValueKind;

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string jsonOf(const Value& value) {
  return jsonText(jsonFromValue(value));
}

Value parsed(std::string_view text) {
  const PropertyListFromJson result = valueFromJsonText(text);
  EXPECT_FALSE(result.error) << *result.error;
  return result.value;
}

std::string refusal(std::string_view text) {
  const PropertyListFromJson result = valueFromJsonText(text);
  EXPECT_TRUE(result.value.isNone());
  return result.error.value_or("accepted");
}

TEST(PropertyListJson, EveryKindHasItsForm) {
  EXPECT_EQ(jsonOf(true), "true");
  EXPECT_EQ(jsonOf(-5), "-5");
  EXPECT_EQ(jsonOf(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
  EXPECT_EQ(jsonOf("a\"b"), "\"a\\\"b\"");
  EXPECT_EQ(jsonOf(Data("abc")), "{\"data\":\"YWJj\"}");
  EXPECT_EQ(jsonOf(Date{0}), "{\"date\":\"2001-01-01T00:00:00Z\"}");
  EXPECT_EQ(jsonOf(Array{1, Dictionary{{"b", 2}, {"a", 1}}}), "[1,{\"a\":1,\"b\":2}]");
  EXPECT_EQ(jsonOf(Value()), "null");
}

TEST(PropertyListJson, ARealAlwaysHasAPointOrAnExponent) {
  EXPECT_EQ(jsonOf(1.0), "1.0");
  EXPECT_EQ(jsonOf(0.0), "0.0");
  EXPECT_EQ(jsonOf(0.1), "0.1");
  EXPECT_EQ(jsonOf(1e20), "1e+20");
  EXPECT_EQ(jsonOf(0.5F), "0.5");
  EXPECT_EQ(jsonOf(std::nan("")), "{\"real\":\"nan\"}");
  EXPECT_EQ(jsonOf(infinity), "{\"real\":\"+infinity\"}");
  EXPECT_EQ(jsonOf(-infinity), "{\"real\":\"-infinity\"}");
}

TEST(PropertyListJson, NumbersBecomeIntegersOrReals) {
  EXPECT_EQ(parsed("1").kind(), ValueKind::integer);
  EXPECT_EQ(parsed("1.0").kind(), ValueKind::real);
  EXPECT_EQ(parsed("1e2").kind(), ValueKind::real);
  EXPECT_EQ(parsed("18446744073709551615").kind(), ValueKind::unsignedInteger);
  EXPECT_EQ(parsed("-9223372036854775808"), Value(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ(refusal("18446744073709551616"),
            "the integer 18446744073709551616 is outside -2^63 to 2^64-1");
  EXPECT_NE(refusal("-9223372036854775809"), "accepted");
}

TEST(PropertyListJson, WhatStandsForSomethingElseIsChecked) {
  EXPECT_EQ(parsed("{\"data\": \"YWJj\"}"), Value(Data("abc")));
  EXPECT_EQ(parsed("{\"date\": \"2001-01-01T00:00:01Z\"}"), Value(Date{1}));
  EXPECT_TRUE(std::isnan(parsed("{\"real\": \"nan\"}").doubleValue()));
  EXPECT_NE(refusal("{\"data\": \"YW\"}"), "accepted");
  EXPECT_NE(refusal("{\"data\": \"Y<\"}"), "accepted");
  EXPECT_NE(refusal("{\"date\": \"today\"}"), "accepted");
  EXPECT_NE(refusal("{\"real\": \"fast\"}"), "accepted");
  EXPECT_EQ(parsed("{\"data\": 1}"), Value(Dictionary{{"data", 1}}));
  EXPECT_EQ(parsed("{\"data\": \"x\", \"b\": 1}"), Value(Dictionary{{"data", "x"}, {"b", 1}}));
}

TEST(PropertyListJson, RefusesWhatIsNoPropertyList) {
  EXPECT_EQ(refusal("null"), "null is not a property list value");
  EXPECT_EQ(refusal("{\"a\": [null]}"), "null is not a property list value");
  EXPECT_EQ(refusal("{\"a\": 1").substr(0, 50),
            "byte 8: not JSON: parse error at line 1, column 8:");
  EXPECT_NE(refusal(""), "accepted");
  EXPECT_NE(refusal("1 2"), "accepted");
  EXPECT_NE(refusal("\"\xFF\""), "accepted");
  EXPECT_EQ(refusal(std::string(513, '[')), "nested more than 512 levels deep");
  EXPECT_NE(refusal(std::string(1000000, '[')), "accepted");
}

TEST(PropertyListJson, EverythingComesBack) {
  const Value value(Dictionary{{"array", Array{1, "a", Array{}, Dictionary{}, 2.0}},
                               {"caf\xC3\xA9", "\xF0\x9F\x98\x80"},
                               {"data", Data(std::string(100, '\xFE'))},
                               {"date", Date{12345}},
                               {"numbers", Array{-1, 0.1, infinity, -infinity, true}},
                               {"looks like data", Dictionary{{"data", "abc"}}},
                               {"looks like a date", Dictionary{{"date", "now"}}},
                               {"looks like a real", Dictionary{{"real", "nan"}}},
                               {"twice", Dictionary{{"dictionary", Dictionary{{"data", "x"}}}}}});
  EXPECT_EQ(parsed(jsonText(jsonFromValue(value), JsonStyle::indented)), value);
  const PropertyListFromJson back = valueFromJson(jsonFromValue(value));
  EXPECT_EQ(back.value, value) << back.error.value_or("");
  EXPECT_EQ(parsed("{\"a\": 1, \"a\": 2}"), Value(Dictionary{{"a", 2}}));
}

}  // namespace
}  // namespace settings

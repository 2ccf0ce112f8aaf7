#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

#include "settings/device/JsonText.h"

namespace settings::tests {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

TEST(JsonText, StandsOnOneLineOrIsIndented) {
  EXPECT_EQ(jsonText(json{{"b", 1}, {"a", {1, 2}}}), R"({"a":[1,2],"b":1})");
  EXPECT_EQ(jsonText(json{{"b", 1}}, JsonStyle::indented), "{\n  \"b\": 1\n}");
}

TEST(JsonText, KeepsTheOrderOfMembersWhereThereIsOne) {
  EXPECT_EQ(jsonText(ordered_json{{"b", 1}, {"a", 2}}), R"({"b":1,"a":2})");
}

TEST(JsonText, ShowsWhatIsNoUtf8AsTheReplacementCharacter) {
  EXPECT_EQ(jsonText(json("a\xED\xA0\x80z")), "\"a\uFFFD\uFFFD\uFFFDz\"");
  EXPECT_EQ(jsonText(ordered_json("\xFF")), "\"\uFFFD\"");
}

TEST(JsonText, RealsHaveAPointOrAnExponent) {
  EXPECT_EQ(jsonText(json::array({1.0, 0.5, 1e300, 1})), "[1.0,0.5,1e+300,1]");
  EXPECT_EQ(jsonText(json(std::numeric_limits<double>::quiet_NaN())), "null");
}

}  // namespace
}  // namespace settings::tests

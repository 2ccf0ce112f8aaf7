#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "platform/foundation/objects/Bridge.h"

namespace {

using platform::Array;
using platform::Dictionary;
using platform::Object;
using platform::Value;
using platform::bridge::fromValue;
using platform::bridge::invoke;

enum class Edge : std::int8_t { none = 0, top = 1 };

class Thing : public Object {
  PLATFORM_CLASS(Thing)
};

TEST(Bridge, NumbersBecomeNumbersOfTheTypeAskedFor) {
  EXPECT_EQ(fromValue<int>(Value(7)), 7);
  EXPECT_EQ(fromValue<std::uint64_t>(Value::unsignedInteger(~0ULL)), ~0ULL);
  EXPECT_TRUE(fromValue<bool>(Value(0.5)));
  EXPECT_EQ(fromValue<double>(Value(3)), 3.0);
  EXPECT_EQ(fromValue<Edge>(Value(1)), Edge::top);
}

TEST(Bridge, AnotherKindBecomesNothing) {
  EXPECT_EQ(fromValue<int>(Value("7")), 0);
  EXPECT_EQ(fromValue<std::string>(Value(7)), "");
  EXPECT_EQ(fromValue<std::optional<std::string>>(Value(7)), std::nullopt);
  EXPECT_EQ(fromValue<std::shared_ptr<Thing>>(Value(std::make_shared<Object>())), nullptr);
  EXPECT_TRUE(fromValue<Array>(Value("x")).empty());
  EXPECT_TRUE(fromValue<Dictionary>(Value()).empty());
  EXPECT_EQ(fromValue<platform::Data>(Value(1)).size(), 0U);
}

TEST(Bridge, TextCollectionsAndObjectsArriveWhole) {
  const auto thing = std::make_shared<Thing>();
  EXPECT_EQ(fromValue<std::string>(Value("a")), "a");
  EXPECT_EQ(fromValue<std::shared_ptr<Thing>>(Value(thing)), thing);
  EXPECT_EQ(fromValue<std::weak_ptr<Thing>>(Value(thing)).lock(), thing);
  EXPECT_EQ(fromValue<Array>(Value(Array{1})).size(), 1U);
}

TEST(Bridge, AViewArgumentLooksAtATextThatLivesDuringTheCall) {
  const std::vector<Value> arguments{std::string(100, 'x')};
  const Value size = invoke<std::size_t, std::string_view>(
      [](std::string_view text) { return text.size(); }, arguments);
  EXPECT_EQ(size, Value(100));
}

TEST(Bridge, ResultsBecomeValues) {
  const std::vector<Value> none;
  EXPECT_TRUE((invoke<void>([] {}, none)).isNone());
  EXPECT_EQ((invoke<Edge>([] { return Edge::top; }, none)), Value(1));
  const auto thing = std::make_shared<Thing>();
  const Value weak =
      invoke<std::weak_ptr<Thing>>([&] { return std::weak_ptr<Thing>(thing); }, none);
  EXPECT_EQ(weak.asObject(), thing);
}

}  // namespace

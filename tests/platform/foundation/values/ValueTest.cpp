#include <cmath>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Exception.h"
#include "platform/foundation/values/Value.h"

namespace platform {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t lowest64 = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest64 = std::numeric_limits<std::int64_t>::max();
constexpr std::uint64_t highestUnsigned = std::numeric_limits<std::uint64_t>::max();
constexpr std::int32_t lowest32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest32 = std::numeric_limits<std::int32_t>::max();

std::string reasonOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Exception& exception) {
    return exception.name() + ": " + exception.reason();
  }
  return "nothing was raised";
}

// A pointer, which C++ would make a boolean, is no value.
static_assert(!std::is_constructible_v<Value, int*>);

TEST(Value, DefaultIsNoneWhichIsNotEmpty) {
  EXPECT_EQ(Value().kind(), ValueKind::none);
  EXPECT_FALSE(Value());
  EXPECT_TRUE(Value(""));
  EXPECT_TRUE(Value(Array()));
  EXPECT_NE(Value(), Value(""));
  EXPECT_EQ(Value(nullptr).kind(), ValueKind::none);
}

TEST(Value, NumbersRememberWhatTheyCameAs) {
  EXPECT_EQ(Value(true).kind(), ValueKind::boolean);
  EXPECT_EQ(Value(1).kind(), ValueKind::integer);
  EXPECT_EQ(Value(1U).kind(), ValueKind::integer);
  EXPECT_EQ(Value(highestUnsigned).kind(), ValueKind::unsignedInteger);
  EXPECT_EQ(Value(1.0F).kind(), ValueKind::single);
  EXPECT_EQ(Value(1.0).kind(), ValueKind::real);
}

TEST(Value, IntegersWrapToThirtyTwoBits) {
  EXPECT_EQ(Value(std::int64_t{4294967296}).intValue(), 0);
  EXPECT_EQ(Value(std::int64_t{5000000000}).intValue(), 705032704);
  EXPECT_EQ(Value(std::int64_t{2147483648}).intValue(), lowest32);
  EXPECT_EQ(Value(highestUnsigned).intValue(), -1);
  EXPECT_EQ(Value(-1).intValue(), -1);
}

TEST(Value, UnsignedIntegersWrapToSixtyFourBits) {
  EXPECT_EQ(Value(highestUnsigned).integerValue(), -1);
  EXPECT_EQ(Value(-1).unsignedIntegerValue(), highestUnsigned);
  EXPECT_EQ(Value(lowest64).integerValue(), lowest64);
}

TEST(Value, RealsTruncateTowardsZero) {
  EXPECT_EQ(Value(-0.5).intValue(), 0);
  EXPECT_EQ(Value(0.5).intValue(), 0);
  EXPECT_EQ(Value(-1.99).intValue(), -1);
  EXPECT_EQ(Value(1.99F).integerValue(), 1);
}

TEST(Value, RealsSaturate) {
  EXPECT_EQ(Value(1e10).intValue(), highest32);
  EXPECT_EQ(Value(-1e10).intValue(), lowest32);
  EXPECT_EQ(Value(2147483647.5).intValue(), highest32);
  EXPECT_EQ(Value(-2147483648.9).intValue(), lowest32);
  EXPECT_EQ(Value(infinity).integerValue(), highest64);
  EXPECT_EQ(Value(-infinity).integerValue(), lowest64);
  EXPECT_EQ(Value(0x1p63).integerValue(), highest64);
  EXPECT_EQ(Value(-1.5).unsignedIntegerValue(), 0U);
  EXPECT_EQ(Value(0x1p64).unsignedIntegerValue(), highestUnsigned);
  EXPECT_EQ(Value(0x1p63).unsignedIntegerValue(), std::uint64_t{1} << 63U);
}

TEST(Value, NanIsZeroAsIntegerAndTrueAsBoolean) {
  EXPECT_EQ(Value(nan).intValue(), 0);
  EXPECT_EQ(Value(nan).integerValue(), 0);
  EXPECT_EQ(Value(nan).unsignedIntegerValue(), 0U);
  EXPECT_TRUE(Value(nan).boolValue());
}

TEST(Value, BoolValueIsTrueForAnythingButZero) {
  EXPECT_TRUE(Value(0.5).boolValue());
  EXPECT_TRUE(Value(2).boolValue());
  EXPECT_TRUE(Value(-1).boolValue());
  EXPECT_TRUE(Value(std::int64_t{4294967296}).boolValue());
  EXPECT_FALSE(Value(0).boolValue());
  EXPECT_FALSE(Value(-0.0).boolValue());
  EXPECT_EQ(Value(true).integerValue(), 1);
  EXPECT_EQ(Value(false).doubleValue(), 0.0);
}

TEST(Value, FloatValueRoundsOnceFromEachKind) {
  EXPECT_EQ(Value(0.1).floatValue(), 0.1F);
  EXPECT_EQ(Value(16777217).floatValue(), 16777216.0F);
  EXPECT_EQ(Value(1e300).floatValue(), std::numeric_limits<float>::infinity());
  EXPECT_EQ(Value(0.1F).doubleValue(), static_cast<double>(0.1F));
}

TEST(Value, NoneAnswersZero) {
  EXPECT_EQ(Value().intValue(), 0);
  EXPECT_EQ(Value().integerValue(), 0);
  EXPECT_EQ(Value().unsignedIntegerValue(), 0U);
  EXPECT_EQ(Value().doubleValue(), 0.0);
  EXPECT_EQ(Value().floatValue(), 0.0F);
  EXPECT_FALSE(Value().boolValue());
  EXPECT_EQ(Value().length(), 0U);
}

TEST(Value, StringsAnswerTheIntegerAtTheirStart) {
  EXPECT_EQ(Value("1").intValue(), 1);
  EXPECT_EQ(Value(" \t\n-42abc").intValue(), -42);
  EXPECT_EQ(Value("+7").integerValue(), 7);
  EXPECT_EQ(Value("").intValue(), 0);
  EXPECT_EQ(Value("abc").intValue(), 0);
  EXPECT_EQ(Value("- 1").intValue(), 0);
  EXPECT_EQ(Value("0x10").intValue(), 0);
  EXPECT_EQ(Value("3.9").intValue(), 3);
}

TEST(Value, StringsSaturate) {
  EXPECT_EQ(Value("99999999999").intValue(), highest32);
  EXPECT_EQ(Value("-99999999999").intValue(), lowest32);
  EXPECT_EQ(Value("2147483647").intValue(), highest32);
  EXPECT_EQ(Value("-2147483648").intValue(), lowest32);
  EXPECT_EQ(Value("9223372036854775807").integerValue(), highest64);
  EXPECT_EQ(Value("99999999999999999999").integerValue(), highest64);
  EXPECT_EQ(Value("-9223372036854775808").integerValue(), lowest64);
  EXPECT_EQ(Value("-9223372036854775809").integerValue(), lowest64);
}

TEST(Value, StringsAnswerTheRealAtTheirStart) {
  EXPECT_EQ(Value(" 1.5e2x").doubleValue(), 150.0);
  EXPECT_EQ(Value("-.5").doubleValue(), -0.5);
  EXPECT_EQ(Value("5.").floatValue(), 5.0F);
  EXPECT_EQ(Value("nan").doubleValue(), 0.0);
  EXPECT_EQ(Value("inf").doubleValue(), 0.0);
  EXPECT_EQ(Value("1e999").doubleValue(), infinity);
  EXPECT_EQ(Value("1e-999").doubleValue(), 0.0);
  EXPECT_EQ(Value("0.000e999").doubleValue(), 0.0);
}

TEST(Value, StringsAnswerBoolValueByTheirFirstTellingCharacter) {
  for (const char* text : {"YES", "yes", "true", "T", "1", "9", " +01", "-0007"}) {
    EXPECT_TRUE(Value(text).boolValue()) << text;
  }
  for (const char* text : {"", "NO", "false", "0", "000", "on", " ", "-", "x1"}) {
    EXPECT_FALSE(Value(text).boolValue()) << text;
  }
}

TEST(Value, LengthCountsCodeUnits) {
  EXPECT_EQ(Value("").length(), 0U);
  EXPECT_EQ(Value("caf\xC3\xA9").length(), 4U);
  EXPECT_EQ(Value("\xF0\x9F\x98\x80").length(), 2U);
  EXPECT_EQ(Value("\xED\xA0\xBD").length(), 1U);  // a lone surrogate
  EXPECT_EQ(Value(Data("abc")).length(), 3U);
}

TEST(Value, OtherKindsRaiseForNumbers) {
  EXPECT_EQ(reasonOf([] { Value(Array{1}).intValue(); }),
            "NSInvalidArgumentException: -[__NSCFArray intValue]: unrecognized selector sent to "
            "instance");
  EXPECT_EQ(reasonOf([] {
              Value(Dictionary{{"a", 1}}).boolValue();
            }),
            "NSInvalidArgumentException: -[__NSCFDictionary boolValue]: unrecognized selector "
            "sent to instance");
  EXPECT_EQ(reasonOf([] { Value("1").unsignedIntegerValue(); }),
            "NSInvalidArgumentException: -[__NSCFString unsignedIntegerValue]: unrecognized "
            "selector sent to instance");
  EXPECT_EQ(reasonOf([] { Value(1).length(); }),
            "NSInvalidArgumentException: -[__NSCFNumber length]: unrecognized selector sent to "
            "instance");
  EXPECT_EQ(reasonOf([] { Value(std::make_shared<Object>()).doubleValue(); }),
            "NSInvalidArgumentException: -[NSObject doubleValue]: unrecognized selector sent to "
            "instance");
}

TEST(Value, ContentIsGivenOnlyForItsOwnKind) {
  EXPECT_EQ(Value("a").asString(), "a");
  EXPECT_EQ(Value(1).asString(), std::nullopt);
  EXPECT_EQ(Value(1).asArray(), nullptr);
  EXPECT_EQ(Value("a").asDictionary(), nullptr);
  EXPECT_EQ(Value("a").asData(), nullptr);
  EXPECT_EQ(Value(1).asDate(), std::nullopt);
  EXPECT_EQ(Value(Date{1.5}).asDate(), Date{1.5});
  EXPECT_EQ(Value(1).text(), std::nullopt);
  EXPECT_EQ(Value(std::optional<std::string>()).kind(), ValueKind::none);
}

TEST(Value, TextsOfEveryLengthSurviveCopiesAndMoves) {
  for (std::size_t size = 0; size < 80; ++size) {
    const std::string text(size, 'x');
    Value value(text);
    Value copy = value;
    const Value moved = std::move(value);
    EXPECT_EQ(copy.asString(), text);
    EXPECT_EQ(moved.asString(), text);
    EXPECT_TRUE(value.isNone());  // NOLINT(bugprone-use-after-move)
    const Value& itself = copy;
    copy = itself;
    EXPECT_EQ(copy.text(), text);
  }
}

TEST(Value, AnObjectIsHeldAndLetGo) {
  const std::int64_t before = Object::liveCount();
  {
    Value value(std::make_shared<Object>());
    const Value copy = value;
    EXPECT_EQ(Object::liveCount(), before + 1);
    EXPECT_EQ(copy.asObject(), value.asObject());
    EXPECT_EQ(copy, value);
    EXPECT_NE(copy, Value(std::make_shared<Object>()));
    value = 1;
    EXPECT_NE(copy.as<Object>(), nullptr);
  }
  EXPECT_EQ(Object::liveCount(), before);
  EXPECT_TRUE(Value(std::shared_ptr<Object>()).isNone());
}

TEST(Value, NumbersAreEqualByWhatTheyStandFor) {
  EXPECT_EQ(Value(true), Value(1));
  EXPECT_EQ(Value(1), Value(1.0));
  EXPECT_EQ(Value(1.0F), Value(1.0));
  EXPECT_EQ(Value(-3), Value(-3.0));
  EXPECT_NE(Value(0.1F), Value(0.1));
  EXPECT_NE(Value(-1), Value(highestUnsigned));
  EXPECT_NE(Value(1), Value("1"));
  EXPECT_EQ(Value(0.0), Value(-0.0));
  // 2^53 + 1 is no double, so that its nearest one is not equal to it.
  EXPECT_NE(Value(std::int64_t{9007199254740993}), Value(9007199254740992.0));
  EXPECT_NE(Value(highestUnsigned), Value(0x1p64));
  EXPECT_EQ(Value(std::uint64_t{1} << 63U), Value(0x1p63));
  EXPECT_NE(Value(lowest64), Value(0x1p63));
  EXPECT_EQ(Value(lowest64), Value(-0x1p63));
  EXPECT_NE(Value(1), Value(infinity));
}

TEST(Value, NanEqualsNanOfItsKindOnly) {
  EXPECT_EQ(Value(nan), Value(nan));
  EXPECT_NE(Value(nan), Value(std::numeric_limits<float>::quiet_NaN()));
  EXPECT_NE(Value(nan), Value(0));
}

TEST(Value, DescriptionsOfScalars) {
  EXPECT_EQ(Value().description(), "(null)");
  EXPECT_EQ(Value(true).description(), "1");
  EXPECT_EQ(Value(false).description(), "0");
  EXPECT_EQ(Value(-5).description(), "-5");
  EXPECT_EQ(Value(highestUnsigned).description(), "18446744073709551615");
  EXPECT_EQ(Value(0.1).description(), "0.1");
  EXPECT_EQ(Value(0.1F).description(), "0.1");
  EXPECT_EQ(Value(3.0).description(), "3");
  EXPECT_EQ(Value("a \"b\"").description(), "a \"b\"");
  EXPECT_EQ(Value(Data("\xDE\xAD")).description(), "{length = 2, bytes = 0xdead}");
  EXPECT_EQ(Value(Date{0}).description(), "2001-01-01 00:00:00 +0000");
}

TEST(Value, DescriptionsOfListsAreNestedInParenthesesAndBraces) {
  const Value value = Dictionary{{"list", Array{1, "two words"}}, {"a-b", Dictionary{}}};
  EXPECT_EQ(value.description(),
            "{\n"
            "    \"a-b\" = {\n"
            "    };\n"
            "    list = (\n"
            "        1,\n"
            "        \"two words\"\n"
            "    );\n"
            "}");
}

TEST(Value, DescriptionEscapesInsideLists) {
  EXPECT_EQ(Value(Array{"", "\n\"\\", "\xC3\xA9", "\xF0\x9F\x98\x80", -1}).description(),
            "(\n    \"\",\n    \"\\n\\\"\\\\\",\n    \"\\U00e9\",\n    \"\\Ud83d\\Ude00\",\n"
            "    \"-1\"\n)");
}

}  // namespace
}  // namespace platform

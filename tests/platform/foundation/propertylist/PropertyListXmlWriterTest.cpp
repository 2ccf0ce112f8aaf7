#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/propertylist/PropertyListBinary.h"

namespace platform {
namespace {

using namespace std::string_literals;

const std::string head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
const std::string tail = "</plist>\n";

// Returns the text between the first three lines and the last one.
std::string body(const Value& value) {
  const PropertyListText text = writeXmlPropertyList(value);
  EXPECT_FALSE(text.error) << *text.error;
  EXPECT_TRUE(text.bytes.starts_with(head));
  EXPECT_TRUE(text.bytes.ends_with(tail));
  return text.bytes.substr(head.size(), text.bytes.size() - head.size() - tail.size());
}

std::string errorOf(const Value& value) {
  const PropertyListText text = writeXmlPropertyList(value);
  EXPECT_TRUE(text.bytes.empty());
  return text.error.value_or("written");
}

TEST(PropertyListXmlWriter, TheWholeFileByteForByte) {
  const Value value(Dictionary{{"z", Array{1, "a<b>&\"'", Dictionary{{"k", true}}}},
                               {"a", 0.5},
                               {"B", Data("abc")},
                               {"date", Date{0}}});
  EXPECT_EQ(writeXmlPropertyList(value).bytes, head +
                                                   "<dict>\n"
                                                   "\t<key>B</key>\n"
                                                   "\t<data>\n"
                                                   "\tYWJj\n"
                                                   "\t</data>\n"
                                                   "\t<key>a</key>\n"
                                                   "\t<real>0.5</real>\n"
                                                   "\t<key>date</key>\n"
                                                   "\t<date>2001-01-01T00:00:00Z</date>\n"
                                                   "\t<key>z</key>\n"
                                                   "\t<array>\n"
                                                   "\t\t<integer>1</integer>\n"
                                                   "\t\t<string>a&lt;b&gt;&amp;\"'</string>\n"
                                                   "\t\t<dict>\n"
                                                   "\t\t\t<key>k</key>\n"
                                                   "\t\t\t<true/>\n"
                                                   "\t\t</dict>\n"
                                                   "\t</array>\n"
                                                   "</dict>\n" +
                                                   tail);
}

TEST(PropertyListXmlWriter, EmptyThings) {
  EXPECT_EQ(body(Array{}), "<array/>\n");
  EXPECT_EQ(body(Dictionary{}), "<dict/>\n");
  EXPECT_EQ(body(""), "<string></string>\n");
  EXPECT_EQ(body(Dictionary{{"", ""}}), "<dict>\n\t<key></key>\n\t<string></string>\n</dict>\n");
  EXPECT_EQ(body(Data()), "<data>\n</data>\n");
}

TEST(PropertyListXmlWriter, Scalars) {
  EXPECT_EQ(body(true), "<true/>\n");
  EXPECT_EQ(body(false), "<false/>\n");
  EXPECT_EQ(body(-5), "<integer>-5</integer>\n");
  EXPECT_EQ(body(std::numeric_limits<std::uint64_t>::max()),
            "<integer>18446744073709551615</integer>\n");
}

TEST(PropertyListXmlWriter, RealsHaveSeventeenDigits) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(body(0.0), "<real>0.0</real>\n");
  EXPECT_EQ(body(-0.0), "<real>0.0</real>\n");
  EXPECT_EQ(body(1.0), "<real>1</real>\n");
  EXPECT_EQ(body(0.1), "<real>0.10000000000000001</real>\n");
  EXPECT_EQ(body(0.1F), "<real>0.10000000149011612</real>\n");
  EXPECT_EQ(body(1e300), "<real>1.0000000000000001e+300</real>\n");
  EXPECT_EQ(body(5e-324), "<real>4.9406564584124654e-324</real>\n");
  EXPECT_EQ(body(1e17), "<real>1e+17</real>\n");
  EXPECT_EQ(body(123456789012345678.0), "<real>1.2345678901234568e+17</real>\n");
  EXPECT_EQ(body(0.0001), "<real>0.0001</real>\n");
  EXPECT_EQ(body(0.00001), "<real>1.0000000000000001e-05</real>\n");
  EXPECT_EQ(body(std::nan("")), "<real>nan</real>\n");
  EXPECT_EQ(body(infinity), "<real>+infinity</real>\n");
  EXPECT_EQ(body(-infinity), "<real>-infinity</real>\n");
}

TEST(PropertyListXmlWriter, RealsAreWhatPrintfPrints) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 20000; ++i) {
    const auto value = std::bit_cast<double>(random());
    if (!std::isfinite(value) || value == 0.0) continue;
    char expected[40];
    std::snprintf(expected, sizeof expected, "<real>%.17g</real>\n", value);
    ASSERT_EQ(body(value), expected);
  }
}

TEST(PropertyListXmlWriter, DatesAreToTheSecond) {
  EXPECT_EQ(body(Date{0.999}), "<date>2001-01-01T00:00:00Z</date>\n");
  EXPECT_EQ(body(Date{-0.5}), "<date>2000-12-31T23:59:59Z</date>\n");
  EXPECT_EQ(body(Date{730943999}), "<date>2024-02-29T23:59:59Z</date>\n");
  EXPECT_EQ(body(Date{-63113904000}), "<date>0001-01-01T00:00:00Z</date>\n");
  EXPECT_EQ(body(Date{252423993599}), "<date>9999-12-31T23:59:59Z</date>\n");
}

TEST(PropertyListXmlWriter, KeysAreSortedByCodeUnit) {
  EXPECT_EQ(body(Dictionary{{"\xEF\xBD\x9E", 1}, {"\xF0\x9F\x98\x80", 2}, {"a", 3}, {"Z", 4}}),
            "<dict>\n"
            "\t<key>Z</key>\n\t<integer>4</integer>\n"
            "\t<key>a</key>\n\t<integer>3</integer>\n"
            "\t<key>\xF0\x9F\x98\x80</key>\n\t<integer>2</integer>\n"
            "\t<key>\xEF\xBD\x9E</key>\n\t<integer>1</integer>\n"
            "</dict>\n");
}

TEST(PropertyListXmlWriter, DataLinesNarrowWithTheIndent) {
  const Value data = Data(std::string(60, '\0'));
  const std::string text(80, 'A');
  EXPECT_EQ(body(data), "<data>\n" + text.substr(0, 76) + "\nAAAA\n</data>\n");
  EXPECT_EQ(body(Array{data}), "<array>\n\t<data>\n\t" + text.substr(0, 68) +
                                   "\n\tAAAAAAAAAAAA\n\t</data>\n</array>\n");
  Value nested = data;
  for (int i = 0; i < 9; ++i) nested = Array{nested};
  EXPECT_NE(body(nested).find("\n" + std::string(9, '\t') + std::string(12, 'A') + "\n"),
            std::string::npos);
}

TEST(PropertyListXmlWriter, OnlyThreeCharactersAreEscaped) {
  EXPECT_EQ(body("a\tb\nc\rd\"'\xC2\xA0\x7F"), "<string>a\tb\nc\rd\"'\xC2\xA0\x7F</string>\n");
  EXPECT_EQ(body("0123456<789>abc&"), "<string>0123456&lt;789&gt;abc&amp;</string>\n");
  EXPECT_EQ(body(Dictionary{{"<k>", 1}}),
            "<dict>\n\t<key>&lt;k&gt;</key>\n\t<integer>1</integer>\n</dict>\n");
}

TEST(PropertyListXmlWriter, RefusesWithTheKeyPathOfTheCulprit) {
  const Value object(std::make_shared<Object>());
  EXPECT_EQ(errorOf(Dictionary{{"items", Array{1, 2, Dictionary{{"icon", object}}}}}),
            "items[2].icon: an object of class NSObject");
  EXPECT_EQ(errorOf(object), "the root: an object of class NSObject");
  EXPECT_EQ(errorOf(Value()), "the root: nothing, which a property list cannot hold");
  EXPECT_EQ(errorOf(Dictionary{{"a", "x\0y"s}}),
            "a: text with U+0000, which a property list cannot hold");
  EXPECT_EQ(errorOf(Dictionary{{"a", "\xED\xB0\x80"}}),
            "a: text with the lone surrogate U+DC00, which a property list cannot hold");
  EXPECT_EQ(errorOf(Array{"\x01"}), "[0]: text with U+0001, which a property list cannot hold");
  EXPECT_EQ(errorOf(Array{"\xFF"}), "[0]: bytes that are not UTF-8");
  EXPECT_EQ(errorOf(Dictionary{{"k\x02", 1}}),
            "k\x02: the key: text with U+0002, which a property list cannot hold");
  EXPECT_EQ(errorOf(Array{Date{std::nan("")}}), "[0]: a date that is not a number");
  EXPECT_EQ(errorOf(Array{Date{1e18}}), "[0]: a date outside the years 1 to 9999");
  EXPECT_EQ(errorOf(Array{Date{-63113904001}}), "[0]: a date outside the years 1 to 9999");
}

TEST(PropertyListXmlWriter, RefusesWhatTheReaderWouldRefuseAsTooDeep) {
  Value nested = 1;
  for (int i = 0; i < 512; ++i) nested = Array{nested};
  EXPECT_FALSE(readPropertyList(writeXmlPropertyList(nested).bytes).error);
  EXPECT_NE(errorOf(Array{nested}).find("nested more than 512 deep"), std::string::npos);
}

TEST(PropertyListXmlWriter, RefusesWhatTheReaderWouldRefuseAsTooDeepAlsoWhereItIsEmpty) {
  for (const Value& innermost : {Value(Array{}), Value(Dictionary{})}) {
    Value nested = innermost;
    for (int i = 1; i < 512; ++i) nested = Array{nested};
    EXPECT_FALSE(readPropertyList(writeXmlPropertyList(nested).bytes).error);
    EXPECT_NE(errorOf(Array{nested}).find("nested more than 512 deep"), std::string::npos);
  }
}

// Shared values need almost no memory, and data of this size is never copied.
TEST(PropertyListXmlWriter, RefusesWhatTheReaderWouldRefuseAsTooLarge) {
  constexpr std::size_t limit = PropertyListLimits{}.bytes;
  const Value data = Data(std::string(51'000, 'x'));
  const std::size_t size = writeXmlPropertyList(Array{data}).bytes.size();
  const auto piecesOf = [&](std::size_t count) {
    return writeXmlPropertyListPieces(Array(std::vector<Value>(count, data)));
  };
  EXPECT_FALSE(piecesOf(limit / size).error);
  const PropertyListPieces refused = piecesOf(limit / (size - 300));
  EXPECT_TRUE(refused.pieces.empty());
  EXPECT_NE(refused.error.value_or("").find("more than 268435456 bytes"), std::string::npos);
}

TEST(PropertyListXmlWriter, RefusesMoreValuesThanTheReaderTakes) {
  Value shared = true;
  for (int i = 0; i < 7; ++i) shared = Array(std::vector<Value>(10, shared));
  EXPECT_NE(errorOf(shared).find("more than 8388608 values"), std::string::npos);
}

// Makes nested values of every kind from a seed.
Value randomValue(std::mt19937_64& random, int depth) {
  const auto text = [&random] {
    std::string result;
    static const char* const pieces[] = {"a",   "<",  "&", "\xC3\xA9", "\xF0\x9F\x98\x80",
                                         "key", "\n", " ", ">",        "0123456789abcdef"};
    for (std::uint64_t i = random() % 12; i > 0; --i) result += pieces[random() % 10];
    return result;
  };
  switch (random() % (depth > 4 ? 8 : 10)) {
    case 0:
      return random() % 2 == 0;
    case 1:
      return static_cast<std::int64_t>(random() >> (random() % 64));
    case 2:
      return random();
    case 3:
      return static_cast<double>(static_cast<std::int64_t>(random())) / 1e9;
    case 4:
    case 5:
      return text();
    case 6:
      return Data(std::string(random() % 300, static_cast<char>(random())));
    case 7:
      return Date{static_cast<double>(random() % 1000000000)};
    case 8: {
      std::vector<Value> values;
      for (std::uint64_t i = random() % 6; i > 0; --i)
        values.push_back(randomValue(random, depth + 1));
      return Array(std::move(values));
    }
    default: {
      Dictionary entries;
      for (std::uint64_t i = random() % 8; i > 0; --i) {
        entries = std::move(entries).with(text(), randomValue(random, depth + 1));
      }
      return entries;
    }
  }
}

TEST(PropertyListXmlWriter, WhatIsWrittenIsReadBackAndWrittenTheSame) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 500; ++i) {
    const Value value = randomValue(random, 0);
    const PropertyListText text = writeXmlPropertyList(value);
    ASSERT_FALSE(text.error);
    const PropertyListResult back = readPropertyList(text.bytes);
    ASSERT_FALSE(back.error) << back.error->text() << "\n" << text.bytes;
    ASSERT_EQ(back.value, value) << text.bytes;
    ASSERT_EQ(writeXmlPropertyList(back.value).bytes, text.bytes);
    const PropertyListText binary = writeBinaryPropertyList(value);
    ASSERT_EQ(readPropertyList(binary.bytes).value, value);
  }
}

TEST(PropertyListXmlWriter, LargeDataIsAPieceOfItsOwnAndNotEncodedTwice) {
  const Value value(Dictionary{{"a", 1}, {"image", Data(std::string(100'000, 'i'))}, {"z", 2}});
  const PropertyListPieces first = writeXmlPropertyListPieces(value);
  ASSERT_EQ(first.pieces.size(), 3U);
  const PropertyListPieces second = writeXmlPropertyListPieces(value);
  EXPECT_EQ(first.pieces[1].data(), second.pieces[1].data());
  std::string joined;
  for (const std::string_view piece : first.pieces) joined += piece;
  EXPECT_EQ(joined, writeXmlPropertyList(value).bytes);
  EXPECT_EQ(readPropertyList(joined).value, value);
}

TEST(PropertyListXmlWriter, DataThatWasReadElsewhereIsBrokenAnew) {
  const Value value = Data(std::string(200, 'q'));
  const std::string atRoot = writeXmlPropertyList(value).bytes;
  const Value back = readPropertyList(atRoot).value;
  EXPECT_EQ(writeXmlPropertyList(Array{back}).bytes, writeXmlPropertyList(Array{value}).bytes);
}

}  // namespace
}  // namespace platform

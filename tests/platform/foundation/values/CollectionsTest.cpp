#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <thread>

#include "platform/foundation/text/Utf.h"
#include "platform/foundation/values/Collections.h"

namespace platform {
namespace {

std::vector<std::string> keysOf(const Dictionary& dictionary) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : dictionary) keys.emplace_back(key);
  return keys;
}

TEST(Array, KeepsItsValuesInOrder) {
  const Array array{1, "two", Array{3}};
  ASSERT_EQ(array.size(), 3U);
  EXPECT_EQ(array[0], Value(1));
  EXPECT_EQ(array[1], Value("two"));
  EXPECT_EQ(array[2], Value(Array{3}));
  EXPECT_TRUE(array.contains("two"));
  EXPECT_FALSE(array.contains("three"));
  EXPECT_EQ(Array(array.mutableCopy()), array);
  EXPECT_EQ(array.values().size(), 3U);
}

TEST(Array, TheEmptyOneHasNoStorage) {
  const Array array;
  EXPECT_TRUE(array.empty());
  EXPECT_EQ(array.begin(), array.end());
  EXPECT_EQ(array, Array(std::vector<Value>()));
  EXPECT_EQ(Value(array).asArray()->size(), 0U);
}

TEST(Data, GivesItsBytes) {
  const Data data(std::vector<std::uint8_t>{1, 2, 3});
  EXPECT_EQ(data.size(), 3U);
  EXPECT_EQ(data.bytes()[2], 3);
  EXPECT_EQ(data, Data(std::string_view("\1\2\3")));
  EXPECT_NE(data, Data(std::string_view("\1\2\4")));
  EXPECT_EQ(Data(), Data(std::string_view()));
  EXPECT_TRUE(Data().bytes().empty());
}

TEST(Data, BytesLiveAsLongAsAnyCopy) {
  std::span<const std::uint8_t> bytes;
  Data copy;
  {
    const Data data("kept");
    copy = data;
    bytes = data.bytes();
  }
  EXPECT_EQ(bytes[3], 't');
}

TEST(Dictionary, OrdersKeysByCodeUnits) {
  // U+FF5E comes after U+1F600, whose first code unit is 0xD83D, though its bytes come before.
  const Dictionary dictionary{
      {"\xEF\xBD\x9E", 1}, {"\xF0\x9F\x98\x80", 2}, {"b", 3}, {"B", 4}, {"", 5}, {"ba", 6}};
  EXPECT_EQ(keysOf(dictionary),
            (std::vector<std::string>{"", "B", "b", "ba", "\xF0\x9F\x98\x80", "\xEF\xBD\x9E"}));
  EXPECT_EQ(dictionary.valueForKey("\xEF\xBD\x9E"), Value(1));
  EXPECT_EQ(dictionary.valueForKey("\xF0\x9F\x98\x80"), Value(2));
}

TEST(Dictionary, OfAKeyGivenTwiceTheLastWins) {
  const Dictionary dictionary{{"a", 1}, {"b", 2}, {"a", 3}};
  EXPECT_EQ(dictionary.size(), 2U);
  EXPECT_EQ(dictionary.valueForKey("a"), Value(3));
}

TEST(Dictionary, ANoneValueIsNoEntry) {
  const Dictionary dictionary{{"a", Value()}, {"b", 2}};
  EXPECT_EQ(keysOf(dictionary), std::vector<std::string>{"b"});
  EXPECT_TRUE(dictionary.with("b", Value()).empty());
  EXPECT_EQ(dictionary.with("c", Value()), dictionary);
}

TEST(Dictionary, WithLeavesTheOriginal) {
  const Dictionary original{{"a", 1}, {"c", 3}};
  EXPECT_EQ(original.with("b", 2), (Dictionary{{"a", 1}, {"b", 2}, {"c", 3}}));
  EXPECT_EQ(original.with("a", 9).valueForKey("a"), Value(9));
  EXPECT_EQ(original.without("a"), (Dictionary{{"c", 3}}));
  EXPECT_EQ(original, (Dictionary{{"a", 1}, {"c", 3}}));
}

TEST(Dictionary, WithOnAnExpiringSoleOwnerChangesItInPlace) {
  Dictionary dictionary{{"a", 1}, {"b", 2}};
  const Value* place = dictionary.find("a");
  dictionary = std::move(dictionary).with("a", 7);
  EXPECT_EQ(dictionary.find("a"), place);
  const Dictionary shared = dictionary;
  dictionary = std::move(dictionary).with("a", 8);
  EXPECT_EQ(shared.valueForKey("a"), Value(7));
  EXPECT_EQ(dictionary.valueForKey("a"), Value(8));
}

TEST(Dictionary, WithMayBeGivenAValueOfItsOwn) {
  Dictionary dictionary{{"a", "a text that is longer than thirty bytes"}, {"b", 2}};
  dictionary = std::move(dictionary).with("b", *dictionary.find("a"));
  EXPECT_EQ(dictionary.valueForKey("b"), dictionary.valueForKey("a"));
  dictionary = std::move(dictionary).with("0", *dictionary.find("a"));
  EXPECT_EQ(dictionary.valueForKey("0"), dictionary.valueForKey("a"));
}

TEST(Dictionary, AnyOrderOfChangesGivesTheSame) {
  std::mt19937 random(7);
  std::vector<std::pair<std::string, Value>> entries;
  for (int i = 0; i < 300; ++i) {
    entries.emplace_back("key number " + std::to_string(i) + std::string(static_cast<std::size_t>(i % 40), 'x'), i);
  }
  const Dictionary expected(entries);
  std::shuffle(entries.begin(), entries.end(), random);
  Dictionary grown;
  for (const auto& [key, value] : entries) grown = std::move(grown).with(key, value);
  EXPECT_EQ(grown, expected);
  for (const auto& [key, value] : entries) {
    ASSERT_EQ(*grown.find(key), value);
    grown = std::move(grown).without(key);
    ASSERT_EQ(grown.find(key), nullptr);
  }
  EXPECT_TRUE(grown.empty());
}

TEST(Dictionary, CopiesMayBeUsedFromTwoThreads) {
  const Dictionary shared{{"a", "a text that is longer than thirty bytes"}, {"b", Array{1, 2}}};
  const auto work = [shared] {
    for (int i = 0; i < 1000; ++i) {
      const Dictionary changed = shared.with("c", i);
      ASSERT_EQ(changed.size(), 3U);
      ASSERT_EQ(shared.valueForKey("b").asArray()->size(), 2U);
    }
  };
  std::thread other(work);
  work();
  other.join();
}

TEST(Utf, ComparesByCodeUnits) {
  EXPECT_EQ(utf::compare("", ""), 0);
  EXPECT_LT(utf::compare("", "a"), 0);
  EXPECT_LT(utf::compare("a", "b"), 0);
  EXPECT_GT(utf::compare("b", "ab"), 0);
  EXPECT_LT(utf::compare("\xF0\x9F\x98\x80", "\xEE\x80\x80"), 0);  // U+1F600, U+E000
  EXPECT_GT(utf::compare("\xEF\xBF\xBF", "\xF4\x8F\xBF\xBF"), 0);  // U+FFFF, U+10FFFF
  EXPECT_LT(utf::compare("\xED\x9F\xBF", "\xF0\x90\x80\x80"), 0);  // U+D7FF, U+10000
  // The lone surrogate 0xD83D against U+1F600, which begins with it and goes on.
  EXPECT_LT(utf::compare("\xED\xA0\xBD", "\xF0\x9F\x98\x80"), 0);
  EXPECT_GT(utf::compare("\xED\xA0\xBE", "\xF0\x9F\x98\x80"), 0);
}

TEST(Utf, FindsWhatXmlCannotHold) {
  EXPECT_EQ(utf::firstNonXml("plain text, longer than a word\t\r\n"), std::nullopt);
  EXPECT_EQ(utf::firstNonXml("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), std::nullopt);
  EXPECT_EQ(utf::firstNonXml(std::string_view("0123456789\0", 11)), 10U);
  EXPECT_EQ(utf::firstNonXml("a\x01"), 1U);
  EXPECT_EQ(utf::firstNonXml("a\xFF"), 1U);
  EXPECT_EQ(utf::firstNonXml("a\xC3"), 1U);
  EXPECT_EQ(utf::firstNonXml("\xC0\x80"), 0U);          // an overlong form
  EXPECT_EQ(utf::firstNonXml("\xE0\x80\x80"), 0U);      // an overlong form
  EXPECT_EQ(utf::firstNonXml("\xED\xA0\x80"), 0U);      // a surrogate
  EXPECT_EQ(utf::firstNonXml("\xEF\xBF\xBE"), 0U);      // U+FFFE
  EXPECT_EQ(utf::firstNonXml("\xF4\x90\x80\x80"), 0U);  // above U+10FFFF
}

TEST(Utf, ConvertsUtf16) {
  using namespace std::string_view_literals;
  EXPECT_EQ(utf::fromUtf16("\0a\xD8\x3D\xDE\x00\x20\xAC"sv, utf::ByteOrder::big).text,
            "a\xF0\x9F\x98\x80\xE2\x82\xAC");
  EXPECT_EQ(utf::fromUtf16("a\0\x3D\xD8\x00\xDE"sv, utf::ByteOrder::little).text,
            "a\xF0\x9F\x98\x80");
  EXPECT_EQ(utf::fromUtf16("\0a\xD8\x3D"sv, utf::ByteOrder::big).badOffset, 2U);
  EXPECT_EQ(utf::fromUtf16("\xDE\x00\0a"sv, utf::ByteOrder::big).badOffset, 0U);
  EXPECT_EQ(utf::fromUtf16("\0a\0"sv, utf::ByteOrder::big).badOffset, 2U);
  EXPECT_EQ(utf::toUtf16BigEndian("a\xF0\x9F\x98\x80"), "\0a\xD8\x3D\xDE\x00"sv);
}

}  // namespace
}  // namespace platform

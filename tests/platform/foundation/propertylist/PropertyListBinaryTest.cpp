#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/propertylist/PropertyListBinary.h"

namespace platform {
namespace {

using namespace std::string_literals;

// A binary property list made from the bytes of its objects. By default, offsets and references
// have one byte.
struct BinaryFile {
  std::vector<std::string> objects;
  std::uint64_t top = 0;
  int offsetWidth = 1;
  int referenceWidth = 1;

  static void append(std::string& out, std::uint64_t value, int width) {
    for (int i = width - 1; i >= 0; --i) out.push_back(static_cast<char>(value >> (8 * i)));
  }
  std::string bytes() const {
    std::string out = "bplist00";
    std::vector<std::size_t> offsets;
    for (const std::string& object : objects) {
      offsets.push_back(out.size());
      out += object;
    }
    const std::size_t table = out.size();
    for (const std::size_t offset : offsets) append(out, offset, offsetWidth);
    out += std::string(6, '\0');
    append(out, static_cast<std::uint64_t>(offsetWidth), 1);
    append(out, static_cast<std::uint64_t>(referenceWidth), 1);
    append(out, objects.size(), 8);
    append(out, top, 8);
    append(out, table, 8);
    return out;
  }
};

Value read(const BinaryFile& file) {
  const PropertyListResult result = readPropertyList(file.bytes());
  EXPECT_FALSE(result.error) << result.error->text();
  EXPECT_EQ(result.format, PropertyListFormat::binary1);
  return result.value;
}

std::string binaryRefusal(const std::string& bytes, const PropertyListLimits& limits = {}) {
  const PropertyListResult result = readPropertyList(bytes, limits);
  EXPECT_EQ(result.value.isNone(), result.error.has_value());
  if (result.error) {
    EXPECT_NE(result.error->accepted, "") << result.error->text();
  }
  return result.error ? result.error->text() : "accepted";
}

std::string refusalOf(const BinaryFile& file, const PropertyListLimits& limits = {}) {
  return binaryRefusal(file.bytes(), limits);
}

Value scalar(const std::string& object) {
  return read({{object}});
}

TEST(PropertyListBinary, ReadsIntegersOfEveryWidth) {
  EXPECT_EQ(scalar("\x10\xFF"s), Value(255));
  EXPECT_EQ(scalar("\x11\xFF\xFF"s), Value(65535));
  EXPECT_EQ(scalar("\x12\xFF\xFF\xFF\xFF"s), Value(4294967295));
  EXPECT_EQ(scalar("\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s), Value(-1));
  EXPECT_EQ(scalar("\x14"s + std::string(8, '\0') + std::string(8, '\xFF')),
            Value(std::numeric_limits<std::uint64_t>::max()));
  EXPECT_EQ(scalar("\x14"s + std::string(16, '\xFF')), Value(-1));
  EXPECT_NE(refusalOf({{"\x14"s + std::string(7, '\0') + "\1" + std::string(8, '\0')}})
                .find("outside -2^63 to 2^64-1"),
            std::string::npos);
  EXPECT_NE(refusalOf({{"\x14"s + std::string(8, '\xFF') + std::string(8, '\0')}}), "accepted");
  EXPECT_NE(refusalOf({{"\x15"s + std::string(32, '\0')}}), "accepted");
}

TEST(PropertyListBinary, ReadsRealsDatesAndBooleans) {
  EXPECT_EQ(scalar("\x22\x3F\x00\x00\x00"s), Value(0.5F));
  EXPECT_EQ(scalar("\x22\x3F\x00\x00\x00"s).kind(), ValueKind::single);
  EXPECT_EQ(scalar("\x23\x3F\xE0\0\0\0\0\0\0"s).kind(), ValueKind::real);
  EXPECT_EQ(scalar("\x33\x3F\xF0\0\0\0\0\0\0"s), Value(Date{1}));
  EXPECT_EQ(scalar("\x09"), Value(true));
  EXPECT_EQ(scalar("\x08"), Value(false));
  EXPECT_NE(refusalOf({{"\x24"s + std::string(16, '\0')}}), "accepted");
  EXPECT_NE(refusalOf({{"\x32\0\0\0\0"s}}), "accepted");
}

TEST(PropertyListBinary, RefusesDatesThatAreNoTime) {
  EXPECT_NE(refusalOf({{"\x33\x7F\xF8\0\0\0\0\0\0"s}}).find("not a finite number of seconds"),
            std::string::npos);
  EXPECT_NE(refusalOf({{"\x33\x7F\xF0\0\0\0\0\0\0"s}}), "accepted");
}

TEST(PropertyListBinary, ReadsStringsAndData) {
  EXPECT_EQ(scalar("\x53"s + "abc"), Value("abc"));
  EXPECT_EQ(scalar("\x5F\x10\x14"s + std::string(20, 'x')), Value(std::string(20, 'x')));
  EXPECT_EQ(scalar("\x63\x00\xE9\xD8\x3D\xDE\x00"s), Value("\xC3\xA9\xF0\x9F\x98\x80"));
  EXPECT_EQ(scalar("\x43\1\2\3"s), Value(Data("\1\2\3")));
  EXPECT_EQ(scalar("\x50"), Value(""));
  EXPECT_EQ(read({{"\x4F\x11\x01\x00"s + std::string(256, 'd')}, 0, 2}),
            Value(Data(std::string(256, 'd'))));
}

TEST(PropertyListBinary, RefusesBadText) {
  EXPECT_NE(refusalOf({{"\x51\xE9"s}}).find("not ASCII"), std::string::npos);
  EXPECT_NE(refusalOf({{"\x61\xD8\x3D"s}}).find("unpaired surrogate"), std::string::npos);
  EXPECT_NE(refusalOf({{"\x62\xDE\x00\xD8\x3D"s}}), "accepted");
}

TEST(PropertyListBinary, ReadsContainers) {
  EXPECT_EQ(read({{"\xD2\1\2\3\4"s, "\x51"s + "b", "\x51"s + "a", "\xA2\3\3"s.replace(1, 2, "\5\5"),
                   "\x10\7"s, "\x09"s}}),
            Value(Dictionary{{"b", Array{true, true}}, {"a", 7}}));
  EXPECT_EQ(scalar("\xA0"s), Value(Array{}));
  EXPECT_EQ(scalar("\xD0"s), Value(Dictionary{}));
}

TEST(PropertyListBinary, WiderOffsetsAndReferences) {
  BinaryFile file{{"\xA1\0\0\0\1"s, "\x09"}, 0, 3, 4};
  EXPECT_EQ(read(file), Value(Array{true}));
  file = {{"\xA1\0\0\0\0\0\0\0\1"s, "\x09"}, 0, 8, 8};
  EXPECT_EQ(read(file), Value(Array{true}));
}

TEST(PropertyListBinary, TheTopObjectNeedNotBeTheFirst) {
  EXPECT_EQ(read({{"\x09", "\xA1\0"s}, 1}), Value(Array{true}));
}

TEST(PropertyListBinary, RefusesKindsThatNoPropertyListHolds) {
  for (const std::string& object : {"\x00"s, "\x0F"s, "\x0C"s, "\x71"s + "a", "\x80\1"s, "\xB0"s,
                                    "\xC1\0"s, "\xE0"s, "\xF0"s}) {
    EXPECT_NE(refusalOf({{object}}), "accepted");
  }
}

TEST(PropertyListBinary, RefusesKeysThatAreNoStrings) {
  const std::string what = "a key that is not a string";
  EXPECT_NE(refusalOf({{"\xD1\1\1"s, "\x10\1"s}}).find(what), std::string::npos);
  EXPECT_NE(refusalOf({{"\xD1\1\1"s, "\xA0"s}}).find(what), std::string::npos);
  EXPECT_NE(refusalOf({{"\xD1\0\1"s, "\x09"s}}).find("contains itself"), std::string::npos);
  // A container that was already read is not a valid key either.
  EXPECT_NE(refusalOf({{"\xA2\1\2"s, "\xA0"s, "\xD1\1\1"s}}).find(what), std::string::npos);
}

TEST(PropertyListBinary, OfDuplicateKeysTheLastWins) {
  EXPECT_EQ(read({{"\xD2\1\1\2\3"s, "\x51"s + "k", "\x10\1"s, "\x10\2"s}}),
            Value(Dictionary{{"k", 2}}));
}

TEST(PropertyListBinary, RefusesLengthsBeyondTheObjects) {
  const std::string what = "extends beyond the end of the objects";
  EXPECT_NE(refusalOf({{"\x53"s + "ab"}}).find(what), std::string::npos);
  EXPECT_NE(refusalOf({{"\x4F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s}}).find(what),
            std::string::npos);
  EXPECT_NE(refusalOf({{"\x6F\x13\x80\0\0\0\0\0\0\0"s}}).find(what), std::string::npos);
  EXPECT_NE(refusalOf({{"\xAF\x12\xFF\xFF\xFF\xFF"s}}).find(what), std::string::npos);
  EXPECT_NE(refusalOf({{"\xDF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s}}).find(what),
            std::string::npos);
  EXPECT_NE(refusalOf({{"\x13\0\0\0"s}}).find(what), std::string::npos);
  EXPECT_NE(refusalOf({{"\x23\0\0\0"s}}).find(what), std::string::npos);
  EXPECT_NE(refusalOf({{"\x33\0\0\0"s}}).find(what), std::string::npos);
}

TEST(PropertyListBinary, RefusesSizesThatAreNoIntegers) {
  for (const std::string& object : {"\x5F"s, "\x5F\x09"s, "\x5F\x14"s + std::string(16, '\0'),
                                    "\x5F\x11\1"s, "\x5F\x51"s + "a"}) {
    EXPECT_NE(refusalOf({{object}}).find("the size of an object"), std::string::npos);
  }
}

TEST(PropertyListBinary, RefusesReferencesToNothing) {
  EXPECT_NE(refusalOf({{"\xA1\5"s}}).find("a reference to object 5"), std::string::npos);
  EXPECT_NE(refusalOf({{"\xD1\1\7"s, "\x50"s}}).find("a reference to object 7"), std::string::npos);
}

TEST(PropertyListBinary, ARefusalNamesTheByteOfTheCulprit) {
  EXPECT_EQ(refusalOf({{"\xA2\1\5"s, "\x09"s}}),
            "byte 10: a reference to object 5, which does not exist");
  EXPECT_EQ(refusalOf({{"\xD1\1\7"s, "\x50"s}}),
            "byte 10: a reference to object 7, which does not exist");
  EXPECT_EQ(refusalOf({{"\xA2\1\2"s, "\xA0"s, "\xD1\1\1"s}}),
            "byte 13: a key that is not a string");
  EXPECT_EQ(refusalOf({{"\xA1\1"s, "\xA1\0"s}}), "byte 8: a container that contains itself");
  EXPECT_EQ(refusalOf({{"\x33\x7F\xF8\0\0\0\0\0\0"s}}),
            "byte 8: a date that is not a finite number of seconds");
  EXPECT_EQ(refusalOf({{"\xA1\1"s, "\x53"s + "ab"}}),
            "byte 10: an object extends beyond the end of the objects");
  EXPECT_EQ(refusalOf({{"\xA1\1"s, "\x5F\x09"s}}),
            "byte 11: the size of an object is not a valid integer");
  EXPECT_EQ(refusalOf({{"\x61\xD8\x3D"s}}), "byte 9: an unpaired surrogate");
  EXPECT_EQ(refusalOf({{"\xA1\1"s, "\x71"s + "a"}}), "byte 10: an object of unknown type 113");
}

TEST(PropertyListBinary, RefusesCycles) {
  EXPECT_NE(refusalOf({{"\xA1\0"s}}).find("contains itself"), std::string::npos);
  EXPECT_NE(refusalOf({{"\xA1\1"s, "\xA1\0"s}}).find("contains itself"), std::string::npos);
  EXPECT_NE(refusalOf({{"\xD1\1\0"s, "\x51"s + "k"}}).find("contains itself"), std::string::npos);
}

TEST(PropertyListBinary, ABillionSharedLeavesInAFewBytesCostNothing) {
  // Nine arrays of ten references, each to the next array, and a leaf: a billion leaves in 153
  // bytes.
  BinaryFile file;
  for (char i = 1; i <= 9; ++i) file.objects.push_back("\xAA"s + std::string(10, i));
  file.objects.emplace_back("\x50");
  ASSERT_LE(file.bytes().size(), 160U);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_NE(refusalOf(file).find("more than 8388608 values"), std::string::npos);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
}

TEST(PropertyListBinary, SharedObjectsAreReadOnceAndCountedEachTime) {
  const std::string text(100, 'x');
  BinaryFile file{{"\xA3\1\1\1"s, "\x5F\x10\x64"s + text}};
  const Value value = read(file);
  ASSERT_EQ(value.asArray()->size(), 3U);
  EXPECT_EQ((*value.asArray())[0].asString()->data(), (*value.asArray())[2].asString()->data());
  PropertyListLimits limits;
  limits.objects = 4;
  EXPECT_EQ(refusalOf(file, limits), "accepted");
  limits.objects = 3;
  EXPECT_NE(refusalOf(file, limits).find("more than 3 values"), std::string::npos);
}

// Checks that the file is accepted with that limit of bytes, and returns the error for one byte
// less.
std::string refusalBelow(const BinaryFile& file, std::size_t bytes) {
  PropertyListLimits limits;
  limits.bytes = bytes;
  EXPECT_EQ(refusalOf(file, limits), "accepted");
  --limits.bytes;
  return refusalOf(file, limits);
}

TEST(PropertyListBinary, SharedTextAndDataCountTheirBytesEachTime) {
  const std::string hundredReferences = "\xAF\x10\x64"s + std::string(100, '\1');
  for (const char* marker : {"\x5F\x11\x03\xE8", "\x4F\x11\x03\xE8"}) {
    const BinaryFile file{{hundredReferences, marker + std::string(1000, 'x')}, 0, 2};
    EXPECT_EQ(refusalBelow(file, 100'000),
              "byte 110: more than 99999 bytes of text and data when shared ones are counted each "
              "time, which is the limit");
  }
}

TEST(PropertyListBinary, SharedContainersAndKeysCountTheBytesThatTheyHold) {
  // Ten references to a dictionary with a key of 100 bytes and a text of 10.
  const BinaryFile file{{"\xAA"s + std::string(10, '\1'), "\xD1\2\3"s,
                         "\x5F\x10\x64"s + std::string(100, 'k'), "\x5A"s + "0123456789"}};
  EXPECT_NE(refusalBelow(file, 1100).find("byte 18: more than 1099 bytes"), std::string::npos);
}

TEST(PropertyListBinary, SharedUtf16TextCountsItsBytesInTheFile) {
  std::string text;
  for (int i = 0; i < 30; ++i) text += "\x4E\x2D";
  const BinaryFile file{{"\xAF\x10\x14"s + std::string(20, '\1'), "\x6F\x10\x1E"s + text}};
  EXPECT_NE(refusalBelow(file, 1200).find("more than 1199 bytes"), std::string::npos);
}

// 60 KB with 1.1 million values and 60 GB of text in total.
TEST(PropertyListBinary, AMillionSharedLongTextsAreRefused) {
  BinaryFile file;
  file.offsetWidth = 2;
  for (char i = 1; i <= 6; ++i) file.objects.push_back("\xAA"s + std::string(10, i));
  file.objects.push_back("\x5F\x11\xEA\x60"s + std::string(60'000, 'x'));
  EXPECT_NE(refusalOf(file).find("more than 268435456 bytes"), std::string::npos);
}

TEST(PropertyListBinary, KeysDoNotCountAsValues) {
  const BinaryFile file{{"\xD1\1\2"s, "\x51"s + "k", "\x09"s}};
  PropertyListLimits limits;
  limits.objects = 2;
  EXPECT_EQ(refusalOf(file, limits), "accepted");
  limits.objects = 1;
  EXPECT_NE(refusalOf(file, limits).find("byte 13: more than 1 values"), std::string::npos);
}

TEST(PropertyListBinary, MoreObjectsThanValuesAndKeysCanBeAreRefusedAtOnce) {
  BinaryFile file{{"\x09"s, "\x09"s, "\x09"s}};
  PropertyListLimits limits;
  limits.objects = 1;
  EXPECT_EQ(refusalOf(file, limits), "accepted");
  file.objects.emplace_back("\x09");
  EXPECT_EQ(refusalOf(file, limits), "accepted") << "a value and its key, and one over";
  file.objects.emplace_back("\x09");
  EXPECT_NE(refusalOf(file, limits).find("more than 1 values and their keys"), std::string::npos);
}

TEST(PropertyListBinary, TheLimitOfDepthHoldsForSharedContainersToo) {
  BinaryFile chain;
  chain.offsetWidth = 2;
  chain.referenceWidth = 2;
  const auto nested = [&chain](int depth) {
    chain.objects.clear();
    for (int i = 1; i < depth; ++i) {
      chain.objects.push_back("\xA1"s + static_cast<char>(i >> 8) + static_cast<char>(i));
    }
    chain.objects.emplace_back("\xA0");
    return chain;
  };
  EXPECT_EQ(refusalOf(nested(512)), "accepted");
  EXPECT_NE(refusalOf(nested(513)).find("more than 512 deep"), std::string::npos);
  // Object 0 holds the chain from object 1 twice: directly, and one level deeper.
  nested(512);
  const int last = static_cast<int>(chain.objects.size());
  chain.objects[0] = "\xA2\0\1"s + static_cast<char>(last >> 8) + static_cast<char>(last);
  chain.objects.push_back("\xA1\0\1"s);
  EXPECT_NE(refusalOf(chain).find("more than 512 deep"), std::string::npos);
}

TEST(PropertyListBinary, RefusesTrailersThatDoNotFit) {
  const std::string good = BinaryFile{{"\xA1\1"s, "\x09"s}}.bytes();
  EXPECT_EQ(binaryRefusal(good), "accepted");
  const auto changed = [&good](std::size_t fromEnd, char byte) {
    std::string bytes = good;
    bytes[bytes.size() - fromEnd] = byte;
    return bytes;
  };
  EXPECT_NE(binaryRefusal(changed(26, 0)).find("width of offsets"), std::string::npos);
  EXPECT_NE(binaryRefusal(changed(26, 9)).find("width of offsets"), std::string::npos);
  EXPECT_NE(binaryRefusal(changed(25, 0)).find("width of references"), std::string::npos);
  EXPECT_NE(binaryRefusal(changed(25, 9)).find("width of references"), std::string::npos);
  EXPECT_NE(binaryRefusal(changed(17, 0)).find("counts no objects"), std::string::npos);
  EXPECT_NE(binaryRefusal(changed(17, 3)).find("does not fill"), std::string::npos);
  EXPECT_NE(binaryRefusal(changed(24, '\x7F')).find("does not fill"), std::string::npos);
  EXPECT_NE(binaryRefusal(changed(9, 2)).find("top object"), std::string::npos);
  EXPECT_NE(binaryRefusal(changed(1, 0)).find("outside the file"), std::string::npos);
  EXPECT_NE(binaryRefusal(changed(8, '\x7F')).find("outside the file"), std::string::npos);
  EXPECT_NE(binaryRefusal(good + "x"), "accepted");
  for (std::size_t size = 0; size < good.size(); ++size) {
    EXPECT_NE(binaryRefusal(good.substr(0, size)), "accepted") << size;
  }
  EXPECT_NE(binaryRefusal("bplist15" + good.substr(8)).find("not supported"), std::string::npos);
}

TEST(PropertyListBinary, RefusesOffsetsOutsideTheObjects) {
  std::string bytes = BinaryFile{{"\x09"s}}.bytes();
  const std::size_t entry = bytes.size() - 33;
  for (const char offset : {'\0', '\7', '\x09', '\xFF'}) {
    bytes[entry] = offset;
    EXPECT_NE(binaryRefusal(bytes).find("lies outside the objects"), std::string::npos);
  }
}

TEST(PropertyListBinary, RefusesWidthsTooSmallForTheFile) {
  BinaryFile file;
  for (int i = 0; i < 300; ++i) file.objects.emplace_back("\x09");
  file.offsetWidth = 2;
  EXPECT_NE(refusalOf(file).find("width of references is too small"), std::string::npos);
  file.referenceWidth = 2;
  EXPECT_EQ(refusalOf(file), "accepted");
}

TEST(PropertyListBinary, RefusesOffsetsThatCannotReachTheTable) {
  // The offset table begins at byte 256, after the highest offset of an object.
  EXPECT_EQ(refusalOf({{"\x4F\x11\x00\xF4"s + std::string(244, 'd')}}), "accepted");
  EXPECT_EQ(refusalOf({{"\x4F\x11\x00\xF5"s + std::string(245, 'd')}}),
            "byte 264: the width of offsets is too small for the file");
}

TEST(PropertyListBinary, WhatIsWrittenIsReadBack) {
  Dictionary many;
  for (int i = 0; i < 300; ++i) many = std::move(many).with("key " + std::to_string(i), i * 1000);
  const Value value(
      Dictionary{{"array", Array{1, 1, "a", "a", Array{}, Dictionary{}}},
                 {"caf\xC3\xA9", "\xF0\x9F\x98\x80"},
                 {"data", Data(std::string(1000, 'x'))},
                 {"date", Date{1.25}},
                 {"many", many},
                 {"numbers", Array{0, 255, 256, 65536, 4294967296, -1,
                                   std::numeric_limits<std::uint64_t>::max(), 0.5F, 0.25}},
                 {"text", std::string(500, 't')},
                 {"control", "\x01"},
                 {"yes", true}});
  const PropertyListText text = writeBinaryPropertyList(value);
  ASSERT_FALSE(text.error);
  const PropertyListResult back = readPropertyList(text.bytes);
  ASSERT_FALSE(back.error) << back.error->text();
  EXPECT_EQ(back.value, value);
  EXPECT_EQ(back.value.asDictionary()
                ->valueForKey("numbers")
                .asArray()
                ->values()
                .subspan(7, 1)
                .front()
                .kind(),
            ValueKind::single);
}

TEST(PropertyListBinary, TheWriterRefusesMoreValuesThanTheReaderTakes) {
  Value shared = true;
  for (int i = 0; i < 7; ++i) shared = Array(std::vector<Value>(10, shared));
  const PropertyListText text = writeBinaryPropertyList(shared);
  EXPECT_TRUE(text.bytes.empty());
  EXPECT_NE(text.error.value_or("").find("more than 8388608 values"), std::string::npos);
}

TEST(PropertyListBinary, TheWriterRefusesMoreSharedBytesThanTheReaderTakes) {
  constexpr std::size_t limit = PropertyListLimits{}.bytes;
  constexpr std::size_t size = limit / 100;
  for (const Value& shared : {Value(Data(std::string(size, 'x'))), Value(std::string(size, 'x'))}) {
    const auto written = [&](std::size_t count) {
      return writeBinaryPropertyList(Array(std::vector<Value>(count, shared)));
    };
    EXPECT_FALSE(readPropertyList(written(100).bytes).error);
    const PropertyListText refused = written(101);
    EXPECT_TRUE(refused.bytes.empty());
    EXPECT_NE(refused.error.value_or("").find("more than 268435456 bytes"), std::string::npos);
  }
}

TEST(PropertyListBinary, TheWriterRefusesWhatItCannotHold) {
  EXPECT_EQ(writeBinaryPropertyList(Dictionary{{"a", Array{1, "\xED\xA0\x80"}}}).error,
            "a[1]: text with the lone surrogate U+D800, which a property list cannot hold");
  EXPECT_EQ(writeBinaryPropertyList(Date{std::nan("")}).error,
            "the root: a date that is not a finite number of seconds");
  EXPECT_EQ(writeBinaryPropertyList(Array{Value()}).error,
            "[0]: nothing, which a property list cannot hold");
}

}  // namespace
}  // namespace platform

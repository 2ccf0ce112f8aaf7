#include <gtest/gtest.h>
#include <random>
#include <thread>

#include "platform/foundation/text/Base64.h"
#include "platform/foundation/text/Base64Blocks.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/DataStore.h"

namespace platform::base64 {
namespace {

// Runs each test on both paths. On a machine without AVX2, both are the scalar one.
class Base64 : public testing::TestWithParam<Path> {
 protected:
  static Path path() {
    return GetParam() == Path::vector && avx2::available() ? Path::vector : Path::scalar;
  }
  static std::string decoded(std::string_view text) {
    const Scan found = scan(text, path());
    EXPECT_EQ(found.problem, nullptr) << found.problem;
    std::vector<std::uint8_t> bytes(found.size + decodeSlack);
    decode(text, bytes.data(), path());
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(found.size)};
  }
  static std::string lines(std::string_view bytes, std::size_t indent) {
    std::string text(encodedLinesSize(bytes.size(), indent), '?');
    encodeLines({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, indent,
                text.data(), path());
    return text;
  }
  static std::string randomBytes(std::size_t size) {
    std::mt19937 random(static_cast<unsigned>(size));
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
  }
};

INSTANTIATE_TEST_SUITE_P(Paths, Base64, testing::Values(Path::scalar, Path::vector),
                         [](const auto& each) {
                           return each.param == Path::scalar ? "scalar" : "vector";
                         });

TEST_P(Base64, KnownTexts) {
  const auto encoded = [](std::string_view bytes) {
    return encode({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, path());
  };
  EXPECT_EQ(encoded(""), "");
  EXPECT_EQ(encoded("f"), "Zg==");
  EXPECT_EQ(encoded("fo"), "Zm8=");
  EXPECT_EQ(encoded("foo"), "Zm9v");
  EXPECT_EQ(encoded("foobar"), "Zm9vYmFy");
  EXPECT_EQ(decoded("Zm9vYg=="), "foob");
  EXPECT_EQ(decoded(" Z m\n9\tv\r\nYg = = "), "foob");
}

TEST_P(Base64, EveryByteValueSurvives) {
  std::string bytes;
  for (int i = 0; i < 256 * 3; ++i) bytes.push_back(static_cast<char>(i / 3));
  const std::string text =
      encode({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, path());
  EXPECT_EQ(decoded(text), bytes);
}

TEST_P(Base64, EverySizeAndIndentSurvivesInLines) {
  for (std::size_t indent : {0U, 1U, 2U, 7U, 8U, 9U, 20U}) {
    for (std::size_t size = 0; size < 400; ++size) {
      const std::string bytes = randomBytes(size);
      const std::string text = lines(bytes, indent);
      ASSERT_EQ(decoded(text), bytes);
      ASSERT_EQ(scan(text, path()).indent, indent) << size;
    }
  }
}

TEST_P(Base64, LinesHaveTheWidthOfTheIndent) {
  EXPECT_EQ(lineWidth(0), 76U);
  EXPECT_EQ(lineWidth(1), 68U);
  EXPECT_EQ(lineWidth(8), 12U);
  EXPECT_EQ(lineWidth(100), 12U);
  const std::string text = lines(std::string(60, '\0'), 1);
  EXPECT_EQ(text, "\n\t" + std::string(68, 'A') + "\n\t" + std::string(12, 'A') + "\n\t");
  EXPECT_EQ(lines("", 2), "\n\t\t");
}

TEST_P(Base64, OtherLayoutsAreReadButNotKnownAsOurs) {
  const std::string bytes = randomBytes(200);
  const std::string ours = lines(bytes, 1);
  std::string spaces = ours;
  spaces.replace(1, 1, " ");
  const std::string other = "\n" + ours.substr(2);
  const std::string twice = ours + "\n\t";
  const std::string longEnd = ours.substr(0, ours.size() - 1);
  std::string inserted = ours;
  inserted.insert(30, "\n\t");
  std::string joined = ours;
  joined.erase(70, 2);
  std::string windows = ours;
  windows.insert(0, "\r");
  for (const std::string& text :
       {spaces, other, twice, longEnd, inserted, joined, windows, ours.substr(2)}) {
    EXPECT_EQ(decoded(text), bytes) << text;
    EXPECT_EQ(scan(text, path()).indent, std::nullopt) << text;
  }
}

TEST_P(Base64, SpareBitsAreReadButNotKnownAsOurs) {
  EXPECT_EQ(decoded("\nZh==\n"), "f");
  EXPECT_EQ(scan("\nZh==\n", path()).indent, std::nullopt);
  EXPECT_EQ(scan("\nZg==\n", path()).indent, 0U);
}

TEST_P(Base64, BadTextIsRefusedWhereItIsBad) {
  struct Case {
    std::string text;
    std::size_t at;
  };
  const std::string line(68, 'A');
  for (const Case& bad : std::vector<Case>{{"AAA*", 3},
                                           {"A===", 1},
                                           {"AA=A", 3},
                                           {"AAAA=", 4},
                                           {"AA===", 4},
                                           {"AAA", 3},
                                           {"A", 1},
                                           {"AAA=AAAA", 4},
                                           {"\n\t" + line + "\n\t" + line + "-\n\t", 140},
                                           {std::string(40, 'A') + "\xC3\xA9", 40}}) {
    const Scan found = scan(bad.text, path());
    EXPECT_NE(found.problem, nullptr) << bad.text;
    EXPECT_EQ(found.length, bad.at) << bad.text;
  }
}

TEST_P(Base64, EveryForeignByteEndsARun) {
  constexpr std::string_view alphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (int byte = 0; byte < 256; ++byte) {
    for (std::size_t place = 0; place < 70; place += 23) {
      std::string text(96, 'A');
      text[place] = static_cast<char>(byte);
      const bool known = alphabet.find(static_cast<char>(byte)) != std::string_view::npos;
      ASSERT_EQ(alphabetRun(text, path()), known ? text.size() : place) << byte;
    }
  }
}

TEST_P(Base64, ScanStopsAtTheNextTag) {
  const Scan found = scan("\n\tZm9v\n\t</data>", path());
  EXPECT_EQ(found.length, 8U);
  EXPECT_EQ(found.size, 3U);
  EXPECT_EQ(found.indent, 1U);
}

Data lazyData(const std::string& text) {
  auto keeper = std::make_shared<const std::string>(text);
  const Scan found = scan(*keeper);
  return Data::fromBase64({keeper, *keeper, found.indent}, found.size);
}

TEST(LazyData, IsWrittenFromItsTextWhereTheLinesFit) {
  const std::string text = "\n\t" + std::string(68, 'Q') + "\n\tQUJD\n\t";
  const Data data = lazyData(text);
  std::shared_ptr<const void> keeper;
  std::shared_ptr<const void> again;
  const std::string_view first = data.base64Lines(1, keeper);
  EXPECT_EQ(first, text);
  EXPECT_EQ(data.base64Lines(1, again).data(), first.data());
  EXPECT_EQ(data.size(), 54U);
  EXPECT_EQ(data.bytes().size(), 54U);
}

TEST(LazyData, IsEncodedAnewForAnotherIndent) {
  const Data data = lazyData("\n\t" + std::string(68, 'Q') + "\n\tQUJD\n\t");
  std::shared_ptr<const void> keeper;
  EXPECT_EQ(data.base64Lines(0, keeper), "\n" + std::string(68, 'Q') + "QUJD\n");
  EXPECT_EQ(data.base64Lines(3, keeper),
            "\n\t\t\t" + std::string(52, 'Q') + "\n\t\t\t" + std::string(16, 'Q') + "QUJD\n\t\t\t");
}

TEST(LazyData, ManyThreadsMayAskForBytesAndText) {
  const std::string text = "\n" + std::string(76 * 8, 'Q');
  const Data data = lazyData(text);
  const auto work = [&data](std::size_t indent) {
    for (int i = 0; i < 100; ++i) {
      std::shared_ptr<const void> keeper;
      ASSERT_EQ(data.bytes().size(), 456U);
      ASSERT_EQ(data.base64Lines(indent, keeper).front(), '\n');
      ASSERT_EQ(data.bytes()[0], 'A');
    }
  };
  std::thread first(work, 1);
  std::thread second(work, 2);
  work(0);
  first.join();
  second.join();
}

}  // namespace
}  // namespace platform::base64

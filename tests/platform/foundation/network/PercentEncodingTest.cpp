#include <gtest/gtest.h>
#include <string>

#include "platform/foundation/objects/NSString.h"
#include "platform/foundation/values/Exception.h"
#include "tests/support/TestProcess.h"

namespace {

using platform::NSCharacterSet;
using platform::stringByAddingPercentEncodingWithAllowedCharacters;
using platform::stringByRemovingPercentEncoding;
using test_support::TestProcess;

class PercentEncoding : public testing::Test {
 private:
  TestProcess _process;
};

// Returns the printable ASCII characters that are not in the set.
std::string leftOut(const NSCharacterSet& set) {
  std::string result;
  for (char each = '!'; each <= '~'; ++each) {
    if (!set.characterIsMember(static_cast<char32_t>(each))) result += each;
  }
  return result;
}

std::string encodedPath(std::string_view text) {
  return stringByAddingPercentEncodingWithAllowedCharacters(
             text, *NSCharacterSet::URLPathAllowedCharacterSet())
      .value_or("nothing");
}

TEST_F(PercentEncoding, EachPartOfAnAddressHasItsSet) {
  EXPECT_EQ(leftOut(*NSCharacterSet::URLUserAllowedCharacterSet()), "\"#%/:<>?@[\\]^`{|}");
  EXPECT_EQ(leftOut(*NSCharacterSet::URLPasswordAllowedCharacterSet()), "\"#%/:<>?@[\\]^`{|}");
  EXPECT_EQ(leftOut(*NSCharacterSet::URLHostAllowedCharacterSet()), "\"#%/<>?@\\^`{|}");
  EXPECT_EQ(leftOut(*NSCharacterSet::URLPathAllowedCharacterSet()), "\"#%;<>?[\\]^`{|}");
  EXPECT_EQ(leftOut(*NSCharacterSet::URLQueryAllowedCharacterSet()), "\"#%<>[\\]^`{|}");
  EXPECT_EQ(leftOut(*NSCharacterSet::URLFragmentAllowedCharacterSet()), "\"#%<>[\\]^`{|}");
}

TEST_F(PercentEncoding, NoSetHoldsBlanksControlsOrLettersBeyondAscii) {
  const auto set = NSCharacterSet::URLQueryAllowedCharacterSet();
  for (const char32_t each : {U' ', U'\0', U'\n', U'\x7f', U'\x80', U'é', U'\U0001F600'}) {
    EXPECT_FALSE(set->characterIsMember(each)) << static_cast<std::uint32_t>(each);
  }
}

TEST_F(PercentEncoding, ASetMayLoseCharacters) {
  const auto set = NSCharacterSet::URLQueryAllowedCharacterSet()->without("&=");
  EXPECT_EQ(leftOut(*set), "\"#%&<=>[\\]^`{|}");
}

TEST_F(PercentEncoding, ASetOfTheTextsOwnCharactersPassesOverThoseBeyondAscii) {
  const auto set = NSCharacterSet::characterSetWithCharactersInString("aé");
  EXPECT_TRUE(set->characterIsMember(U'a'));
  EXPECT_FALSE(set->characterIsMember(U'é'));
  EXPECT_FALSE(set->characterIsMember(U'b'));
}

TEST_F(PercentEncoding, CharactersOfTheSetStay) {
  EXPECT_EQ(encodedPath("a/b:c@d!$&'()*+,-._~="), "a/b:c@d!$&'()*+,-._~=");
  EXPECT_EQ(encodedPath(""), "");
}

TEST_F(PercentEncoding, OtherCharactersBecomeUpperCaseDigitsForEachByte) {
  EXPECT_EQ(encodedPath("a b"), "a%20b");
  EXPECT_EQ(encodedPath("?#;%"), "%3F%23%3B%25");
  EXPECT_EQ(encodedPath("é€😀"), "%C3%A9%E2%82%AC%F0%9F%98%80");
  EXPECT_EQ(encodedPath(std::string_view("\0\n\x7f", 3)), "%00%0A%7F");
}

TEST_F(PercentEncoding, WhatHasNoUtf8FormCannotBeEncoded) {
  EXPECT_EQ(encodedPath("a\xED\xA0\x80"), "nothing") << "a lone surrogate";
  EXPECT_EQ(encodedPath("a\xFF"), "nothing");
}

TEST_F(PercentEncoding, LongTextsAreEncodedWhole) {
  const std::string encoded = encodedPath(std::string(100'000, ' '));
  EXPECT_EQ(encoded.size(), 300'000U);
  EXPECT_TRUE(encoded.ends_with("%20%20"));
}

TEST_F(PercentEncoding, RemovingGivesTheTextBack) {
  EXPECT_EQ(stringByRemovingPercentEncoding("a%20b%C3%a9"), "a bé");
  EXPECT_EQ(stringByRemovingPercentEncoding(""), "");
  EXPECT_EQ(stringByRemovingPercentEncoding("+"), "+");
}

TEST_F(PercentEncoding, RemovingGivesNothingForWhatWasNeverEncoded) {
  for (const char* text : {"%", "%2", "%2G", "a%", "%G0", "%C3", "%ED%A0%80"}) {
    EXPECT_EQ(stringByRemovingPercentEncoding(text), std::nullopt) << text;
  }
}

TEST_F(PercentEncoding, AppendingNothingIsAnInvalidArgument) {
  EXPECT_EQ(platform::stringByAppendingString("@", "name"), "@name");
  try {
    platform::stringByAppendingString("@", std::nullopt);
    FAIL() << "nothing was raised";
  } catch (const platform::Exception& exception) {
    EXPECT_EQ(exception.name(), "NSInvalidArgumentException");
    EXPECT_EQ(exception.reason(), "-[__NSCFString stringByAppendingString:]: nil argument");
  }
}

}  // namespace

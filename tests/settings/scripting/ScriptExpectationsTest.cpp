// Expectations in scripts: a failed expectation ends the script and reports the line, the expected
// value and the actual value.

#include <algorithm>
#include <gmock/gmock.h>

#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

constexpr const char* preferenceFile =
    "/var/jb/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist";

struct Expectation {
  const char* before;  // lines to play first
  const char* line;
  const char* expected;
  const char* actual;
};

void PrintTo(const Expectation& expectation, std::ostream* out) {
  *out << expectation.before << expectation.line;
}

class FailedExpectation : public ApplicationTest,
                          public testing::WithParamInterface<Expectation> {};

TEST_P(FailedExpectation, SaysLineExpectedAndActual) {
  const Expectation& given = GetParam();
  const std::string before = std::string("open\n") + given.before;
  const Played played = play(before + given.line + "\nget title");
  EXPECT_EQ(played.status, ScriptStatus::failed);
  const auto line = std::count(before.begin(), before.end(), '\n') + 1;
  EXPECT_THAT(played.messages, HasSubstr("script, line " + std::to_string(line) +
                                         ": expectation failed\n  " + given.line + "\n"));
  EXPECT_THAT(played.messages, AllOf(HasSubstr(std::string("  expected: ") + given.expected),
                                     HasSubstr(std::string("  actual:   ") + given.actual)));
  EXPECT_EQ(played.output, "") << "the script has gone on";
}

INSTANTIATE_TEST_SUITE_P(
    Page, FailedExpectation,
    testing::Values(
        Expectation{"", "expect title \"Other\"", "title \"Other\"", "title \"Zentrova\""},
        Expectation{"", "expect title \"zentrova\"", "title \"zentrova\"", "title \"Zentrova\""},
        Expectation{"", "expect rows 0 #enabled", "the rows #enabled\n",
                    "the rows \"Enabled\" (#enabled) \"Respring\" (#respring)\n"},
        Expectation{"", "expect rows 0 #respring #enabled", "the rows #respring #enabled\n",
                    "the rows \"Enabled\" (#enabled) \"Respring\" (#respring)\n"},
        Expectation{"", "expect rows 0", "the rows none\n", "the rows \"Enabled\""},
        Expectation{"", "expect row #absent", "a row #absent\n", "there is no row #absent"},
        Expectation{"", "expect row #enabled~2", "a row #enabled~2\n", "there is no row"},
        Expectation{"", "expect row #absent value on", "a row #absent\n", "there is no row"},
        Expectation{"", "expect row #enabled value off", "value \"off\"\n", "value true\n"},
        Expectation{"", "expect row #enabled value 0", "value 0\n", "value true\n"},
        Expectation{"", "expect row #presentationStyle value \"Compact\"", "value \"Compact\"\n",
                    "value \"Full Screen\"\n"},
        Expectation{"", "expect row #backgroundBlur value 0.7", "value 0.7\n", "value 0.75"},
        Expectation{"", "expect row #systems value \"iOS 12\"", "value \"iOS 12\"\n",
                    "value \"iOS 13 to 16\"\n"},
        Expectation{"", "expect no row #enabled", "no row #enabled\n", "there is one among"},
        Expectation{"", "expect footer #blurGroup \"text\"", "footer \"text\"\n", "footer \"\"\n"},
        Expectation{"", "expect footer #cornerGroup \"From square\"", "footer \"From square\"\n",
                    "footer \"From square to round, in points.\"\n"},
        Expectation{"", "expect footer #absent \"text\"", "a group #absent\n",
                    "there is no such group or row"},
        Expectation{"", "expect opacity outer 1", "title opacity 1.0\n", "title opacity 0.0\n"},
        Expectation{"", "expect opacity inner 0.5", "title opacity 0.5\n", "title opacity 0.0\n"},
        Expectation{"scroll 10\n", "expect opacity outer 0", "title opacity 0.0\n",
                    "title opacity 1.0\n"}));

INSTANTIATE_TEST_SUITE_P(
    Records, FailedExpectation,
    testing::Values(
        Expectation{"", "expect no log \"zentrova id: enabled\"",
                    "no line of the log with \"zentrova id: enabled\"\n",
                    "zentrova id: enabled, value: (null)\n"},
        Expectation{"set #enabled off\n", "expect no writes", "no writes\n",
                    "written: /var/jb/var/mobile/Library/Preferences/com.hollowmere."},
        Expectation{"", "expect spawned /bin/bash", "/bin/bash\n", "nothing was started\n"},
        Expectation{"tap #respring\n", "expect spawned /var/jb/usr/bin/killall -9 Other",
                    "/var/jb/usr/bin/killall -9 Other\n", "/var/jb/usr/bin/killall \"killall\""},
        Expectation{"tap #respring\n", "expect spawned /var/jb/usr/bin/killall -9",
                    "/var/jb/usr/bin/killall -9\n", "/var/jb/usr/bin/killall \"killall\""},
        Expectation{"", "expect exception NSInvalidArgumentException",
                    "exception NSInvalidArgumentException\n", "nothing was raised\n"},
        Expectation{"send store setFloat:forKey: 1 k\n", "expect exception NoDataException",
                    "exception NoDataException\n", "NSInvalidArgumentException: -[HBPreferences"}));

// A value in the file matches only with its stored type.
INSTANTIATE_TEST_SUITE_P(
    Preferences, FailedExpectation,
    testing::Values(
        Expectation{"", "expect pref absent bool true", "absent bool true\n", ""},
        Expectation{"set #enabled off\n", "expect pref enabled bool true", "enabled bool true\n",
                    "enabled bool false\n"},
        Expectation{"set #enabled off\n", "expect pref enabled integer 0", "enabled integer 0\n",
                    "enabled bool false\n"},
        Expectation{"set #presentationStyle 1\n", "expect pref presentationStyle bool true",
                    "presentationStyle bool true\n", "presentationStyle integer 1\n"},
        Expectation{"set #presentationStyle 1\n", "expect pref presentationStyle real 1",
                    "presentationStyle real 1\n", "presentationStyle integer 1\n"},
        Expectation{"set #presentationStyle 1\n", "expect pref presentationStyle string 1",
                    "presentationStyle string \"1\"\n", "presentationStyle integer 1\n"},
        Expectation{"slide #cornerRadius 8\n", "expect pref cornerRadius integer 8",
                    "cornerRadius integer 8\n", "cornerRadius real 8.0\n"},
        Expectation{"set #enabled off\n", "expect no pref enabled", "no value under enabled\n",
                    "bool false\n"}));

class ScriptExpectationsTest : public ApplicationTest {
 protected:
  std::string message(const std::string& script) {
    const Played played = play(script);
    EXPECT_EQ(played.status, ScriptStatus::failed);
    return played.messages;
  }
};

TEST_F(ScriptExpectationsTest, AFileThatCannotBeReadHoldsNothingAndLacksNothing) {
  const std::string damaged = "open\nput " + std::string(preferenceFile) + " @damaged\n";
  folder.write("damaged", "<plist>");
  ScriptOptions beside;
  beside.folder = folder.path();
  EXPECT_EQ(play(damaged + "expect pref k bool true", beside).status, ScriptStatus::failed);
  EXPECT_EQ(play(damaged + "expect no pref k", beside).status, ScriptStatus::failed);
}

TEST_F(ScriptExpectationsTest, ALineThatIsNotLoggedIsToldWithTheLastOne) {
  EXPECT_THAT(message("open\nexpect log \"nothing of the kind\""),
              AllOf(HasSubstr("line 2: expectation failed"),
                    HasSubstr("expected: a line of the log with \"nothing of the kind\"\n"),
                    HasSubstr(" lines, the last: zentrova id: problemLink, value: (null)\n")));
}

TEST_F(ScriptExpectationsTest, ASectionThatIsNotThereIsTold) {
  EXPECT_THAT(message("open\nexpect rows 99 #enabled"), HasSubstr("the page has 12 sections"));
}

TEST_F(ScriptExpectationsTest, AnExceptionThatNobodyExpectsEndsTheScriptAtItsLine) {
  const std::string told = message("open\nsend store setFloat:forKey: 1 k\nget title");
  EXPECT_THAT(told, HasSubstr("line 2: an exception was raised that the next line does not expect: "
                              "NSInvalidArgumentException: -[HBPreferences setFloat:forKey:]"));
  EXPECT_THAT(message("open\nsend store setFloat:forKey: 1 k"), HasSubstr("line 2: "));
}

TEST_F(ScriptExpectationsTest, AScriptGoesOnAfterAnExceptionThatItExpects) {
  const Played played = play(
      "open\nsend store setFloat:forKey: 1 k\nexpect exception NSInvalidArgumentException\n"
      "get title");
  EXPECT_EQ(played.messages, "");
  EXPECT_EQ(played.output, "Zentrova\n");
}

}  // namespace
}  // namespace settings::test

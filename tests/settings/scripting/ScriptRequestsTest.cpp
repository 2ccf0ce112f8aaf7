// The script commands for the tasks of the URL session.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/settings/cli/ProgramRunner.h"
#include "tests/support/SmallPictures.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* iconQueue = "com.hollowmere.zentrovaprefs.common.load-icon-queue";

// A page with two link rows that have an icon each.
constexpr const char* openPage = R"(
put /var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle/Root.plist {"title": "Links", "items": [{"cell": "PSLinkCell", "label": "One", "id": "one", "cellClass": "HBLinkTableCell", "iconURL": "https://example.org/1.png"}, {"cell": "PSLinkCell", "label": "Two", "id": "two", "cellClass": "HBLinkTableCell", "iconURL": "https://example.org/2.png"}]}
open
)";

class ScriptRequests : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    device = new TemporaryFolder;
    const auto made = runProgramWith({"device", "create", device->in("device")});
    EXPECT_EQ(made.status, 0) << made.messages;
  }
  static void TearDownTestSuite() {
    delete device;
    device = nullptr;
  }

  // Plays the lines on the page with these options.
  ProgramResult play(const std::string& lines, std::vector<std::string> more = {}) const {
    const std::string script = folder.write("test.script", openPage + lines);
    std::vector<std::string> arguments = {"script", "--device", device->in("device")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    arguments.push_back(script);
    return runProgramWith(std::move(arguments));
  }

  TemporaryFolder folder;
  static inline TemporaryFolder* device = nullptr;
};

TEST_F(ScriptRequests, AreThereOnceTheIconQueueHasRun) {
  const ProgramResult result = play("requests\nbackground all\nrequests\n");
  EXPECT_EQ(result.status, 0) << result.messages;
  EXPECT_EQ(result.output, "1 suspended: GET https://example.org/1.png on " +
                               std::string(iconQueue) +
                               "\n  User-Agent: Peglol/2.0 iOS/15.4\n"
                               "2 suspended: GET https://example.org/2.png on " +
                               std::string(iconQueue) + "\n  User-Agent: Peglol/2.0 iOS/15.4\n");
}

TEST_F(ScriptRequests, AreToldAsJson) {
  const ProgramResult result =
      play("trait system 13.7\nopen\nbackground all\nrequests\n", {"--json"});
  EXPECT_EQ(result.status, 0) << result.messages;
  const json tasks = json::parse(result.output)["result"];
  EXPECT_EQ(tasks.size(), 2U);
  EXPECT_EQ(tasks[0], json({{"task", 1},
                            {"state", "suspended"},
                            {"method", "GET"},
                            {"url", "https://example.org/1.png"},
                            {"headers", {{"User-Agent", "Peglol/2.0 iOS/13.7"}}},
                            {"queue", iconQueue}}));
}

TEST_F(ScriptRequests, AnImageIsShownByTheMainQueue) {
  folder.write("icon.png", test_support::onePixelPicture());
  const ProgramResult result = play(
      "background all\nanswer 1 status=200 data=icon.png\nrequests\n"
      "send cell #one iconImage\nlog\n");
  EXPECT_EQ(result.status, 0) << result.messages;
  EXPECT_THAT(result.output, StartsWith("the completion handler ran on URLSession.callback-queue, "
                                        "then 1 piece of work on the main queue\n1 completed: "));
  EXPECT_THAT(result.output, HasSubstr("\n2 suspended: "));
  EXPECT_THAT(result.output, HasSubstr("\n<UIImage: "));
  EXPECT_THAT(result.output, testing::Not(HasSubstr("Error loading icon")));
}

TEST_F(ScriptRequests, AFailureIsLoggedOnTheCallbackQueue) {
  const ProgramResult result = play(
      "background all\nlog\nanswer 2 status=404 error=\"not here\"\n"
      "log\n");
  EXPECT_EQ(result.status, 0) << result.messages;
  EXPECT_THAT(result.output, HasSubstr("the completion handler ran on URLSession.callback-queue, "
                                       "then 0 pieces of work on the main queue\n"
                                       "[HBLinkTableCell.cpp:"));
  EXPECT_THAT(result.output,
              HasSubstr("] Error loading icon (https://example.org/2.png): 404 not found - "
                        "Error Domain=NSURLErrorDomain Code=-1 \"not here\""));
}

TEST_F(ScriptRequests, AnEmptyAnswerHasTheStatusZero) {
  const ProgramResult result = play("background all\nanswer 1\nanswer 2 status=0\nlog\n");
  EXPECT_EQ(result.status, 0) << result.messages;
  EXPECT_THAT(result.output, HasSubstr("(https://example.org/1.png): 0 unknown status - (null)\n"));
  EXPECT_THAT(result.output, HasSubstr("(https://example.org/2.png): 0 unknown status - (null)\n"));
}

TEST_F(ScriptRequests, TheAnswerIsToldAsJson) {
  const ProgramResult result = play("background all\nanswer 1 status=204\n", {"--json"});
  EXPECT_EQ(json::parse(result.output)["result"],
            json({{"task", 1}, {"queue", "URLSession.callback-queue"}, {"mainWork", 0}}));
}

TEST_F(ScriptRequests, AnAnswerThatCannotBeGivenEndsTheScript) {
  const auto expectFailure = [&](const std::string& lines, const std::string& message) {
    const ProgramResult result = play("background all\n" + lines);
    EXPECT_EQ(result.status, 1) << lines;
    EXPECT_THAT(result.messages, HasSubstr(message));
  };
  expectFailure("answer 3\n", "there is no task 3; there are 2");
  expectFailure("answer 0\n", "there is no task 0; there are 2");
  expectFailure("answer 1\nanswer 1\n", "the task 1 already has its answer");
  expectFailure("answer 1 data=missing.png\n", "cannot read the file");
}

TEST_F(ScriptRequests, ALineThatCannotBeUnderstoodIsTold) {
  const auto expectBad = [&](const std::string& line, const std::string& message) {
    const ProgramResult result = play(line + "\n");
    EXPECT_EQ(result.status, 2) << line;
    EXPECT_THAT(result.messages, HasSubstr(message));
  };
  expectBad("answer", "N is missing");
  expectBad("answer one", "is not a whole number: \"one\"");
  expectBad("answer 1 status=", "S is missing");
  expectBad("answer 1 status=-1", "is not a whole number: \"-1\"");
  expectBad("answer 1 status=1000", "S must be a status from 0 to 999");
  expectBad("answer 1 data=", "FILE is missing");
  expectBad("answer 1 error=", "TEXT is missing");
  expectBad("answer 1 body=x", "not a part of an answer: \"body=x\"");
  expectBad("requests 1", "unexpected text at the end of the line: \"1\"");
}

TEST_F(ScriptRequests, NeedAnOpenApplication) {
  for (const char* line : {"requests\n", "answer 1\n"}) {
    const ProgramResult result =
        runProgramWith({"script", "--device", device->in("device"), "-"}, std::string(line));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.messages, HasSubstr("nothing is open; use `open` first"));
  }
}

}  // namespace
}  // namespace settings::test

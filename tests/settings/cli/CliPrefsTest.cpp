#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/settings/cli/ProgramRunner.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

class CliPrefs : public ::testing::Test {
 protected:
  CliPrefs() {
    const ProgramResult made = runProgramWith({"device", "create", device});
    EXPECT_EQ(made.status, 0) << made.messages;
    std::filesystem::remove(fileInTree());
  }

  ProgramResult prefs(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin() + 1, {"--device", device});
    arguments.insert(arguments.begin(), "prefs");
    return runProgramWith(std::move(arguments));
  }

  // The path of the preference file on this machine.
  std::string fileInTree() const {
    return std::filesystem::canonical(device + "/var/jb").string() +
           "/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist";
  }
  void writeFile(std::string_view text) const {
    std::ofstream(fileInTree(), std::ios::binary) << text;
  }

  TemporaryFolder folder;
  std::string device = folder.in("device");
};

TEST_F(CliPrefs, SetWritesThroughTheStoreAndGetReadsItBack) {
  const ProgramResult set = prefs({"set", "presentationStyle", "1"});
  EXPECT_EQ(set.status, 0) << set.messages;
  EXPECT_EQ(set.output, "+ presentationStyle: 1 (integer)\n");
  EXPECT_EQ(prefs({"get", "presentationStyle"}).output, "1 (integer)\n");
  EXPECT_EQ(prefs({"get", "presentationStyle", "--json"}).output, "1\n");
}

TEST_F(CliPrefs, SetOfTheSameValueShowsNoChange) {
  prefs({"set", "presentationStyle", "1"});
  const ProgramResult again = prefs({"set", "presentationStyle", "1"});
  EXPECT_EQ(again.status, 0) << again.messages;
  EXPECT_EQ(again.output, "  presentationStyle: 1 (integer)\n");
}

TEST_F(CliPrefs, GetOfAnAbsentKeyIsStatusOne) {
  const ProgramResult result = prefs({"get", "nothing", "--json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.messages, HasSubstr("there is no key \"nothing\""));
}

TEST_F(CliPrefs, TheTypeSaysWhatIsStored) {
  const std::vector<std::pair<std::string, std::pair<std::string, std::string>>> rows = {
      {"bool", {"1", "true"}},
      {"integer", {"-5", "-5"}},
      {"real", {"2", "2.0"}},
      {"string", {"1", "\"1\""}},
      {"data", {"AAEC", R"({"data":"AAEC"})"}},
      {"date", {"2026-01-02T03:04:05Z", R"({"date":"2026-01-02T03:04:05Z"})"}},
      {"array", {"[1, \"a\"]", R"([1,"a"])"}},
      {"dict", {R"({"a": 1.5})", R"({"a":1.5})"}}};
  for (const auto& [type, row] : rows) {
    const ProgramResult set = prefs({"set", "key", "--type=" + type, "--", row.first});
    EXPECT_EQ(set.status, 0) << type << ": " << set.messages;
    const ProgramResult got = prefs({"get", "key", "--json"});
    EXPECT_EQ(json::parse(got.output, nullptr, false), json::parse(row.second)) << type;
  }
}

TEST_F(CliPrefs, WithoutATypeAValueIsReadAsJsonElseAsText) {
  for (const auto& [text, stored] :
       std::vector<std::pair<std::string, std::string>>{{"true", "true"},
                                                        {"1.5", "1.5"},
                                                        {"\"1\"", "\"1\""},
                                                        {"plain text", "\"plain text\""}}) {
    EXPECT_EQ(prefs({"set", "key", text}).status, 0);
    EXPECT_EQ(prefs({"get", "key", "--json"}).output, stored + "\n");
  }
}

TEST_F(CliPrefs, ANegativeNumberIsAValueAndNoOption) {
  const ProgramResult set = prefs({"set", "key", "-5"});
  EXPECT_EQ(set.status, 0) << set.messages;
  EXPECT_EQ(prefs({"get", "key", "--json"}).output, "-5\n");
}

TEST_F(CliPrefs, AValueThatIsNotOfTheTypeIsAUsageErrorAndChangesNothing) {
  for (const auto& [type, text] :
       std::vector<std::pair<std::string, std::string>>{{"bool", "maybe"},
                                                        {"integer", "1.5"},
                                                        {"integer", "99999999999999999999"},
                                                        {"real", "x"},
                                                        {"data", "%%"},
                                                        {"date", "today"},
                                                        {"array", "{}"},
                                                        {"dict", "[]"},
                                                        {"nothing", "1"}}) {
    const ProgramResult result = prefs({"set", "key", text, "--type", type});
    EXPECT_EQ(result.status, 2) << type << ' ' << text;
    EXPECT_NE(result.messages, "") << type;
  }
  EXPECT_FALSE(std::filesystem::exists(fileInTree()));
}

TEST_F(CliPrefs, RemoveTakesOneKeyAway) {
  prefs({"set", "a", "1"});
  prefs({"set", "b", "2"});
  EXPECT_EQ(prefs({"remove", "a"}).status, 0);
  EXPECT_EQ(json::parse(prefs({"show", "--json"}).output), json({{"b", 2}}));
}

TEST_F(CliPrefs, ShowPrintsTheFileAndAMissingOneIsEmpty) {
  EXPECT_EQ(json::parse(prefs({"show", "--json"}).output), json::object());
  prefs({"set", "a", "1"});
  EXPECT_EQ(prefs({"show"}).output, "a: 1 (integer)\n");
}

TEST_F(CliPrefs, ADamagedFileIsReportedAndNeverReplaced) {
  writeFile("<plist><dict><key>a</key>");
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"show"}, {"get", "a"}, {"set", "a", "1"}, {"remove", "a"}}) {
    const ProgramResult result = prefs(arguments);
    EXPECT_EQ(result.status, 1) << arguments[0];
    EXPECT_EQ(result.output, "") << arguments[0];
    EXPECT_THAT(result.messages, HasSubstr("line 1, column ")) << arguments[0];
  }
  std::ifstream stream(fileInTree());
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "<plist><dict><key>a</key>");
}

TEST_F(CliPrefs, ALinkToNothingIsReportedAndNeverReplaced) {
  std::filesystem::create_symlink("nothing.plist", fileInTree());
  for (const auto& arguments :
       std::vector<std::vector<std::string>>{{"show"}, {"set", "a", "1"}, {"remove", "a"}}) {
    const ProgramResult result = prefs(arguments);
    EXPECT_EQ(result.status, 1) << arguments[0];
    EXPECT_THAT(result.messages, HasSubstr("cannot read")) << arguments[0];
  }
  EXPECT_TRUE(std::filesystem::is_symlink(fileInTree()));
}

TEST_F(CliPrefs, ARootThatIsNoDictionaryIsReported) {
  writeFile("<plist version=\"1.0\"><array/></plist>");
  const ProgramResult result = prefs({"show"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.messages, HasSubstr("the root of a preference file must be a dictionary"));
}

TEST_F(CliPrefs, AWriteThatFailsIsAFailure) {
  const std::filesystem::path preferences = std::filesystem::path(fileInTree()).parent_path();
  std::filesystem::remove_all(preferences);
  const ProgramResult result = prefs({"set", "a", "1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.messages, HasSubstr("could not write"));
}

// The boolean true equals the integer 1 that remains in the file.
TEST_F(CliPrefs, AWriteThatFailsIsAFailureAlsoWhereTheOldValueEqualsTheNewOne) {
  prefs({"set", "long", std::string(4000, 'x')});
  prefs({"set", "a", "1"});
  ProgramRun shell;
  shell.program = "/bin/sh";
  const std::string withoutLargeFiles = "trap '' XFSZ; ulimit -f 1; exec \"$@\"";
  const ProgramResult result = runProgramWith({"-c", withoutLargeFiles, "sh", builtProgram(),
                                               "prefs", "set", "--device", device, "a", "true"},
                                              shell);
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.messages, HasSubstr("could not write"));
  EXPECT_EQ(prefs({"get", "a"}).output, "1 (integer)\n");
}

TEST_F(CliPrefs, AValueThatNoFileCanHoldIsAFailure) {
  prefs({"set", "a", "1"});
  for (const char* text : {"\x01", "\xFF"}) {
    const ProgramResult result = prefs({"set", "odd", text, "--type", "string"});
    EXPECT_NE(result.status, 0);
    EXPECT_NE(result.messages, "");
    EXPECT_EQ(prefs({"get", "odd"}).status, 1);
  }
}

TEST_F(CliPrefs, WhatIsNoNumberIsWrittenAsAReal) {
  for (const char* text : {"nan", "-nan"}) {
    const ProgramResult result = prefs({"set", "--type", "real", "a", "--", text});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(prefs({"get", "a"}).output, "nan (real)\n");
  }
}

TEST_F(CliPrefs, DiffPrintsWhatDiffersAndIsStatusOneThen) {
  const std::string before = folder.write("before.json", R"({"a": 1, "b": 2, "c": true})");
  const std::string after = folder.write("after.json", R"({"a": 1, "b": "2", "d": 4, "c": 1})");
  const ProgramResult differing = prefs({"diff", before, after});
  EXPECT_EQ(differing.status, 1);
  EXPECT_EQ(differing.output,
            "- b: 2 (integer)\n+ b: \"2\" (string)\n"
            "- c: true (bool)\n+ c: 1 (integer)\n"
            "+ d: 4 (integer)\n");
  EXPECT_EQ(prefs({"diff", before, before}).status, 0);
  json report = json::parse(prefs({"diff", before, after, "--json"}).output);
  EXPECT_EQ(report[0], json({{"key", "b"}, {"before", 2}, {"after", "2"}}));
}

TEST_F(CliPrefs, DiffTellsValuesThatNoFileCanHoldApart) {
  const std::string none = folder.write("none.json", "{}");
  const std::string one = folder.write("one.json", R"({"a": "\u0001"})");
  const std::string two = folder.write("two.json", R"({"a": "\u0002"})");
  EXPECT_EQ(prefs({"diff", one, two}).status, 1);
  EXPECT_EQ(prefs({"diff", none, one}).status, 1);
  EXPECT_EQ(prefs({"diff", one, one}).status, 0);
}

TEST_F(CliPrefs, DiffTellsTheTypesInsideOfLists) {
  const std::string before = folder.write("before.json", R"({"a": [true], "b": [2.0]})");
  const std::string after = folder.write("after.json", R"({"a": [1], "b": [2.0]})");
  EXPECT_EQ(prefs({"diff", before, after}).output, "- a: [true]\n+ a: [1]\n");
}

TEST_F(CliPrefs, DiffOfOneFileComparesWithThePreferenceFile) {
  prefs({"set", "a", "2"});
  const std::string before = folder.write("before.json", R"({"a": 1})");
  EXPECT_EQ(prefs({"diff", before}).output, "- a: 1 (integer)\n+ a: 2 (integer)\n");
}

TEST_F(CliPrefs, WatchPrintsChangesUntilItIsStopped) {
  for (const int signal : {SIGINT, SIGTERM}) {
    // The message shows that the watch is active: later changes are seen.
    const TemporaryFolder results;
    LiveProgram watch({"prefs", "watch", "--json", "--device", device},
                      LiveProgram::Read::messages);
    EXPECT_THAT(watch.readLine(), HasSubstr("watching "));
    EXPECT_EQ(watch.stop(signal), 0);
  }
}

TEST_F(CliPrefs, WatchReportsAChangeByAnotherProgram) {
  LiveProgram watch({"prefs", "watch", "--device", device}, LiveProgram::Read::both);
  EXPECT_THAT(watch.readLine(), HasSubstr("watching "));
  EXPECT_EQ(prefs({"set", "a", "1"}).status, 0);
  EXPECT_EQ(watch.readLine(), "+ a: 1 (integer)");
  EXPECT_EQ(prefs({"set", "a", "2"}).status, 0);
  EXPECT_EQ(watch.readLine(), "- a: 1 (integer)");
  EXPECT_EQ(watch.readLine(), "+ a: 2 (integer)");
  EXPECT_EQ(watch.stop(SIGTERM), 0);
}

TEST(CliDevice, TheEnvironmentNamesTheDevice) {
  const TemporaryFolder folder;
  EXPECT_EQ(runProgramWith({"device", "create", folder.in("d")}).status, 0);
  ProgramRun run;
  run.environment = {"ZENTROVA_DEVICE=" + folder.in("d")};
  const ProgramResult result = runProgramWith({"device", "describe", "--json"}, run);
  EXPECT_EQ(result.status, 0) << result.messages;
  json description = json::parse(result.output);
  EXPECT_EQ(description["folder"], folder.in("d"));
  EXPECT_EQ(description["bundlePath"], "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle");
  EXPECT_FALSE(description["modules"].empty());
}

TEST(CliDevice, TheFolderThatIsNamedGoesBeforeTheEnvironment) {
  const TemporaryFolder folder;
  ProgramRun run;
  run.environment = {"ZENTROVA_DEVICE=" + folder.in("other")};
  EXPECT_EQ(runProgramWith({"device", "create", folder.in("d")}, run).status, 0);
  EXPECT_TRUE(std::filesystem::exists(folder.in("d")));
  EXPECT_FALSE(std::filesystem::exists(folder.in("other")));
  const ProgramResult result = runProgramWith({"device", "describe", folder.in("d")}, run);
  EXPECT_THAT(result.output, HasSubstr("folder: " + folder.in("d") + "\n"));
}

TEST(CliDevice, CreateRefusesAFolderThatHoldsSomething) {
  const TemporaryFolder folder;
  folder.write("mine", "kept");
  const ProgramResult result = runProgramWith({"device", "create", folder.path()});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.messages, "");
  EXPECT_EQ(folder.read("mine"), "kept");
}

TEST(CliDevice, EverythingElseRefusesAFolderThatIsNoDeviceTree) {
  const TemporaryFolder folder;
  folder.write("script", "open\n");
  for (const auto& arguments :
       std::vector<std::vector<std::string>>{{"device", "describe"},
                                             {"device", "reset"},
                                             {"prefs", "show"},
                                             {"prefs", "set", "a", "1"},
                                             {"prefs", "watch"},
                                             {"serve", "--port", "0"},
                                             {"script", folder.in("script")}}) {
    std::vector<std::string> full = arguments;
    full.insert(full.end(), {"--device", folder.path()});
    const ProgramResult result = runProgramWith(full);
    EXPECT_EQ(result.status, 1) << arguments[0];
    EXPECT_EQ(result.output, "") << arguments[0];
    EXPECT_THAT(result.messages, HasSubstr(folder.path())) << arguments[0];
  }
  EXPECT_EQ(folder.read("script"), "open\n");
}

TEST(CliDevice, ResetMakesTheTreeAsNew) {
  const TemporaryFolder folder;
  const std::string device = folder.in("d");
  EXPECT_EQ(runProgramWith({"device", "create", device}).status, 0);
  EXPECT_EQ(runProgramWith({"prefs", "set", "a", "1", "--device", device}).status, 0);
  EXPECT_EQ(runProgramWith({"device", "reset", device}).status, 0);
  EXPECT_EQ(runProgramWith({"prefs", "get", "a", "--device", device}).status, 1);
}

}  // namespace
}  // namespace settings::test

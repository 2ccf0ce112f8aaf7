#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/settings/cli/ProgramRunner.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string xmlHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

TEST(CliPlist, LintIsSilentAboutWhatIsWellFormed) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.plist", xmlHead + "<dict/>\n</plist>\n");
  const ProgramResult result = runProgramWith({"plist", "lint", file});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output + result.messages, "");
}

TEST(CliPlist, LintPrintsALineForEachRefusedFile) {
  const TemporaryFolder folder;
  const std::string good = folder.write("good.plist", xmlHead + "<dict/>\n</plist>\n");
  const std::string bad = folder.write("bad.plist", xmlHead + "<dict><key>a</string></dict>\n");
  const std::string cut = folder.write("cut.plist", "bplist00");
  const std::string missing = folder.in("missing.plist");
  const ProgramResult result = runProgramWith({"plist", "lint", bad, good, cut, missing});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 3);
  EXPECT_THAT(
      result.output,
      StartsWith(bad + ": line 4, column 13: expected </key>, found </string>; accepted: </key>\n" +
                 cut +
                 ": byte 8: the file is too short for a binary property list; accepted: at "
                 "least 42 bytes\n"));
  EXPECT_THAT(result.output, HasSubstr("\n" + missing + ": "));
}

TEST(CliPlist, LintAsJsonNamesThePlace) {
  const ProgramResult result =
      runProgramWith({"plist", "lint", "--json", "-"}, xmlHead + "<dict><key>a</string></dict>\n");
  EXPECT_EQ(result.status, 1);
  json report = json::parse(result.output);
  EXPECT_EQ(report[0]["file"], "standard input");
  EXPECT_EQ(report[0]["ok"], false);
  EXPECT_EQ(report[0]["line"], 4);
  EXPECT_EQ(report[0]["column"], 13);
  EXPECT_EQ(report[0]["offset"], xmlHead.size() + 12);
  EXPECT_EQ(report[0]["reason"], "expected </key>, found </string>");
  EXPECT_EQ(report[0]["accepted"], "</key>");
}

TEST(CliPlist, LintSaysWhatIsWrongWithEachFileOnceAndWhatWouldBeAccepted) {
  const TemporaryFolder folder;
  const std::string missing = folder.in("missing.plist");
  EXPECT_EQ(runProgramWith({"plist", "lint", missing}).output,
            missing +
                ": cannot be read: No such file or directory; accepted: a file that can be "
                "read, of at most 268435456 bytes\n");
  EXPECT_THAT(runProgramWith({"plist", "lint", folder.path()}).output,
              StartsWith(folder.path() + ": cannot be read: it is a folder; accepted: "));
}

TEST(CliPlist, WhatNeverEndsIsReadNoFurtherThanTheLimit) {
  const ProgramResult result = runProgramWith({"plist", "lint", "/dev/zero"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            "/dev/zero: is larger than 268435456 bytes, which is the limit; accepted: a file that "
            "can be read, of at most 268435456 bytes\n");
}

TEST(CliPlist, ConvertGoesThroughEveryForm) {
  const TemporaryFolder folder;
  const std::string source =
      R"({"b":true,"i":18446744073709551615,"r":1.0,"n":{"real":"nan"},"d":{"data":"AAEC"},)"
      R"("t":{"date":"2026-01-02T03:04:05Z"},"a":["x",[]],"s":"<&>"})";
  const std::string binary = folder.in("out.plist");
  EXPECT_EQ(runProgramWith({"plist", "convert", "binary1", "-", "-o", binary}, source).status, 0);
  EXPECT_THAT(folder.read("out.plist"), StartsWith("bplist00"));
  const std::string xml = runProgramWith({"plist", "convert", "xml1", binary}).output;
  EXPECT_THAT(xml, StartsWith(xmlHead));
  EXPECT_THAT(xml, HasSubstr("<integer>18446744073709551615</integer>"));
  const ProgramResult back = runProgramWith({"plist", "convert", "json", "-"}, xml);
  EXPECT_EQ(back.status, 0);
  EXPECT_EQ(json::parse(back.output), json::parse(source));
  EXPECT_THAT(back.output, HasSubstr("\"r\": 1.0"));
}

TEST(CliPlist, ConvertRefusesWhatIsNoPropertyListAndLeavesTheOutput) {
  const TemporaryFolder folder;
  const std::string kept = folder.write("kept.plist", "as it was");
  for (const char* input : {"<plist>", "{\"a\": null}", "{", "", "[1e999]", "garbage"}) {
    const ProgramResult result =
        runProgramWith({"plist", "convert", "xml1", "-", "-o", kept}, input);
    EXPECT_EQ(result.status, 1) << input;
    EXPECT_EQ(result.output, "") << input;
    EXPECT_THAT(result.messages, HasSubstr("standard input: ")) << input;
  }
  EXPECT_EQ(folder.read("kept.plist"), "as it was");
}

TEST(CliPlist, ConvertRefusesNestingThatWouldExhaustTheStack) {
  const ProgramResult result = runProgramWith({"plist", "convert", "xml1", "-"},
                                              std::string(200000, '[') + std::string(200000, ']'));
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.messages, HasSubstr("512 levels deep"));
}

TEST(CliPlist, OutputThatCannotBeWrittenIsAFailureWithItsReason) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.plist", xmlHead + "<array/>\n</plist>\n");
  ProgramRun toFullDisk;
  toFullDisk.outputFile = "/dev/full";
  const ProgramResult full = runProgramWith({"plist", "convert", "xml1", file}, toFullDisk);
  EXPECT_EQ(full.status, 1);
  EXPECT_THAT(full.messages, HasSubstr("No space left on device"));
  const ProgramResult named = runProgramWith({"plist", "convert", "xml1", file, "-o", "/dev/full"});
  EXPECT_EQ(named.status, 1);
  EXPECT_THAT(named.messages, HasSubstr("cannot write /dev/full: No space left on device"));
  const ProgramResult nowhere =
      runProgramWith({"plist", "convert", "xml1", file, "-o", folder.in("no/folder")});
  EXPECT_EQ(nowhere.status, 1);
  EXPECT_EQ(nowhere.messages, "zentrova-settings: cannot write " + folder.in("no/folder") +
                                  ": No such file or directory\n");
}

TEST(CliPlist, ShowPrintsAnOutlineOrJson) {
  const std::string source = R"({"flag":true,"list":["a",{"data":"AAEC"}],"size":0.5})";
  const ProgramResult outline = runProgramWith({"plist", "show", "-"}, source);
  EXPECT_EQ(outline.output,
            "flag: true (bool)\n"
            "list: array of 2\n"
            "  0: \"a\" (string)\n"
            "  1: 3 bytes (data)\n"
            "size: 0.5 (real)\n");
  const ProgramResult asJson = runProgramWith({"plist", "show", "--json", "-"}, source);
  EXPECT_EQ(json::parse(asJson.output), json::parse(source));
  EXPECT_EQ(runProgramWith({"plist", "show", "/"}).status, 1);
}

}  // namespace
}  // namespace settings::test

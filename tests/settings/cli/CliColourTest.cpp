#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "tests/settings/cli/ProgramRunner.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

ProgramResult colour(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "colour");
  return runProgramWith(std::move(arguments));
}

json parsedColour(const std::string& text) {
  const ProgramResult result = colour({"parse", "--json", "--", text});
  EXPECT_EQ(result.status, 0) << text << ": " << result.messages;
  return json::parse(result.output, nullptr, false);
}

double singleFraction(unsigned byte) {
  return static_cast<double>(static_cast<float>(byte) / 255.0F);
}

json components(unsigned red, unsigned green, unsigned blue, unsigned alpha) {
  return {{"red", singleFraction(red)},
          {"green", singleFraction(green)},
          {"blue", singleFraction(blue)},
          {"alpha", singleFraction(alpha)}};
}

TEST(CliColour, ParsePrintsComponentsInFullPrecision) {
  EXPECT_EQ(parsedColour("FA0000"), components(250, 0, 0, 255));
  EXPECT_EQ(parsedColour("#12345678"), components(0x12, 0x34, 0x56, 0x78));
  EXPECT_EQ(parsedColour("#FA0000:0.0"), components(0, 250, 0, 0));
}

TEST(CliColour, ParseTakesAnyText) {
  EXPECT_EQ(parsedColour(""), components(0, 0, 0, 0));
  EXPECT_EQ(parsedColour("-FF"), components(0, 0, 0, 0));
  EXPECT_EQ(parsedColour("\xFF"), components(0, 0, 0, 0));
  EXPECT_EQ(parsedColour(std::string(60'000, 'f')), components(255, 255, 255, 255));
}

TEST(CliColour, ParsePrintsTheNameOfASystemColour) {
  EXPECT_EQ(parsedColour("red"), (json{{"system", "systemRedColor"}}));
  EXPECT_EQ(parsedColour("tertiary"), (json{{"system", "tertiaryLabelColor"}}));
  EXPECT_EQ(colour({"parse", "default"}).output, "system: labelColor\n");
}

TEST(CliColour, ParsePrintsALineForEachComponentWithoutJson) {
  EXPECT_EQ(colour({"parse", "FF000080"}).output,
            "red: 1.0\ngreen: 0.0\nblue: 0.0\nalpha: 0.501960813999176\n");
}

TEST(CliColour, FormatPrintsWhatIsStored) {
  EXPECT_EQ(colour({"format", "1", "0", "0", "1"}).output, "FF0000FF\n");
  EXPECT_EQ(colour({"format", "0.5", "0.25", "0", "0.5"}).output, "80400080\n");
  EXPECT_EQ(colour({"format", "1", "0", "0", "1", "--json"}).output, "\"FF0000FF\"\n");
}

TEST(CliColour, FormatClampsNothing) {
  EXPECT_EQ(colour({"format", "-1", "2", "0", "1"}).output, "FFFFFFFFFFFFFF011FE00FF\n");
}

TEST(CliColour, WhatWasFormattedIsParsedBack) {
  const json members = parsedColour("0A64C8FF");
  std::vector<std::string> arguments{"format"};
  for (const char* name : {"red", "green", "blue", "alpha"}) {
    arguments.push_back(members[name].dump());
  }
  EXPECT_EQ(colour(arguments).output, "0A64C8FF\n");
}

TEST(CliColour, TheBundleOfADeviceIsAskedWhereOneIsNamed) {
  const TemporaryFolder folder;
  const std::string device = folder.in("device");
  EXPECT_EQ(runProgramWith({"device", "create", device}).status, 0);
  EXPECT_EQ(colour({"parse", "red", "--device", device}).output, "system: systemRedColor\n");
}

TEST(CliColour, AFolderThatIsNoDeviceIsReported) {
  const TemporaryFolder folder;
  const ProgramResult result = colour({"format", "1", "0", "0", "1", "--device", folder.in("no")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.messages, HasSubstr(folder.in("no")));
}

TEST(CliColour, ADeviceWithoutABundleIsReported) {
  const TemporaryFolder folder;
  const std::string device = folder.in("device");
  EXPECT_EQ(runProgramWith({"device", "create", device}).status, 0);
  std::filesystem::remove(std::filesystem::canonical(device + "/var/jb").string() +
                          "/Library/PreferenceBundles/ZentrovaPrefs.bundle/ZentrovaPrefs");
  const ProgramResult result = colour({"parse", "red", "--device", device});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.messages, HasSubstr("ZentrovaPrefs"));
}

}  // namespace
}  // namespace settings::test

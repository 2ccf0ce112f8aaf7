#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "settings/device/BundleInstallation.h"
#include "tests/settings/cli/ProgramRunner.h"

namespace settings::test {
namespace {

using ::testing::HasSubstr;

class CliLint : public ::testing::Test {
 protected:
  CliLint() { std::filesystem::copy(findBuiltBundle(), bundle); }
  // Writes a list of these items as XML into the bundle, and returns the output of lint.
  std::string lintItems(const std::string& items) {
    folder.write(
        "Zentrova.bundle/Mine.plist",
        "<plist version=\"1.0\"><dict><key>items</key><array>" + items + "</array></dict></plist>");
    return lint();
  }
  std::string lint() {
    const ProgramResult result = runProgramWith({"lint", bundle});
    EXPECT_EQ(result.status, 1) << result.messages;
    return result.output;
  }
  static std::string item(const std::string& members) { return "<dict>" + members + "</dict>"; }
  static std::string text(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
  }
  static std::string button(const std::string& more) {
    return item(text("cell", "PSButtonCell") + text("label", "L") + more);
  }

  TemporaryFolder folder;
  std::string bundle = folder.in("Zentrova.bundle");
};

TEST_F(CliLint, BundleOfTheProductIsClean) {
  const ProgramResult result = runProgramWith({"lint"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output + result.messages, "");
}

TEST_F(CliLint, UnknownKindOfRowIsFound) {
  EXPECT_THAT(lintItems(item(text("cell", "PSFancyCell"))),
              HasSubstr("Mine.plist, row 1: unknown kind of row: \"PSFancyCell\""));
  EXPECT_THAT(lintItems(item("")), HasSubstr("has no \"cell\""));
}

TEST_F(CliLint, ActionThatNoPageOffersIsFound) {
  EXPECT_THAT(lintItems(button(text("id", "b") + text("action", "fly"))),
              HasSubstr("row 1 (#b): no page of the bundle offers the action \"fly\""));
}

TEST_F(CliLint, MissingClassesAreFound) {
  EXPECT_THAT(lintItems(button(text("detail", "NoSuchPage"))), HasSubstr("NoSuchPage"));
  EXPECT_THAT(lintItems(button(text("cellClass", "NoSuchCell"))), HasSubstr("NoSuchCell"));
}

TEST_F(CliLint, MissingListOfAPageIsFound) {
  std::filesystem::remove(bundle + "/Vibration.plist");
  EXPECT_THAT(lint(), HasSubstr("Root.plist, row"));
  EXPECT_THAT(lint(), HasSubstr("the page ZVRVibrationListController"));
}

// No row names these lists; the pages name them in their code.
TEST_F(CliLint, MissingListThatAPageNamesItselfIsFound) {
  for (const char* list : {"Customize", "DarkColors", "MediaModule"}) {
    const std::string file = bundle + "/" + list + ".plist";
    std::filesystem::rename(file, file + ".away");
    EXPECT_THAT(lint(), HasSubstr(std::string(list) + ".plist: a page cannot be shown: " + list +
                                  ".plist cannot be loaded"));
    std::filesystem::rename(file + ".away", file);
  }
}

TEST_F(CliLint, ListThatAPageCannotLoadIsToldOnce) {
  folder.write("Zentrova.bundle/LightColors.plist", "<plist>");
  std::filesystem::remove(bundle + "/Vibration.plist");
  const std::string output = lint();
  EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 2) << output;
}

TEST_F(CliLint, MissingKeyLabelAndPictureAreFound) {
  EXPECT_THAT(lintItems(item(text("cell", "PSSwitchCell") + text("label", "L"))),
              HasSubstr("has no \"key\""));
  EXPECT_THAT(lintItems(item(text("cell", "PSButtonCell"))), HasSubstr("has no \"label\""));
  EXPECT_THAT(lintItems(button(text("icon", "nothing"))),
              HasSubstr("the picture \"nothing\" is not in the bundle"));
}

TEST_F(CliLint, IdentifierThatStandsTwiceIsFound) {
  EXPECT_THAT(lintItems(button(text("id", "b")) + button(text("id", "b"))),
              HasSubstr("row 2 (#b): the identifier \"b\" is used twice"));
}

TEST_F(CliLint, ValuesAndTitlesOfDifferentLengthAreFound) {
  const std::string row =
      text("cell", "PSSegmentCell") + text("label", "L") + text("key", "k") +
      "<key>validValues</key><array><integer>0</integer></array><key>validTitles</key><array/>";
  EXPECT_THAT(lintItems(item(row)),
              HasSubstr("\"validTitles\" has 0 elements, \"validValues\" has 1"));
}

TEST_F(CliLint, ChoicesWithoutTitlesOrValuesAreFound) {
  const std::string row = text("cell", "PSSegmentCell") + text("label", "L") + text("key", "k");
  EXPECT_EQ(lintItems(item(row)), "Mine.plist, row 1: \"validValues\" is missing or empty\n");
  EXPECT_EQ(lintItems(item(row + "<key>validValues</key><array><integer>0</integer></array>")),
            "Mine.plist, row 1: has \"validValues\" and no \"validTitles\"\n");
}

TEST_F(CliLint, ValueOfAnotherTypeIsFoundOnce) {
  for (const char* const key : {"cellClass", "detail", "action"}) {
    const std::string number = std::string("<key>") + key + "</key><integer>7</integer>";
    EXPECT_EQ(lintItems(button(number)),
              std::string("Mine.plist, row 1: \"") + key + "\" must be a string, not a number\n");
  }
  EXPECT_THAT(lintItems(item("<key>cell</key><integer>7</integer>")),
              HasSubstr("Mine.plist, row 1: \"cell\" is not a string (expected PSGroupCell"));
}

TEST_F(CliLint, DamagedListAndInfoAreFound) {
  folder.write("Zentrova.bundle/Root.plist", "<plist>");
  folder.write("Zentrova.bundle/Info.plist", "<plist version=\"1.0\"><dict/></plist>");
  const std::string output = lint();
  EXPECT_THAT(output, HasSubstr("Root.plist: is not a property list"));
  EXPECT_THAT(output, HasSubstr("Info.plist: has no string under NSPrincipalClass"));
}

TEST_F(CliLint, WhatInfoLacksIsToldOnce) {
  folder.write("Zentrova.bundle/Info.plist", "<plist version=\"1.0\"><dict/></plist>");
  EXPECT_EQ(lint(),
            "Info.plist: has no string under CFBundleIdentifier\n"
            "Info.plist: has no string under CFBundleExecutable\n"
            "Info.plist: has no string under NSPrincipalClass\n");
  std::filesystem::remove(bundle + "/Info.plist");
  const std::string output = lint();
  EXPECT_THAT(output, HasSubstr("Info.plist: cannot read"));
  EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 1) << output;
}

TEST_F(CliLint, CodeThatIsMissingIsToldBesideWhatInfoLacks) {
  std::filesystem::remove(bundle + "/ZentrovaPrefs");
  const std::string missing = "ZentrovaPrefs: there is no such file. Reinstall the bundle.";
  EXPECT_THAT(lint(), HasSubstr(missing));
  folder.write("Zentrova.bundle/Info.plist",
               "<plist version=\"1.0\"><dict><key>CFBundleExecutable</key>"
               "<string>ZentrovaPrefs</string><key>NSPrincipalClass</key><string>A</string></dict>"
               "</plist>");
  const std::string output = lint();
  EXPECT_THAT(output, HasSubstr("has no string under CFBundleIdentifier"));
  EXPECT_THAT(output, HasSubstr(missing));
}

TEST_F(CliLint, FindingsAreJsonOnRequest) {
  lintItems(button(text("id", "b") + text("action", "fly")));
  const ProgramResult result = runProgramWith({"lint", bundle, "--json"});
  EXPECT_EQ(result.status, 1);
  const auto findings = nlohmann::json::parse(result.output);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0]["file"], "Mine.plist");
  EXPECT_EQ(findings[0]["row"], "row 1 (#b)");
}

TEST_F(CliLint, FolderThatIsNotThereIsSaid) {
  const ProgramResult result = runProgramWith({"lint", folder.in("nothing")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.messages, HasSubstr("is not the folder of a bundle"));
}

}  // namespace
}  // namespace settings::test

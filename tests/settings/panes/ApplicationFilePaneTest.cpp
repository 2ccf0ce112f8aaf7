// The preference file beside the phone: its content, any problem with it, and the changes of the
// last tap.

#include <cerrno>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/files/WriterIdentity.h"
#include "settings/device/Product.h"
#include "settings/panes/FilePane.h"
#include "tests/settings/application/ApplicationFixture.h"
#include "tests/support/FaultySystemCalls.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

class ApplicationFilePaneTest : public ApplicationTest {
 protected:
  json pane() { return application().filePane(); }
  std::string hostPath() { return *application().device().hostPath(productPreferencesPath); }
  // The pane reports a problem that contains the text, and the page opens as if nothing was stored.
  void expectProblem(const std::string& text) {
    open();
    const json shown = pane();
    EXPECT_EQ(shown["state"], "problem");
    EXPECT_THAT(shown["problem"].get<std::string>(), HasSubstr(text));
    EXPECT_EQ(shown["entries"], json::object());
    EXPECT_EQ(shownValue("presentFullyExpanded"), false);
    EXPECT_FALSE(application().crash());
  }
  ActionResult toggle(const std::string& identifier, bool on) {
    return act({{"action", "toggle"}, {"on", on}}, controlNode(identifier));
  }
};

// Temporary files of interrupted writes are removed when the application starts; those of writes in
// progress stay.
TEST_F(ApplicationFilePaneTest, LeftoversOfEndedWritersGoWhenTheApplicationStarts) {
  const std::string configurationFolder = "/private/jb/var/mobile/Library/ControlCenter";
  TreeWriter(root()).folder(configurationFolder);
  const auto left = [](const std::string& writer) {
    return std::string(platform::DeviceFileSystem::temporaryPrefix) + writer +
           "-0-0123456789abcdef";
  };
  const std::string stale = left("999999999-1");
  const std::string written = left(platform::currentWriter());
  const std::string preferenceFolder = "/private/jb/var/mobile/Library/Preferences";
  for (const std::string& place : {preferenceFolder, configurationFolder}) {
    for (const std::string& name : {stale, written, std::string("other.plist")}) {
      folder.write("device" + place + "/" + name, "<plist");
    }
  }
  folder.write("device/private/" + stale, "of another folder");
  open();
  const auto exists = [this](const std::string& path) {
    return application().device().fileExists(path);
  };
  for (const std::string& place : {preferenceFolder, configurationFolder}) {
    EXPECT_FALSE(exists(place + "/" + stale)) << place;
    EXPECT_TRUE(exists(place + "/" + written)) << place;
    EXPECT_TRUE(exists(place + "/other.plist")) << place;
  }
  EXPECT_TRUE(exists("/private/" + stale));
  EXPECT_EQ(pane()["state"], "missing");
}

TEST_F(ApplicationFilePaneTest, AMissingFileIsNoProblem) {
  open();
  const json shown = pane();
  EXPECT_EQ(shown["path"], productPreferencesPath);
  EXPECT_EQ(shown["state"], "missing");
  EXPECT_FALSE(shown.contains("problem"));
  EXPECT_EQ(shown["entries"], json::object());
  EXPECT_EQ(shown["changed"], json::array());
}

TEST_F(ApplicationFilePaneTest, TheEntriesAreThoseOfTheFileWithDataAsItsSizeOnly) {
  put(productPreferencesPath,
      propertyList("<dict><key>a</key><integer>1</integer><key>b</key><real>0.5</real>"
                   "<key>c</key><data>AAECAw==</data><key>d</key><array><data>AA==</data></array>"
                   "<key>e</key><dict><key>f</key><string>text</string></dict></dict>"));
  open();
  EXPECT_EQ(pane()["state"], "ok");
  EXPECT_EQ(pane()["entries"], (json{{"a", 1},
                                     {"b", 0.5},
                                     {"c", {{"data", 4}}},
                                     {"d", json::array({{{"data", 1}}})},
                                     {"e", {{"f", "text"}}}}));
}

TEST_F(ApplicationFilePaneTest, WhatTheLastTapChangedIsTold) {
  open();
  ASSERT_TRUE(toggle("presentFullyExpanded", true));
  EXPECT_EQ(pane()["changed"],
            json::array({{{"key", "presentFullyExpanded"}, {"before", nullptr}, {"after", true}}}));
  ASSERT_TRUE(toggle("enabled", false));
  EXPECT_EQ(pane()["changed"],
            json::array({{{"key", "enabled"}, {"before", nullptr}, {"after", false}}}));
  ASSERT_TRUE(toggle("enabled", true));
  EXPECT_EQ(pane()["changed"],
            json::array({{{"key", "enabled"}, {"before", false}, {"after", true}}}));
}

TEST_F(ApplicationFilePaneTest, ALookFurtherDownThePageLeavesTheChangeMarked) {
  open();
  ASSERT_TRUE(toggle("presentFullyExpanded", true));
  const json changed = pane()["changed"];
  const std::string table = TreeQuery(application().tree()).table().id;
  ASSERT_TRUE(act({{"action", "scroll"}, {"offset", 200}}, table));
  EXPECT_EQ(pane()["changed"], changed);
}

TEST_F(ApplicationFilePaneTest, AnotherTypeOfTheSameValueIsAChange) {
  put(productPreferencesPath, propertyList("<dict><key>a</key><integer>1</integer></dict>"));
  open();
  put(productPreferencesPath, propertyList("<dict><key>a</key><true/></dict>"));
  EXPECT_EQ(pane()["changed"], json::array({{{"key", "a"}, {"before", 1}, {"after", true}}}));
}

TEST_F(ApplicationFilePaneTest, AChangeFromOutsideIsSeen) {
  open();
  put(productPreferencesPath, propertyList("<dict><key>a</key><integer>1</integer></dict>"));
  EXPECT_EQ(pane()["entries"], (json{{"a", 1}}));
  ASSERT_FALSE(application().device().remove(productPreferencesPath));
  EXPECT_EQ(pane()["state"], "missing");
}

TEST_F(ApplicationFilePaneTest, AnEmptyFileIsAProblem) {
  put(productPreferencesPath, "");
  expectProblem("not a property list");
}

TEST_F(ApplicationFilePaneTest, AFileThatBecomesEmptyIsAProblem) {
  put(productPreferencesPath, propertyList("<dict><key>a</key><integer>1</integer></dict>"));
  open();
  EXPECT_EQ(pane()["state"], "ok");
  put(productPreferencesPath, "");
  EXPECT_EQ(pane()["state"], "problem");
}

TEST_F(ApplicationFilePaneTest, ATruncatedFileIsAProblemWithItsPlace) {
  put(productPreferencesPath, "<?xml version=\"1.0\"?>\n<plist version=\"1.0\">\n<dict><key>a");
  expectProblem("line 3");
}

TEST_F(ApplicationFilePaneTest, ATruncatedBinaryFileIsAProblem) {
  put(productPreferencesPath, "bplist00");
  expectProblem("not a property list");
}

TEST_F(ApplicationFilePaneTest, AnotherRootTypeIsAProblemThatNamesIt) {
  put(productPreferencesPath, propertyList("<array/>"));
  expectProblem("an array, not a dictionary");
  put(productPreferencesPath, propertyList("<string>text</string>"));
  expectProblem("a string, not a dictionary");
}

TEST_F(ApplicationFilePaneTest, AFolderInThePlaceOfTheFileIsAProblem) {
  ASSERT_FALSE(application().device().createDirectory(productPreferencesPath));
  expectProblem("The settings start empty");
}

TEST_F(ApplicationFilePaneTest, ALinkInACircleIsAProblem) {
  const std::string path(productPreferencesPath);
  ASSERT_FALSE(application().device().createSymbolicLink(path, path));
  expectProblem("The settings start empty");
}

TEST_F(ApplicationFilePaneTest, ALinkToNothingIsAProblemAndNotAMissingFile) {
  ASSERT_FALSE(application().device().createSymbolicLink(productPreferencesPath, "/absent"));
  expectProblem("The settings start empty");
}

// The superuser can read every file, so the system calls are made to fail.
TEST_F(ApplicationFilePaneTest, AFileThatMayNotBeReadIsAProblem) {
  put(productPreferencesPath, propertyList("<dict><key>a</key><true/></dict>"));
  const auto calls = std::make_shared<test_support::FaultySystemCalls>();
  platform::DeviceFileSystem files(root(), calls);
  FilePane reader(files);
  EXPECT_EQ(reader.json()["state"], "ok");
  calls->fail("openat", EACCES, test_support::FaultySystemCalls::always);
  calls->fail("openat2", EACCES, test_support::FaultySystemCalls::always);
  const json shown = reader.json();
  EXPECT_EQ(shown["state"], "problem");
  EXPECT_THAT(shown["problem"].get<std::string>(), HasSubstr("Permission denied"));
  EXPECT_EQ(shown["entries"], json::object());
}

TEST_F(ApplicationFilePaneTest, APipeInThePlaceOfTheFileIsAProblemAndNobodyWaits) {
  ASSERT_EQ(::mkfifo((root() + "/private/jb/var/mobile/Library/Preferences/"
                               "com.hollowmere.zentrovaprefs.plist")
                         .c_str(),
                     0600),
            0);
  expectProblem("The settings start empty");
}

TEST_F(ApplicationFilePaneTest, TheNextChangeReplacesADamagedFile) {
  put(productPreferencesPath, "damaged");
  open();
  ASSERT_TRUE(toggle("presentFullyExpanded", true));
  EXPECT_EQ(pane()["state"], "ok");
  EXPECT_EQ(pane()["entries"], (json{{"presentFullyExpanded", true}}));
}

TEST_F(ApplicationFilePaneTest, AChangeThatCannotBeStoredLeavesTheFileAndIsRecordedAsAFailedWrite) {
  ASSERT_FALSE(application().device().createDirectory(productPreferencesPath));
  open();
  std::uint64_t cursor = 0;
  ASSERT_TRUE(toggle("presentFullyExpanded", true));
  const auto writes = application().writesSince(cursor);
  ASSERT_EQ(writes.size(), 1U);
  EXPECT_NE(writes[0].error.code, 0);
  EXPECT_EQ(pane()["state"], "problem");
  EXPECT_EQ(shownValue("presentFullyExpanded"), true);  // the value in memory stays
}

}  // namespace
}  // namespace settings::test

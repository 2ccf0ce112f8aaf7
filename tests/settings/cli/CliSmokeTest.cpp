#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/settings/cli/ProgramRunner.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

// ./test covers the other devices.
TEST(CliSmoke, ProductHasNoFindingsOnATablet) {
  const ProgramResult result =
      runProgramWith({"smoke", "--json", "--idiom", "pad", "--system", "16.5"});
  EXPECT_EQ(result.status, 0) << result.output << result.messages;
  const json report = json::parse(result.output);
  // Two appearances, each as new and in use.
  EXPECT_EQ(report["configurations"], 4);
  EXPECT_GT(report["pages"], 4 * 8);
  EXPECT_GT(report["sheets"], 4);
  EXPECT_THAT(report["expected"].dump(), HasSubstr("restoreToggleSize raises"));
  EXPECT_THAT(report["expected"].dump(), HasSubstr("closing the colour picker"));
}

// A row whose action raises, on a copy of the device. The device itself does not change.
TEST(CliSmoke, ExceptionThatMustNotBeIsFound) {
  const TemporaryFolder folder;
  const std::string device = folder.in("device");
  ASSERT_EQ(runProgramWith({"device", "create", device}).status, 0);
  const std::string list =
      "device/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle/Vibration.plist";
  folder.write(list,
               "<plist version=\"1.0\"><dict><key>items</key><array><dict><key>cell</key>"
               "<string>PSButtonCell</string><key>label</key><string>Bad</string>"
               "<key>action</key><string>fly</string></dict></array></dict></plist>");
  const ProgramResult result =
      runProgramWith({"smoke", "--device", device, "--idiom", "phone", "--system", "15.0"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("row \"Bad\""));
  EXPECT_FALSE(std::filesystem::exists(folder.in("device/var/log/zentrova-programs.log")));
}

TEST(CliSmoke, KindOfDeviceThatIsNotTriedIsAUsageError) {
  for (const auto& [option, value] : {std::pair("--idiom", "watch"), std::pair("--system", "15.1"),
                                      std::pair("--appearance", "purple")}) {
    const ProgramResult result = runProgramWith({"smoke", option, value});
    EXPECT_EQ(result.status, 2) << option;
    EXPECT_EQ(result.output, "") << option;
    EXPECT_THAT(result.messages, HasSubstr(std::string(value) + " not in {")) << option;
  }
}

TEST(CliSmoke, DeviceThatIsNotThereIsSaid) {
  const TemporaryFolder folder;
  const ProgramResult result = runProgramWith({"smoke", "--device", folder.in("nothing")});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.messages, "");
}

}  // namespace
}  // namespace settings::test

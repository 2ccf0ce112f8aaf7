#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/settings/cli/ProgramRunner.h"

namespace settings::test {
namespace {

using ::testing::HasSubstr;
using Arguments = std::vector<std::string>;

class EverySubcommand : public ::testing::TestWithParam<Arguments> {};

TEST_P(EverySubcommand, HasHelpWithAnExample) {
  Arguments arguments = GetParam();
  arguments.emplace_back("--help");
  const ProgramResult result = runProgramWith(arguments);
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, HasSubstr("Example:\n  "));
  EXPECT_THAT(result.output, HasSubstr("zentrova-settings"));
  EXPECT_EQ(result.messages, "");
}

TEST_P(EverySubcommand, RefusesAnUnknownOptionAsAUsageError) {
  Arguments arguments = GetParam();
  arguments.emplace_back("--no-such-option");
  const ProgramResult result = runProgramWith(arguments);
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_NE(result.messages, "");
}

INSTANTIATE_TEST_SUITE_P(
    Cli, EverySubcommand,
    ::testing::Values(Arguments{}, Arguments{"serve"}, Arguments{"script"}, Arguments{"smoke"},
                      Arguments{"lint"}, Arguments{"prefs"}, Arguments{"prefs", "get"},
                      Arguments{"prefs", "set"}, Arguments{"prefs", "remove"},
                      Arguments{"prefs", "show"}, Arguments{"prefs", "diff"},
                      Arguments{"prefs", "watch"}, Arguments{"plist"},
                      Arguments{"plist", "convert"}, Arguments{"plist", "lint"},
                      Arguments{"plist", "show"}, Arguments{"colour"}, Arguments{"colour", "parse"},
                      Arguments{"colour", "format"}, Arguments{"device"},
                      Arguments{"device", "create"}, Arguments{"device", "describe"},
                      Arguments{"device", "reset"}));

class IncompleteCommandLine : public ::testing::TestWithParam<Arguments> {};

TEST_P(IncompleteCommandLine, IsAUsageError) {
  const ProgramResult result = runProgramWith(GetParam());
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_NE(result.messages, "");
}

INSTANTIATE_TEST_SUITE_P(
    Cli, IncompleteCommandLine,
    ::testing::Values(Arguments{}, Arguments{"nonsense"}, Arguments{"script"}, Arguments{"prefs"},
                      Arguments{"prefs", "get"}, Arguments{"prefs", "set", "key"},
                      Arguments{"prefs", "remove"}, Arguments{"prefs", "diff"}, Arguments{"plist"},
                      Arguments{"plist", "lint"}, Arguments{"plist", "convert", "xml1"},
                      Arguments{"plist", "convert", "yaml", "-"}, Arguments{"plist", "show"},
                      Arguments{"colour"}, Arguments{"colour", "parse"},
                      Arguments{"colour", "format", "1", "0", "0"},
                      Arguments{"colour", "format", "1", "0", "0", "red"}, Arguments{"device"},
                      Arguments{"serve", "--port", "70000"}, Arguments{"serve", "--port", "x"},
                      Arguments{"serve", "--appearance", "purple"},
                      Arguments{"script", "-", "--screen", "0x0"},
                      Arguments{"prefs", "get", "key", "--domain", "../x"}));

TEST(CliHelp, PortOutOfRangeIsToldWithTheRange) {
  for (const char* const port : {"70000", "-1", "x"}) {
    const ProgramResult result = runProgramWith({"serve", "--port", port});
    EXPECT_THAT(result.messages, HasSubstr("--port")) << port;
    EXPECT_THAT(result.messages, HasSubstr("65535")) << port;
  }
}

TEST(CliHelp, ScriptHelpTellsOfEveryCommand) {
  const ProgramResult result = runProgramWith({"script", "--help"});
  for (const char* command :
       {"tap ROW", "set ROW VALUE", "put PATH", "expect", "advance", "send"}) {
    EXPECT_THAT(result.output, HasSubstr(command));
  }
}

}  // namespace
}  // namespace settings::test

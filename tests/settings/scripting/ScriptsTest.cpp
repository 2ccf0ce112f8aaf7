// Plays each script in tests/settings/scripts on a new device. NAME.output, if present, is the
// complete expected output of NAME.script. NAME.py, if present, then checks the device's files with
// Python's own property list reader: it receives the folder that acts as "/", and exits with 0 if
// all checks pass.

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "tests/settings/cli/ProgramRunner.h"

namespace settings::test {
namespace {

const std::filesystem::path scripts(ZENTROVA_SCRIPTS);

// The names of the scripts, without extension.
std::vector<std::string> scriptNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(scripts)) {
    if (entry.path().extension() == ".script") names.push_back(entry.path().stem().string());
  }
  std::ranges::sort(names);
  return names;
}

std::string testName(const testing::TestParamInfo<std::string>& parameter) {
  std::string name = parameter.param;
  std::ranges::replace_if(
      name, [](unsigned char each) { return std::isalnum(each) == 0; }, '_');
  return name;
}

std::string fileOf(const std::string& name, const char* extension) {
  return (scripts / (name + extension)).string();
}

std::string contentsOf(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class Script : public testing::TestWithParam<std::string> {
 protected:
  Script() {
    const ProgramResult made = runProgramWith({"device", "create", device});
    EXPECT_EQ(made.status, 0) << made.messages;
  }

  TemporaryFolder folder;
  std::string device = folder.in("device");
};

TEST_P(Script, HoldsWhatItExpects) {
  const ProgramResult played =
      runProgramWith({"script", "--device", device, fileOf(GetParam(), ".script")});
  ASSERT_EQ(played.status, 0) << played.messages << "It printed:\n" << played.output;
  const std::string output = fileOf(GetParam(), ".output");
  if (std::filesystem::exists(output)) {
    EXPECT_EQ(played.output, contentsOf(output));
  }
  const std::string check = fileOf(GetParam(), ".py");
  if (!std::filesystem::exists(check)) return;
  ProgramRun python;
  python.program = "python3";
  python.environment = {"PYTHONDONTWRITEBYTECODE=1"};
  const ProgramResult checked = runProgramWith({check, device}, python);
  EXPECT_EQ(checked.status, 0) << checked.messages << checked.output;
}

INSTANTIATE_TEST_SUITE_P(, Script, testing::ValuesIn(scriptNames()), testName);

}  // namespace
}  // namespace settings::test

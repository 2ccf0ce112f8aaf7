#include <array>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "settings/device/Product.h"
#include "tests/settings/device/DeviceTreeFixture.h"

namespace settings::tests {
namespace {

using testing::HasSubstr;

struct Ended {
  int status = -1;
  std::string output;
  std::string errors;
};

// The stand-ins, started like the bundle starts them: with a null environment.
class DevicePrograms : public DeviceTreeTest {
 protected:
  void SetUp() override {
    const auto created = create();
    ASSERT_TRUE(created) << created.problem;
  }

  Ended run(std::string_view path, std::vector<std::string> arguments) {
    const Path program = std::filesystem::canonical(host(path));
    std::vector<char*> argv;
    for (auto& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    const Path out = folder / "out";
    const Path err = folder / "err";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), flags, 0600);
    pid_t child = 0;
    char* noEnvironment[] = {nullptr};
    const int error =
        ::posix_spawn(&child, program.c_str(), &actions, nullptr, argv.data(), noEnvironment);
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(error, 0) << path;
    int status = 0;
    if (error != 0 || ::waitpid(child, &status, 0) != child) return {};
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read(out), read(err)};
  }
  std::string programLog() { return read(host(programLogPath)); }
  std::string homeScreenLog() { return read(host(homeScreenLogPath)); }
};

TEST_F(DevicePrograms, KillallRestartsTheHomeScreenAndRecordsIt) {
  const auto ended = run("/var/jb/usr/bin/killall", {"killall", "-9", "SpringBoard"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.output, "");
  EXPECT_EQ(ended.errors, "");
  EXPECT_EQ(programLog(), "/var/jb/usr/bin/killall\t-9\tSpringBoard\n");
  EXPECT_EQ(homeScreenLog(), "killed with signal 9, started again\n");
}

TEST_F(DevicePrograms, KillallRefusesWhatDoesNotRun) {
  const auto ended = run("/var/jb/usr/bin/killall", {"killall", "-9", "Nobody"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.errors, HasSubstr("No matching processes"));
  EXPECT_EQ(homeScreenLog(), "");
  EXPECT_EQ(run("/var/jb/usr/bin/killall", {"killall"}).status, 1);
}

TEST_F(DevicePrograms, SbreloadReloadsTheHomeScreen) {
  EXPECT_EQ(run("/var/jb/usr/bin/sbreload", {"sbreload"}).status, 0);
  EXPECT_EQ(programLog(), "/var/jb/usr/bin/sbreload\n");
  EXPECT_EQ(homeScreenLog(), "reloaded\n");
}

TEST_F(DevicePrograms, BashPrintsThePackagesRecord) {
  const auto ended = run("/bin/bash", {"/bin/bash", "dpkg", "-s", "com.hollowmere.zentrova"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_TRUE(ended.output.starts_with("Package: com.hollowmere.zentrova\n")) << ended.output;
  EXPECT_THAT(ended.output, HasSubstr("\nVersion: 1.0.0\n"));
  EXPECT_EQ(programLog(), "/bin/bash\tdpkg\t-s\tcom.hollowmere.zentrova\n");
}

TEST_F(DevicePrograms, BashKnowsNoOtherPackageAndNoOtherProgram) {
  const auto package = run("/bin/bash", {"/bin/bash", "dpkg", "-s", "com.example.other"});
  EXPECT_EQ(package.status, 1);
  EXPECT_EQ(package.output, "");
  EXPECT_THAT(package.errors, HasSubstr("com.example.other"));
  EXPECT_EQ(run("/bin/bash", {"/bin/bash", "apt", "update"}).status, 127);
}

TEST_F(DevicePrograms, EachStartIsOneLine) {
  run("/var/jb/usr/bin/sbreload", {"sbreload"});
  run("/var/jb/usr/bin/killall", {"killall", "-9", "SpringBoard"});
  EXPECT_EQ(programLog(), "/var/jb/usr/bin/sbreload\n/var/jb/usr/bin/killall\t-9\tSpringBoard\n");
}

// The output of a stand-in can be set, byte for byte.
TEST_F(DevicePrograms, OutputThatWasSetIsPrintedInstead) {
  const std::string text("a \\n%s\0\xFF without an end", 24);
  write(host("/bin/bash.stdout"), text);
  const auto ended = run("/bin/bash", {"/bin/bash", "dpkg", "-s", "com.hollowmere.zentrova"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.output, text);
  EXPECT_EQ(programLog(), "/bin/bash\tdpkg\t-s\tcom.hollowmere.zentrova\n");
}

// A program finds the tree from its own path, even after the tree was moved.
TEST_F(DevicePrograms, FindATreeThatWasMoved) {
  std::filesystem::create_directories(folder / "with space");
  std::filesystem::rename(treePath(), folder / "with space" / "device");
  std::filesystem::create_directory_symlink(folder / "with space" / "device", treePath());
  EXPECT_EQ(run("/var/jb/usr/bin/sbreload", {"sbreload"}).status, 0);
  EXPECT_EQ(homeScreenLog(), "reloaded\n");
}

TEST_F(DevicePrograms, RefuseToRunOutsideOfATree) {
  std::filesystem::remove(host("/.zentrova-device.plist"));
  const auto ended = run("/var/jb/usr/bin/sbreload", {"sbreload"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.errors, HasSubstr("not in a device tree"));
}

}  // namespace
}  // namespace settings::tests

// Tests of the test tools.
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "tests/support/TemporaryDeviceTree.h"
#include "tests/support/TestProcess.h"
#include "tests/support/ThreadedTestProcess.h"

namespace {

using test_support::TemporaryDeviceTree;
using test_support::TestProcess;

TEST(TemporaryDeviceTree, IsOneOfItsOwnAndGoesAway) {
  std::string first;
  {
    const TemporaryDeviceTree one;
    const TemporaryDeviceTree two;
    EXPECT_NE(one.root(), two.root());
    first = one.root();
    one.write("/var/jb/x/y", "text");
    one.makeFolder("/closed");
    one.setMode("/closed", 0);
    EXPECT_EQ(two.read("/var/jb/x/y"), std::nullopt);
  }
  EXPECT_FALSE(std::filesystem::exists(first));
}

TEST(TemporaryDeviceTree, HasTheInstallRootBehindALink) {
  const TemporaryDeviceTree tree;
  tree.write("/var/jb/a", "x");
  EXPECT_TRUE(std::filesystem::exists(tree.root() + "/private/preboot/jb/a"));
  EXPECT_TRUE(tree.exists("/var/jb/var/mobile/Library/Preferences"));
}

TEST(TestProcess, ProvidesWhatAProcessNeeds) {
  TestProcess test;
  platform::Process& process = platform::Process::current();
  EXPECT_EQ(&process, &test.process());
  EXPECT_EQ(&process.service<platform::FileSystem>(), &test.files());
  EXPECT_EQ(&process.service<platform::Scheduler>(), &test.scheduler());
  EXPECT_EQ(&process.service<platform::Log>(), &test.log());
  EXPECT_EQ(&process.service<platform::DeviceTraits>(), &test.traits());
  EXPECT_EQ(&process.service<platform::Programs>(), &test.recordedPrograms());
  EXPECT_NE(test.classes().find("NSMutableDictionary"), nullptr);
}

TEST(TestProcess, FilesCanBeMadeToFail) {
  TestProcess test;
  test.systemCalls().fail("fdatasync", 5);
  EXPECT_EQ(test.files().writeAtomically(TestProcess::preferencePath, "x").code, 5);
  EXPECT_EQ(test.files().writeAtomically(TestProcess::preferencePath, "x").code, 0);
  EXPECT_EQ(test.tree().read(TestProcess::preferencePath), "x");
}

TEST(ThreadedTestProcess, RunsBackgroundWorkOnThreadsOfTheSameProcess) {
  test_support::ThreadedTestProcess test;
  const auto mainThread = std::this_thread::get_id();
  std::atomic<bool> done{false};
  test.scheduler().asyncGlobal([&] {
    EXPECT_NE(std::this_thread::get_id(), mainThread);
    platform::FileSystem& files = platform::Process::current().service<platform::FileSystem>();
    EXPECT_EQ(files.writeAtomically("/a", "x").code, 0);
    done = true;
  });
  EXPECT_TRUE(test.settles([&] { return done.load(); }));
  EXPECT_EQ(test.base().tree().read("/a"), "x");
}

}  // namespace

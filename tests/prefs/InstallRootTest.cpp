#include <array>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "prefs/InstallRoot.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {
namespace {

class InstallRoot : public testing::Test {
 protected:
  InstallRoot() { process.tree().remove("/var/jb"); }

  const std::string& rootWithLinkTo(std::string_view destination) {
    process.tree().link("/var/jb", destination);
    return getRootPath();
  }

  test_support::TestProcess process;
};

TEST_F(InstallRoot, IsTheDestinationOfTheLinkAsItStands) {
  EXPECT_EQ(rootWithLinkTo("/private/preboot/ABC/jb-1/root"), "/private/preboot/ABC/jb-1/root");
}

TEST_F(InstallRoot, MayBeARelativeDestination) {
  EXPECT_EQ(rootWithLinkTo("../private//preboot/jb/"), "../private//preboot/jb/");
}

// The link is not followed: its destination need not exist.
TEST_F(InstallRoot, MayBeADestinationThatIsNotThere) {
  EXPECT_EQ(rootWithLinkTo("/nowhere"), "/nowhere");
}

TEST_F(InstallRoot, IsTheRootWhereTheLinkLeadsToJb) {
  EXPECT_EQ(rootWithLinkTo("/jb"), "/");
}

TEST_F(InstallRoot, IsTheRootWhereTheLinkLeadsToJbWithASlash) {
  EXPECT_EQ(rootWithLinkTo("/jb/"), "/");
}

// Only these two spellings are compared.
TEST_F(InstallRoot, IsTheDestinationWhereTheLinkOnlyResemblesJb) {
  EXPECT_EQ(rootWithLinkTo("/jb//"), "/jb//");
}

TEST_F(InstallRoot, IsTheRootWhereAFolderStandsInPlaceOfTheLink) {
  process.tree().makeFolder("/var/jb");
  EXPECT_EQ(getRootPath(), "/");
}

TEST_F(InstallRoot, IsTheRootWhereAFileStandsInPlaceOfTheLink) {
  process.tree().write("/var/jb", "");
  EXPECT_EQ(getRootPath(), "/");
}

TEST_F(InstallRoot, IsTheRootWhereThereIsNothing) {
  EXPECT_EQ(getRootPath(), "/");
}

TEST_F(InstallRoot, IsFoundOutOncePerProcess) {
  EXPECT_EQ(rootWithLinkTo("/first"), "/first");
  process.tree().remove("/var/jb");
  process.tree().link("/var/jb", "/second");
  EXPECT_EQ(getRootPath(), "/first");
}

TEST_F(InstallRoot, IsFoundOutAnewInAnotherProcess) {
  EXPECT_EQ(rootWithLinkTo("/first"), "/first");
  test_support::TestProcess other;
  other.tree().remove("/var/jb");
  other.tree().link("/var/jb", "/second");
  EXPECT_EQ(getRootPath(), "/second");
}

// The first call may come from any thread, and from several at once: the link is read once.
TEST_F(InstallRoot, IsTheSameForAllThreads) {
  const auto readings = [](test_support::TestProcess& of) {
    return of.systemCalls().count("readlinkat");
  };
  std::size_t once = 0;
  {
    test_support::TestProcess alone;
    alone.tree().remove("/var/jb");
    alone.tree().link("/var/jb", "/first");
    alone.systemCalls().clearCalls();
    getRootPath();
    once = readings(alone);
    ASSERT_GT(once, 0U);
  }
  process.tree().link("/var/jb", "/first");
  process.systemCalls().clearCalls();
  std::array<const std::string*, 4> results{};
  std::vector<std::thread> threads;
  for (auto& result : results) {
    threads.emplace_back([this, &result] {
      const platform::ProcessScope scope(process.process());
      result = &getRootPath();
    });
  }
  for (auto& thread : threads) thread.join();
  for (const auto* result : results) EXPECT_EQ(result, results[0]);
  EXPECT_EQ(*results[0], "/first");
  EXPECT_EQ(readings(process), once);
}

}  // namespace
}  // namespace zentrova::tests

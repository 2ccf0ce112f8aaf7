// The state after a write, including failed ones.
#include <atomic>
#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/foundation/files/WriterIdentity.h"
#include "tests/platform/foundation/files/DeviceFilesFixture.h"

namespace {

using platform::DeviceFileSystem;
using platform::FileError;
using platform::PathResolution;
using test_support::FaultySystemCalls;
using test_support::TemporaryDeviceTree;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::StartsWith;

constexpr std::string_view folder = "/prefs";
constexpr std::string_view target = "/prefs/a.plist";

class AtomicWriteTest : public DeviceFilesTest {
 protected:
  AtomicWriteTest() { _tree.makeFolder(folder); }

  std::vector<std::string> names() { return _files.contentsOfDirectory(folder).value(); }
  unsigned modeOf(std::string_view item) { return _files.attributesOfItem(item)->mode; }
};

INSTANTIATE_TEST_SUITE_P(Both, AtomicWriteTest, AtomicWriteTest::bothResolutions(),
                         AtomicWriteTest::nameOf);

TEST_P(AtomicWriteTest, MakesANewFile) {
  EXPECT_EQ(_files.writeAtomically(target, "new").code, 0);
  EXPECT_EQ(_tree.read(target), "new");
  EXPECT_THAT(names(), ElementsAre("a.plist"));
  const mode_t mask = ::umask(0);
  ::umask(mask);
  EXPECT_EQ(modeOf(target), 0644U & ~mask);
}

TEST_P(AtomicWriteTest, ReplacesAFileAndKeepsItsMode) {
  for (const unsigned mode : {0600U, 0640U, 0666U, 0444U}) {
    _tree.write(target, "a longer old text");
    _tree.setMode(target, mode);
    EXPECT_EQ(_files.writeAtomically(target, "new").code, 0);
    EXPECT_EQ(_tree.read(target), "new");
    EXPECT_EQ(modeOf(target), mode);
    _tree.remove(target);
  }
}

TEST_P(AtomicWriteTest, WritesPiecesInTheirOrder) {
  std::vector<std::string_view> pieces;
  std::string expected;
  for (int index = 0; index < 1000; ++index) {
    pieces.emplace_back(index % 3 == 0 ? "" : index % 3 == 1 ? "ab" : "c");
    expected += pieces.back();
  }
  EXPECT_EQ(_files.writeAtomically(target, pieces).code, 0);
  EXPECT_EQ(_tree.read(target), expected);
}

TEST_P(AtomicWriteTest, WritesNothingAtAllToo) {
  _tree.write(target, "old");
  EXPECT_EQ(_files.writeAtomically(target, "").code, 0);
  EXPECT_EQ(_tree.read(target), "");
  EXPECT_EQ(_files.writeAtomically(target, std::span<const std::string_view>()).code, 0);
}

TEST_P(AtomicWriteTest, ShortWritesAndSignalsAreHandled) {
  const std::string text(10000, 'x');
  const std::vector<std::string_view> pieces{"head", text, "", "tail"};
  for (const char* kind : {"writev", "fdatasync", "fsync"}) {
    _tree.remove(folder);
    _tree.makeFolder(folder);
    _calls->limitTransfer(777);
    _calls->fail(kind, EINTR);
    EXPECT_EQ(_files.writeAtomically(target, pieces).code, 0) << kind;
    EXPECT_EQ(_tree.read(target), "head" + text + "tail");
  }
}

TEST_P(AtomicWriteTest, ALinkIsReplacedAndWhatItLedToStays) {
  _tree.write("/target", "target");
  _tree.setMode("/target", 0600);
  _tree.link(target, "/target");
  EXPECT_EQ(_files.writeAtomically(target, "new").code, 0);
  EXPECT_EQ(_tree.read("/target"), "target");
  EXPECT_EQ(_tree.read(target), "new");
  EXPECT_EQ(_files.attributesOfItem(target)->type, platform::FileType::regular);
  EXPECT_EQ(modeOf(target), 0600U) << "what was private stays private";
}

TEST_P(AtomicWriteTest, ADanglingLinkIsReplaced) {
  _tree.link(target, "/nowhere");
  EXPECT_EQ(_files.writeAtomically(target, "new").code, 0);
  EXPECT_EQ(_tree.read(target), "new");
  EXPECT_FALSE(_tree.exists("/nowhere"));
}

TEST_P(AtomicWriteTest, AFolderIsNotReplaced) {
  _tree.makeFolder(target);
  EXPECT_EQ(_files.writeAtomically(target, "new").code, EISDIR);
  EXPECT_THAT(names(), ElementsAre("a.plist"));
  EXPECT_THAT(_files.contentsOfDirectory(target), Optional(IsEmpty()));
}

TEST_P(AtomicWriteTest, AMissingFolderIsAnErrorThatSaysSo) {
  const FileError error = _files.writeAtomically("/none/a.plist", "x");
  EXPECT_EQ(error.code, ENOENT);
  EXPECT_EQ(error.message, "cannot write /none/a.plist: No such file or directory");
}

TEST_P(AtomicWriteTest, AReadOnlyFolderLeavesTheOldFile) {
  _tree.write(target, "old");
  _tree.setMode(folder, 0555);
  // Permissions do not stop the superuser.
  if (::geteuid() == 0) _calls->fail("openat", EACCES, FaultySystemCalls::always);
  EXPECT_EQ(_files.writeAtomically(target, "new").code, EACCES);
  _calls->clear();
  EXPECT_EQ(_tree.read(target), "old");
  EXPECT_THAT(names(), ElementsAre("a.plist"));
}

TEST_P(AtomicWriteTest, BytesReachTheDiskBeforeTheFileIsReplaced) {
  _tree.write(target, "old");
  _calls->clearCalls();
  ASSERT_EQ(_files.writeAtomically(target, "new").code, 0);
  const std::vector<std::string> calls = _calls->calls();
  const auto at = [&](const char* kind) { return std::find(calls.begin(), calls.end(), kind); };
  ASSERT_NE(at("fdatasync"), calls.end());
  EXPECT_LT(at("writev"), at("fdatasync"));
  EXPECT_LT(at("fdatasync"), at("renameat"));
  EXPECT_EQ(_calls->count("fsync"), 0U) << "the folder's entry was there before";
}

TEST_P(AtomicWriteTest, TheEntryOfANewFileReachesTheDiskAfterIt) {
  _calls->clearCalls();
  ASSERT_EQ(_files.writeAtomically(target, "new").code, 0);
  const std::vector<std::string> calls = _calls->calls();
  const auto at = [&](const char* kind) { return std::find(calls.begin(), calls.end(), kind); };
  ASSERT_NE(at("fsync"), calls.end());
  EXPECT_LT(at("renameat"), at("fsync"));
}

TEST_P(AtomicWriteTest, AFileSystemThatCannotSyncFoldersIsNoFailure) {
  _calls->fail("fsync", EINVAL);
  EXPECT_EQ(_files.writeAtomically(target, "new").code, 0);
  EXPECT_EQ(_tree.read(target), "new");
}

TEST_P(AtomicWriteTest, EachKindOfFailureIsToldAndLeavesTheOldFileWhole) {
  struct Case {
    const char* kind;
    int error;
  };
  for (const Case each :
       {Case{"writev", ENOSPC}, Case{"writev", EDQUOT}, Case{"writev", EFBIG},
        Case{"fdatasync", EIO}, Case{"fdatasync", ENOSPC}, Case{"fchmod", EPERM},
        Case{"renameat", EROFS}, Case{"fstatat", EACCES}, Case{"openat", EROFS}}) {
    _tree.write(target, "old");
    _calls->fail(each.kind, each.error);
    EXPECT_EQ(_files.writeAtomically(target, "new").code, each.error) << each.kind;
    _calls->clear();
    EXPECT_EQ(_tree.read(target), "old") << each.kind;
    EXPECT_THAT(names(), ElementsAre("a.plist")) << each.kind;
  }
}

// Makes each system call of a write fail in turn.
TEST_P(AtomicWriteTest, WhateverCallFailsTheOldFileIsWholeAndNothingStays) {
  _tree.write(target, "old");
  std::size_t failures = 0;
  for (std::size_t nth = 1;; ++nth) {
    _calls->failNthCall(nth, EIO);
    const FileError error = _files.writeAtomically(target, "new");
    _calls->clear();
    EXPECT_THAT(names(), ElementsAre("a.plist")) << "call " << nth;
    if (error.code == 0) break;
    ++failures;
    EXPECT_EQ(error.code, EIO);
    EXPECT_EQ(_tree.read(target), "old") << "call " << nth;
  }
  EXPECT_EQ(_tree.read(target), "new");
  EXPECT_GE(failures, 6U);
}

TEST_P(AtomicWriteTest, WhateverCallFailsANewFileIsThereOrNot) {
  std::size_t failures = 0;
  for (std::size_t nth = 1;; ++nth) {
    _calls->failNthCall(nth, EIO);
    const FileError error = _files.writeAtomically(target, "new");
    _calls->clear();
    if (error.code == 0) break;
    ++failures;
    EXPECT_THAT(names(), IsEmpty()) << "call " << nth;
  }
  EXPECT_THAT(names(), ElementsAre("a.plist"));
  EXPECT_GE(failures, 7U);
}

TEST_P(AtomicWriteTest, AFailureAfterAShortWriteLeavesNothing) {
  _tree.write(target, "old");
  _calls->limitTransfer(1);
  _calls->fail("writev", ENOSPC, 3);
  EXPECT_EQ(_files.writeAtomically(target, "12345").code, ENOSPC);
  _calls->clear();
  EXPECT_EQ(_tree.read(target), "old");
  EXPECT_THAT(names(), ElementsAre("a.plist"));
}

// Removes the folder during a write.
class VanishingFolder final : public platform::SystemCalls {
 public:
  explicit VanishingFolder(const TemporaryDeviceTree& tree) : _tree(tree) {}
  int fdatasync(int descriptor) override {
    _tree.remove(folder);
    return SystemCalls::fdatasync(descriptor);
  }

 private:
  const TemporaryDeviceTree& _tree;
};

TEST_P(AtomicWriteTest, AFolderThatVanishesIsAnError) {
  DeviceFileSystem files(_tree.root(), std::make_shared<VanishingFolder>(_tree), GetParam());
  EXPECT_EQ(files.writeAtomically(target, "new").code, ENOENT);
  EXPECT_FALSE(_tree.exists(folder));
}

// A disk that accepts no byte and reports no error.
class DeafDisk final : public platform::SystemCalls {
 public:
  ssize_t writev(int, const iovec*, int) override { return 0; }
};

TEST_P(AtomicWriteTest, ADiskThatTakesNothingIsAnError) {
  DeviceFileSystem files(_tree.root(), std::make_shared<DeafDisk>(), GetParam());
  EXPECT_EQ(files.writeAtomically(target, "new").code, EIO);
  EXPECT_THAT(names(), IsEmpty());
}

TEST_P(AtomicWriteTest, WritersAtTheSameTimeNeverMixTheirBytes) {
  constexpr int perWriter = 50;
  const std::string texts[] = {std::string(3000, 'a'), std::string(9000, 'b')};
  DeviceFileSystem other(_tree.root(), _calls, GetParam());
  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int index = 0; index < 4; ++index) {
    threads.emplace_back([&, index] {
      DeviceFileSystem& files = index < 2 ? _files : other;
      for (int round = 0; round < perWriter; ++round) {
        if (files.writeAtomically(target, texts[index % 2]).code != 0) ++failures;
        const auto contents = files.read(target);
        if (contents.bytes != texts[0] && contents.bytes != texts[1]) ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_THAT(names(), ElementsAre("a.plist"));
}

// Returns a name as used by a dead or a living writer.
std::string temporaryOf(const std::string& writer) {
  return std::string(folder) + "/" + std::string(DeviceFileSystem::temporaryPrefix) + writer +
         "-0-0123456789abcdef";
}

TEST_P(AtomicWriteTest, StaleTemporariesOfDeadWritersAreRemoved) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  _tree.write(target, "old");
  _tree.write(temporaryOf(std::to_string(child) + "-1"), "half");
  _tree.write(temporaryOf(std::to_string(::getpid()) + "-1"), "of an earlier owner of the id");
  _tree.write(temporaryOf("nonsense"), "half");
  _tree.write(temporaryOf(platform::currentWriter()), "being written");
  EXPECT_EQ(_files.removeStaleTemporaries(folder), 3U);
  EXPECT_EQ(names().size(), 2U);
  EXPECT_TRUE(_tree.exists(temporaryOf(platform::currentWriter())));
  EXPECT_EQ(_tree.read(target), "old");
  EXPECT_EQ(_files.removeStaleTemporaries("/none"), 0U);
}

// Ends a writer before its rename, like a power failure.
class EndsBeforeRename final : public platform::SystemCalls {
 public:
  int renameat(int, const char*, int, const char*) override { ::_exit(0); }
};

TEST_P(AtomicWriteTest, WhatAKilledWriterLeavesIsRecognised) {
  _tree.write(target, "old");
  const pid_t child = ::fork();
  if (child == 0) {
    DeviceFileSystem files(_tree.root(), std::make_shared<EndsBeforeRename>(), GetParam());
    files.writeAtomically(target, "new");
    ::_exit(1);
  }
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  ASSERT_EQ(names().size(), 2U);
  EXPECT_THAT(names().front(), StartsWith(std::string(DeviceFileSystem::temporaryPrefix)));
  EXPECT_EQ(_tree.read(target), "old");
  EXPECT_EQ(_files.removeStaleTemporaries(folder), 1U);
  EXPECT_THAT(names(), ElementsAre("a.plist"));
}

// Like a container whose first process does not reap its children.
TEST_P(AtomicWriteTest, WhatAKilledWriterLeavesIsRecognisedAlsoWhereNobodyHasAskedHowItEnded) {
  const pid_t child = ::fork();
  if (child == 0) {
    DeviceFileSystem files(_tree.root(), std::make_shared<EndsBeforeRename>(), GetParam());
    files.writeAtomically(target, "new");
    ::_exit(1);
  }
  siginfo_t ended{};
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT), 0);
  EXPECT_EQ(_files.removeStaleTemporaries(folder), 1U);
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_EQ(::waitpid(child, nullptr, 0), child);
}

TEST(WriterIdentity, KnowsTheLivingFromTheDead) {
  EXPECT_TRUE(platform::writerLives(platform::currentWriter()));
  for (const char* odd : {"", "-", "abc", "1", "0-0", "-5-1", "99999999999999999999-1", "1-x"}) {
    EXPECT_FALSE(platform::writerLives(odd)) << odd;
  }
}

}  // namespace

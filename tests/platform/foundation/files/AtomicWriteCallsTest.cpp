// The system calls of a write.
#include <cerrno>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "tests/platform/foundation/files/DeviceFilesFixture.h"

namespace {

using platform::DeviceFileSystem;
using platform::SystemCalls;
using testing::ElementsAre;

constexpr std::string_view preferences = "/prefs";
constexpr std::string_view preferenceFile = "/prefs/a.plist";

class AtomicWriteCalls : public DeviceFilesTest {
 protected:
  AtomicWriteCalls() { _tree.makeFolder(preferences); }
};

INSTANTIATE_TEST_SUITE_P(Both, AtomicWriteCalls, AtomicWriteCalls::bothResolutions(),
                         AtomicWriteCalls::nameOf);

// A folder in which the first names for temporary files already exist.
class TakenNames final : public SystemCalls {
 public:
  explicit TakenNames(std::size_t taken) : _taken(taken) {}

  int openat(int folder, const char* path, int flags, mode_t mode) override {
    if ((flags & O_EXCL) == 0) return SystemCalls::openat(folder, path, flags, mode);
    names.insert(path);
    if (names.size() > _taken) return SystemCalls::openat(folder, path, flags, mode);
    errno = EEXIST;
    return -1;
  }

  std::set<std::string> names;

 private:
  std::size_t _taken;
};

TEST_P(AtomicWriteCalls, TemporaryNamesThatAreTakenArePassedOver) {
  const auto calls = std::make_shared<TakenNames>(3);
  DeviceFileSystem files(_tree.root(), calls, GetParam());
  _tree.write(preferenceFile, "old");
  EXPECT_EQ(files.writeAtomically(preferenceFile, "new").code, 0);
  EXPECT_EQ(calls->names.size(), 4U);
  EXPECT_EQ(_tree.read(preferenceFile), "new");
}

TEST_P(AtomicWriteCalls, WhereEveryTemporaryNameIsTakenTheOldFileStays) {
  DeviceFileSystem files(_tree.root(), std::make_shared<TakenNames>(1000), GetParam());
  _tree.write(preferenceFile, "old");
  EXPECT_EQ(files.writeAtomically(preferenceFile, "new").code, EEXIST);
  EXPECT_EQ(_tree.read(preferenceFile), "old");
  EXPECT_THAT(_files.contentsOfDirectory(preferences).value(), ElementsAre("a.plist"));
}

// Records what is synced to disk, and when the file is renamed.
class NotedSyncs final : public SystemCalls {
 public:
  int fdatasync(int descriptor) override {
    notes.push_back("fdatasync of " + kindOf(descriptor));
    return SystemCalls::fdatasync(descriptor);
  }
  int fsync(int descriptor) override {
    notes.push_back("fsync of " + kindOf(descriptor));
    return SystemCalls::fsync(descriptor);
  }
  int renameat(int fromFolder, const char* from, int toFolder, const char* to) override {
    notes.emplace_back("rename");
    return SystemCalls::renameat(fromFolder, from, toFolder, to);
  }

  std::vector<std::string> notes;

 private:
  static std::string kindOf(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) return "nothing";
    if (S_ISDIR(status.st_mode)) return "a folder";
    return S_ISREG(status.st_mode) ? "a file" : "something else";
  }
};

TEST_P(AtomicWriteCalls, TheBytesReachTheDiskFirstAndTheEntryOfANewFileLast) {
  const auto calls = std::make_shared<NotedSyncs>();
  DeviceFileSystem files(_tree.root(), calls, GetParam());
  EXPECT_EQ(files.writeAtomically(preferenceFile, "new").code, 0);
  EXPECT_THAT(calls->notes, ElementsAre("fdatasync of a file", "rename", "fsync of a folder"));
  calls->notes.clear();
  EXPECT_EQ(files.writeAtomically(preferenceFile, "newer").code, 0);
  EXPECT_THAT(calls->notes, ElementsAre("fdatasync of a file", "rename"));
}

}  // namespace

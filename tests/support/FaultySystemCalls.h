#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "platform/foundation/files/SystemCalls.h"

namespace test_support {

// System calls that fail when the test asks for it. Counts all calls. Kinds are the names of the
// calls: "openat", "openat2", "read", "writev", "fdatasync", "fsync", "renameat", ... Threads: any.
class FaultySystemCalls final : public platform::SystemCalls {
 public:
  static constexpr std::size_t always = 0;

  // Makes the nth next call of the kind fail (1 is the next one), or every call.
  void fail(const std::string& kind, int errorNumber, std::size_t nth = 1);
  // Makes the nth next call of any kind except "close" fail.
  void failNthCall(std::size_t nth, int errorNumber);
  // Limits the bytes that one call reads or writes; 0 for no limit.
  void limitTransfer(std::size_t bytes);
  void clear();

  // The calls since the last clearCalls, by kind and in order.
  std::size_t count(const std::string& kind) const;
  std::vector<std::string> calls() const;
  void clearCalls();

  int openat(int folder, const char* path, int flags, mode_t mode) override;
  int openat2(int folder, const char* path, int flags, std::uint64_t resolve) override;
  int close(int descriptor) override;
  ssize_t read(int descriptor, void* buffer, std::size_t size) override;
  ssize_t writev(int descriptor, const iovec* pieces, int count) override;
  int fdatasync(int descriptor) override;
  int fsync(int descriptor) override;
  int fstat(int descriptor, struct stat* result) override;
  int fstatat(int folder, const char* path, struct stat* result, int flags) override;
  int fchmod(int descriptor, mode_t mode) override;
  int fchmodat(int folder, const char* path, mode_t mode) override;
  int renameat(int fromFolder, const char* from, int toFolder, const char* to) override;
  int unlinkat(int folder, const char* path, int flags) override;
  int mkdirat(int folder, const char* path, mode_t mode) override;
  int symlinkat(const char* target, int folder, const char* path) override;
  ssize_t readlinkat(int folder, const char* path, char* buffer, std::size_t size) override;
  int namesIn(int folder, std::vector<std::string>& names) override;

 private:
  struct Fault {
    int error;
    std::size_t remaining;  // calls until the failure; `always` for every call
  };
  // Counts the call. Returns true and sets errno if it must fail.
  bool strikes(const char* kind);
  std::size_t transferLimit() const;

  mutable std::mutex _mutex;
  std::map<std::string, Fault> _faults;
  Fault _anyCall{0, 0};
  std::size_t _transferLimit = 0;
  std::vector<std::string> _calls;
};

}  // namespace test_support

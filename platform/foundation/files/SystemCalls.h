#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <vector>

namespace platform {

// The system calls of the file layer, which tests replace to inject failures. Each function behaves
// like the call of the same name and returns -1 with errno set on failure. Threads: any.
class SystemCalls {
 public:
  virtual ~SystemCalls() = default;

  virtual int openat(int folder, const char* path, int flags, mode_t mode);
  // `resolve` takes the RESOLVE_ flags of openat2(2). Fails with ENOSYS if the kernel lacks the
  // call.
  virtual int openat2(int folder, const char* path, int flags, std::uint64_t resolve);
  virtual int close(int descriptor);
  virtual ssize_t read(int descriptor, void* buffer, std::size_t size);
  virtual ssize_t writev(int descriptor, const iovec* pieces, int count);
  virtual int fdatasync(int descriptor);
  virtual int fsync(int descriptor);
  virtual int fstat(int descriptor, struct stat* result);
  virtual int fstatat(int folder, const char* path, struct stat* result, int flags);
  virtual int fchmod(int descriptor, mode_t mode);
  virtual int fchmodat(int folder, const char* path, mode_t mode);
  virtual int renameat(int fromFolder, const char* from, int toFolder, const char* to);
  virtual int unlinkat(int folder, const char* path, int flags);
  virtual int mkdirat(int folder, const char* path, mode_t mode);
  virtual int symlinkat(const char* target, int folder, const char* path);
  virtual ssize_t readlinkat(int folder, const char* path, char* buffer, std::size_t size);
  // Lists the names in an open folder, without "." and "..". Returns 0 or -1.
  virtual int namesIn(int folder, std::vector<std::string>& names);
};

}  // namespace platform

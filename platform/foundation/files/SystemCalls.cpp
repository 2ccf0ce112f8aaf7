#include "platform/foundation/files/SystemCalls.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace platform {

int SystemCalls::openat(int folder, const char* path, int flags, mode_t mode) {
  return ::openat(folder, path, flags, mode);
}

int SystemCalls::openat2(int folder, const char* path, int flags, std::uint64_t resolve) {
  open_how how{};
  how.flags = static_cast<std::uint64_t>(flags);
  how.resolve = resolve;
  return static_cast<int>(::syscall(SYS_openat2, folder, path, &how, sizeof(how)));
}

int SystemCalls::close(int descriptor) {
  return ::close(descriptor);
}

ssize_t SystemCalls::read(int descriptor, void* buffer, std::size_t size) {
  return ::read(descriptor, buffer, size);
}

ssize_t SystemCalls::writev(int descriptor, const iovec* pieces, int count) {
  return ::writev(descriptor, pieces, count);
}

int SystemCalls::fdatasync(int descriptor) {
  return ::fdatasync(descriptor);
}

int SystemCalls::fsync(int descriptor) {
  return ::fsync(descriptor);
}

int SystemCalls::fstat(int descriptor, struct stat* result) {
  return ::fstat(descriptor, result);
}

int SystemCalls::fstatat(int folder, const char* path, struct stat* result, int flags) {
  return ::fstatat(folder, path, result, flags);
}

int SystemCalls::fchmod(int descriptor, mode_t mode) {
  return ::fchmod(descriptor, mode);
}

int SystemCalls::fchmodat(int folder, const char* path, mode_t mode) {
  return ::fchmodat(folder, path, mode, 0);
}

int SystemCalls::renameat(int fromFolder, const char* from, int toFolder, const char* to) {
  return ::renameat(fromFolder, from, toFolder, to);
}

int SystemCalls::unlinkat(int folder, const char* path, int flags) {
  return ::unlinkat(folder, path, flags);
}

int SystemCalls::mkdirat(int folder, const char* path, mode_t mode) {
  return ::mkdirat(folder, path, mode);
}

int SystemCalls::symlinkat(const char* target, int folder, const char* path) {
  return ::symlinkat(target, folder, path);
}

ssize_t SystemCalls::readlinkat(int folder, const char* path, char* buffer, std::size_t size) {
  return ::readlinkat(folder, path, buffer, size);
}

int SystemCalls::namesIn(int folder, std::vector<std::string>& names) {
  const int own = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (own < 0) return -1;
  DIR* listing = ::fdopendir(own);
  if (listing == nullptr) {
    ::close(own);
    return -1;
  }
  errno = 0;
  while (const dirent* entry = ::readdir(listing)) {
    if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) {
      names.emplace_back(entry->d_name);
    }
    errno = 0;
  }
  const int error = errno;
  ::closedir(listing);
  errno = error;
  return error == 0 ? 0 : -1;
}

}  // namespace platform

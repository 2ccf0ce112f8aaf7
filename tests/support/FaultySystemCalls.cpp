#include "tests/support/FaultySystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace test_support {

void FaultySystemCalls::fail(const std::string& kind, int errorNumber, std::size_t nth) {
  const std::lock_guard lock(_mutex);
  _faults[kind] = {errorNumber, nth};
}

void FaultySystemCalls::failNthCall(std::size_t nth, int errorNumber) {
  const std::lock_guard lock(_mutex);
  _anyCall = {errorNumber, nth};
}

void FaultySystemCalls::limitTransfer(std::size_t bytes) {
  const std::lock_guard lock(_mutex);
  _transferLimit = bytes;
}

void FaultySystemCalls::clear() {
  const std::lock_guard lock(_mutex);
  _faults.clear();
  _anyCall = {0, 0};
  _transferLimit = 0;
}

std::size_t FaultySystemCalls::count(const std::string& kind) const {
  const std::lock_guard lock(_mutex);
  return static_cast<std::size_t>(std::count(_calls.begin(), _calls.end(), kind));
}

std::vector<std::string> FaultySystemCalls::calls() const {
  const std::lock_guard lock(_mutex);
  return _calls;
}

void FaultySystemCalls::clearCalls() {
  const std::lock_guard lock(_mutex);
  _calls.clear();
}

bool FaultySystemCalls::strikes(const char* kind) {
  const std::lock_guard lock(_mutex);
  _calls.emplace_back(kind);
  if (_anyCall.error != 0 && std::strcmp(kind, "close") != 0 && --_anyCall.remaining == 0) {
    errno = std::exchange(_anyCall.error, 0);
    return true;
  }
  const auto fault = _faults.find(kind);
  if (fault == _faults.end()) return false;
  const int error = fault->second.error;
  if (fault->second.remaining != always) {
    if (--fault->second.remaining > 0) return false;
    _faults.erase(fault);
  }
  errno = error;
  return true;
}

std::size_t FaultySystemCalls::transferLimit() const {
  const std::lock_guard lock(_mutex);
  return _transferLimit;
}

int FaultySystemCalls::openat(int folder, const char* path, int flags, mode_t mode) {
  return strikes("openat") ? -1 : SystemCalls::openat(folder, path, flags, mode);
}

int FaultySystemCalls::openat2(int folder, const char* path, int flags, std::uint64_t resolve) {
  return strikes("openat2") ? -1 : SystemCalls::openat2(folder, path, flags, resolve);
}

// Closes the descriptor even if the call must fail, like the kernel.
int FaultySystemCalls::close(int descriptor) {
  const bool fails = strikes("close");
  const int error = errno;
  const int result = SystemCalls::close(descriptor);
  if (!fails) return result;
  errno = error;
  return -1;
}

ssize_t FaultySystemCalls::read(int descriptor, void* buffer, std::size_t size) {
  if (strikes("read")) return -1;
  const std::size_t limit = transferLimit();
  return SystemCalls::read(descriptor, buffer, limit == 0 ? size : std::min(size, limit));
}

ssize_t FaultySystemCalls::writev(int descriptor, const iovec* pieces, int count) {
  if (strikes("writev")) return -1;
  const std::size_t limit = transferLimit();
  if (limit == 0) return SystemCalls::writev(descriptor, pieces, count);
  while (count > 1 && pieces->iov_len == 0) {
    ++pieces;
    --count;
  }
  const iovec shortened{pieces->iov_base, std::min(pieces->iov_len, limit)};
  return SystemCalls::writev(descriptor, &shortened, 1);
}

int FaultySystemCalls::fdatasync(int descriptor) {
  return strikes("fdatasync") ? -1 : SystemCalls::fdatasync(descriptor);
}

int FaultySystemCalls::fsync(int descriptor) {
  return strikes("fsync") ? -1 : SystemCalls::fsync(descriptor);
}

int FaultySystemCalls::fstat(int descriptor, struct stat* result) {
  return strikes("fstat") ? -1 : SystemCalls::fstat(descriptor, result);
}

int FaultySystemCalls::fstatat(int folder, const char* path, struct stat* result, int flags) {
  return strikes("fstatat") ? -1 : SystemCalls::fstatat(folder, path, result, flags);
}

int FaultySystemCalls::fchmod(int descriptor, mode_t mode) {
  return strikes("fchmod") ? -1 : SystemCalls::fchmod(descriptor, mode);
}

int FaultySystemCalls::fchmodat(int folder, const char* path, mode_t mode) {
  return strikes("fchmodat") ? -1 : SystemCalls::fchmodat(folder, path, mode);
}

int FaultySystemCalls::renameat(int fromFolder, const char* from, int toFolder, const char* to) {
  return strikes("renameat") ? -1 : SystemCalls::renameat(fromFolder, from, toFolder, to);
}

int FaultySystemCalls::unlinkat(int folder, const char* path, int flags) {
  return strikes("unlinkat") ? -1 : SystemCalls::unlinkat(folder, path, flags);
}

int FaultySystemCalls::mkdirat(int folder, const char* path, mode_t mode) {
  return strikes("mkdirat") ? -1 : SystemCalls::mkdirat(folder, path, mode);
}

int FaultySystemCalls::symlinkat(const char* target, int folder, const char* path) {
  return strikes("symlinkat") ? -1 : SystemCalls::symlinkat(target, folder, path);
}

ssize_t FaultySystemCalls::readlinkat(int folder, const char* path, char* buffer,
                                      std::size_t size) {
  return strikes("readlinkat") ? -1 : SystemCalls::readlinkat(folder, path, buffer, size);
}

int FaultySystemCalls::namesIn(int folder, std::vector<std::string>& names) {
  return strikes("namesIn") ? -1 : SystemCalls::namesIn(folder, names);
}

}  // namespace test_support

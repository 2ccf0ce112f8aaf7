#include "platform/foundation/files/NSFileHandle.h"

#include <cerrno>
#include <string>
#include <unistd.h>
#include <utility>

#include "platform/foundation/objects/NSNotificationCenter.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Exception.h"

namespace platform {

namespace {

constexpr std::size_t largestChunk = std::size_t{64} * 1024;

[[noreturn]] void raiseClosed(std::string_view operation) {
  throw Exception(
      std::string(fileHandleOperationException),
      "*** -[NSConcreteFileHandle " + std::string(operation) + "]: Bad file descriptor");
}

}  // namespace

NSFileHandle::~NSFileHandle() {
  closeFile();
}

bool NSFileHandle::initWithFileDescriptor(int descriptor) {
  _descriptor = descriptor;
  return descriptor >= 0;
}

Value NSFileHandle::availableData() {
  if (_descriptor < 0) raiseClosed("availableData");
  std::string chunk(largestChunk, '\0');
  ssize_t count = -1;
  do {
    count = ::read(_descriptor, chunk.data(), chunk.size());
  } while (count < 0 && errno == EINTR);
  if (count < 0) return {};
  return Data(std::string_view(chunk).substr(0, static_cast<std::size_t>(count)));
}

void NSFileHandle::waitForDataInBackgroundAndNotify() {
  if (_descriptor < 0) raiseClosed("waitForDataInBackgroundAndNotify");
  if (_wait != 0) return;
  Scheduler& scheduler = Process::current().service<Scheduler>();
  _wait = scheduler.whenReadable(_descriptor, [weak = weakSelf<NSFileHandle>()] {
    const auto handle = weak.lock();
    if (!handle || handle->_descriptor < 0) return;
    handle->_wait = 0;
    NSNotificationCenter::defaultCenter().postNotificationName(
        std::string(NSFileHandleDataAvailableNotification), handle);
  });
}

void NSFileHandle::closeFile() {
  if (_descriptor < 0) return;
  Process* process = Process::currentOrNull();
  const auto scheduler = process != nullptr ? process->serviceOrNull<Scheduler>() : nullptr;
  if (_wait != 0 && scheduler) scheduler->cancelWait(_wait);
  _wait = 0;
  ::close(std::exchange(_descriptor, -1));
}

}  // namespace platform

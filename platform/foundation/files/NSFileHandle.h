#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Value.h"

namespace platform {

// Posted on the main run loop by a handle after waitForDataInBackgroundAndNotify.
inline constexpr std::string_view NSFileHandleDataAvailableNotification =
    "NSFileHandleDataAvailableNotification";
inline constexpr std::string_view fileHandleOperationException = "NSFileHandleOperationException";

// An open file descriptor, closed on destruction. Threads: main.
class NSFileHandle : public Object {
  PLATFORM_CLASS(NSFileHandle)

 public:
  NSFileHandle() = default;
  ~NSFileHandle() override;

  // Takes ownership of the descriptor.
  bool initWithFileDescriptor(int descriptor);

  // Returns -1 after closing.
  int fileDescriptor() const { return _descriptor; }
  // Returns the data of one read, at most 64 KiB; blocks until data is available. Returns empty
  // data at the end of the file, none if reading fails. Raises NSFileHandleOperationException if
  // closed.
  Value availableData();
  // Posts NSFileHandleDataAvailableNotification once, on the main run loop, when data or the end of
  // the file is available. Does not keep the handle alive.
  void waitForDataInBackgroundAndNotify();
  void closeFile();

 private:
  int _descriptor = -1;
  std::uint64_t _wait = 0;
};

}  // namespace platform

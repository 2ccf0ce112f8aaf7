#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Value.h"

namespace platform {

// Posted on the main run loop by a handle that was asked to wait for data.
inline constexpr std::string_view NSFileHandleDataAvailableNotification =
    "NSFileHandleDataAvailableNotification";
inline constexpr std::string_view fileHandleOperationException = "NSFileHandleOperationException";

// An open descriptor, closed with the object. Main thread only.
class NSFileHandle : public Object {
  PLATFORM_CLASS(NSFileHandle)

 public:
  NSFileHandle() = default;
  ~NSFileHandle() override;

  // Takes the descriptor over.
  bool initWithFileDescriptor(int descriptor);

  // -1 once it is closed.
  int fileDescriptor() const { return _descriptor; }
  // One chunk: what one read gives, at most 64 KiB; waits until there is something. Empty data at
  // the end. None where it cannot be read. Raises NSFileHandleOperationException when closed.
  Value availableData();
  // Posts NSFileHandleDataAvailableNotification once, from the main run loop, when there is data
  // or the end. The handle stays alive until then only where somebody holds it.
  void waitForDataInBackgroundAndNotify();
  void closeFile();

 private:
  int _descriptor = -1;
  std::uint64_t _wait = 0;
};

}  // namespace platform

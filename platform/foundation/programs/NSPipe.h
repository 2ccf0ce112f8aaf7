#pragma once

#include <memory>

#include "platform/foundation/files/NSFileHandle.h"
#include "platform/foundation/objects/Object.h"

namespace platform {

// A pipe with its two ends. Main thread only.
class NSPipe : public Object {
  PLATFORM_CLASS(NSPipe)

 public:
  // Refuses where the system has no descriptors left.
  bool init() override;

  const std::shared_ptr<NSFileHandle>& fileHandleForReading() const { return _reading; }
  const std::shared_ptr<NSFileHandle>& fileHandleForWriting() const { return _writing; }

 private:
  std::shared_ptr<NSFileHandle> _reading;
  std::shared_ptr<NSFileHandle> _writing;
};

}  // namespace platform

#pragma once

#include <memory>

#include "platform/foundation/files/NSFileHandle.h"
#include "platform/foundation/objects/Object.h"

namespace platform {

// A pipe with two ends. Threads: main.
class NSPipe : public Object {
  PLATFORM_CLASS(NSPipe)

 public:
  // Fails if the system has no free descriptors.
  bool init() override;

  const std::shared_ptr<NSFileHandle>& fileHandleForReading() const { return _reading; }
  const std::shared_ptr<NSFileHandle>& fileHandleForWriting() const { return _writing; }

 private:
  std::shared_ptr<NSFileHandle> _reading;
  std::shared_ptr<NSFileHandle> _writing;
};

}  // namespace platform

#pragma once

#include <string>

namespace platform {

// Posts notifications that other programs of the device listen to. A service of the process;
// without one nothing is posted. Threads: any.
class DarwinNotifications {
 public:
  virtual ~DarwinNotifications() = default;
  virtual void post(const std::string& name) = 0;
};

}  // namespace platform

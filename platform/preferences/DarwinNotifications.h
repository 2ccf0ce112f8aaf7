#pragma once

#include <string>

namespace platform {

// Posts notifications to other programs of the device. A service of the process; without it nothing
// is posted. Threads: any.
class DarwinNotifications {
 public:
  virtual ~DarwinNotifications() = default;
  virtual void post(const std::string& name) = 0;
};

}  // namespace platform

#pragma once

#include <memory>
#include <string>

#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Object.h"

namespace platform {

// The device, as described by its traits. Threads: main.
class UIDevice : public Object {
  PLATFORM_CLASS(UIDevice)

 public:
  // One per process.
  static std::shared_ptr<UIDevice> currentDevice();

  UserInterfaceIdiom userInterfaceIdiom() const;
  std::string systemVersion() const;  // such as "15.4"
  std::string model() const;          // "iPhone" or "iPad"
};

}  // namespace platform

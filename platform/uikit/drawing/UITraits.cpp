#include "platform/uikit/drawing/UITraits.h"

#include "platform/foundation/objects/Process.h"

namespace platform {

const DeviceTraits& currentTraits() {
  Process& process = Process::current();
  if (const auto provided = process.serviceOrNull<DeviceTraits>()) return *provided;
  return process.once<DeviceTraits>();
}

}  // namespace platform

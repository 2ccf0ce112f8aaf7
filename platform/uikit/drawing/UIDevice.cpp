#include "platform/uikit/drawing/UIDevice.h"

#include "platform/foundation/objects/Process.h"
#include "platform/uikit/drawing/UITraits.h"

namespace platform {
namespace {

struct CurrentDevice {
  std::shared_ptr<UIDevice> device = make<UIDevice>();
};

}  // namespace

std::shared_ptr<UIDevice> UIDevice::currentDevice() {
  return Process::current().once<CurrentDevice>().device;
}

UserInterfaceIdiom UIDevice::userInterfaceIdiom() const {
  return currentTraits().idiom;
}

std::string UIDevice::systemVersion() const {
  return currentTraits().systemVersion.text();
}

std::string UIDevice::model() const {
  return userInterfaceIdiom() == UserInterfaceIdiom::pad ? "iPad" : "iPhone";
}

}  // namespace platform

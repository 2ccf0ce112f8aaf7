#include "platform/uikit/controllers/UIApplication.h"

#include "platform/foundation/objects/Process.h"

namespace platform {
namespace {

struct SharedApplication {
  std::shared_ptr<UIApplication> application = make<UIApplication>();
};

}  // namespace

std::shared_ptr<UIApplication> UIApplication::sharedApplication() {
  return Process::current().once<SharedApplication>().application;
}

void UIApplication::openURL(const std::shared_ptr<NSURL>& url) {
  const auto opener = Process::current().serviceOrNull<URLOpener>();
  if (opener && url) opener->openURL(url);
}

}  // namespace platform

#pragma once

#include <memory>

#include "platform/foundation/network/NSURL.h"

namespace platform {

// Takes addresses that lead out of the application. A service of the process. Threads: main.
class URLOpener {
 public:
  virtual ~URLOpener() = default;
  // Whoever provides it decides what becomes of the address; it may ask the user first.
  virtual void openURL(const std::shared_ptr<NSURL>& url) = 0;
};

// The application that the process runs. Threads: main.
class UIApplication : public Object {
  PLATFORM_CLASS(UIApplication)

 public:
  // One per process.
  static std::shared_ptr<UIApplication> sharedApplication();

  // Hands the address to the process's URLOpener; nothing without one or for an empty pointer.
  void openURL(const std::shared_ptr<NSURL>& url);
};

}  // namespace platform

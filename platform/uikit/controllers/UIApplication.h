#pragma once

#include <memory>

#include "platform/foundation/network/NSURL.h"

namespace platform {

// Opens URLs that lead out of the application. A service of the process. Threads: main.
class URLOpener {
 public:
  virtual ~URLOpener() = default;
  // The implementation decides what to do with the URL. It may ask the user first.
  virtual void openURL(const std::shared_ptr<NSURL>& url) = 0;
};

// The application that the process runs. Threads: main.
class UIApplication : public Object {
  PLATFORM_CLASS(UIApplication)

 public:
  // One per process.
  static std::shared_ptr<UIApplication> sharedApplication();

  // Passes the URL to the process's URLOpener. Does nothing if there is none or the pointer is
  // empty.
  void openURL(const std::shared_ptr<NSURL>& url);
};

}  // namespace platform

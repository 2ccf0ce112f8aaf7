#pragma once

#include <memory>
#include <string>

#include "settings/web/PageServer.h"

namespace settings {

class Application;
struct PageHostResult;

// Serves an application to browsers. The server has its own thread; the application and the
// publisher use the main thread.
//
// Threads: `address` and `stop`: any; everything else: the application's.
class PageHost {
 public:
  // `pageFolder` contains the built page. Sets the application's wait handler. The application must
  // outlive the host.
  static PageHostResult create(Application& application, const PageServerOptions& options,
                               const std::string& pageFolder);
  ~PageHost();
  PageHost(const PageHost&) = delete;
  PageHost& operator=(const PageHost&) = delete;

  // The address to open in a browser, including this run's token.
  std::string address() const;
  // Answers browsers until `stop`. Browsers that connect earlier are answered once this runs.
  void run();
  // Ends `run`. May be called before `run`.
  void stop();
  // Call this when the device's files may have changed from outside.
  void filesChanged();

 private:
  struct State;
  explicit PageHost(std::shared_ptr<State> state);
  std::shared_ptr<State> _state;
};

struct PageHostResult {
  std::unique_ptr<PageHost> host;  // empty on failure
  std::string error;               // the reason, for the user
};

}  // namespace settings

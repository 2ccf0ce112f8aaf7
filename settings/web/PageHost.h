#pragma once

#include <memory>
#include <string>

#include "settings/web/PageServer.h"

namespace settings {

class Application;
struct PageHostResult;

// Serves an application to browsers: the server on its own thread, the application and what it
// publishes on the main one.
//
// Threads: `address` and `stop` from any; all else on the application's.
class PageHost {
 public:
  // `pageFolder` holds the built page. Takes the application's wait handler. The application must
  // outlive the host.
  static PageHostResult create(Application& application, const PageServerOptions& options,
                               const std::string& pageFolder);
  ~PageHost();
  PageHost(const PageHost&) = delete;
  PageHost& operator=(const PageHost&) = delete;

  // The address to open in a browser, with this run's token.
  std::string address() const;
  // Answers browsers until `stop`. They may connect before; they are answered then.
  void run();
  // Ends `run`. May be called before it, too.
  void stop();
  // The device's files may have changed from outside.
  void filesChanged();

 private:
  struct State;
  explicit PageHost(std::shared_ptr<State> state);
  std::shared_ptr<State> _state;
};

struct PageHostResult {
  std::unique_ptr<PageHost> host;  // empty where it could not be made
  std::string error;               // why, for people
};

}  // namespace settings

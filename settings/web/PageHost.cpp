#include "settings/web/PageHost.h"

#include <utility>

#include "settings/application/Application.h"
#include "settings/web/MainLoop.h"
#include "settings/web/PagePublisher.h"
#include "settings/web/PhotoReader.h"

namespace settings {

// Carries what comes from the pages over to the main thread.
struct PageHost::State : PageEvents {
  explicit State(Application& served) : application(served) {}
  ~State() override {
    application.setWakeHandler({});
    application.setWaitHandler({});
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  void opened(ConnectionId connection) override {
    loop.post([this, connection] { publisher->opened(connection); });
  }
  void received(ConnectionId connection, std::string text) override {
    loop.post(
        [this, connection, text = std::move(text)] { publisher->received(connection, text); });
  }
  void wantsWhole(ConnectionId connection) override {
    loop.post([this, connection] { publisher->wantsWhole(connection); });
  }
  void closed(ConnectionId connection) override {
    loop.post([this, connection] { publisher->closed(connection); });
  }
  void imageWanted(RequestId request, std::string hash) override {
    loop.post([this, request, hash = std::move(hash)] { publisher->imageWanted(request, hash); });
  }
  void photoSent(RequestId request, std::string bytes) override {
    photos.read(std::move(bytes), [this, request](PhotoResult photo) {
      loop.post(
          [this, request, photo = std::move(photo)] { publisher->photoRead(request, photo); });
    });
  }

  Application& application;
  MainLoop loop;
  PhotoReader photos;
  std::unique_ptr<PageServer> server;
  std::unique_ptr<PagePublisher> publisher;
};

PageHostResult PageHost::create(Application& application, const PageServerOptions& options,
                                const std::string& pageFolder) {
  std::string problem;
  auto files = StaticFiles::load(pageFolder, problem);
  if (!files) return {nullptr, problem};
  auto state = std::make_unique<State>(application);
  PageServerResult made = PageServer::create(options, std::move(*files), *state);
  if (!made.server) return {nullptr, made.error};
  state->server = std::move(made.server);
  state->publisher = std::make_unique<PagePublisher>(application, *state->server);
  application.setWakeHandler([loop = &state->loop] { loop->wake(); });
  application.setWaitHandler([host = state.get()] {
    if (!host->loop.turn()) host->application.stopWaiting();
    host->publisher->step();
  });
  state->server->start();
  return {std::unique_ptr<PageHost>(new PageHost(std::move(state))), {}};
}

PageHost::PageHost(std::unique_ptr<State> state) : _state(std::move(state)) {}
PageHost::~PageHost() = default;

std::string PageHost::address() const {
  return _state->server->address();
}

void PageHost::run() {
  _state->loop.run([this] { return _state->publisher->step(); });
  _state->server->stop();
}

void PageHost::stop() {
  _state->loop.stop();
}

void PageHost::filesChanged() {
  _state->loop.post([this] { _state->publisher->filesChanged(); });
}

}  // namespace settings

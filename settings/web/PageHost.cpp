#include "settings/web/PageHost.h"

#include <utility>

#include "settings/application/Application.h"
#include "settings/web/MainLoop.h"
#include "settings/web/PagePublisher.h"
#include "settings/web/WorkerThread.h"

namespace settings {
namespace {

platform::Data dataOf(std::string bytes) {
  auto kept = std::make_shared<const std::string>(std::move(bytes));
  const std::string_view view = *kept;
  return platform::Data::sharing(std::move(kept), view);
}

}  // namespace

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
    loop.post([this, request, hash = std::move(hash)] {
      if (auto work = application.thumbnailWork(hash)) {
        makeThumbnail(request, hash, std::move(work));
      } else {
        publisher->imageWanted(request, hash);
      }
    });
  }
  // A photo that was sent does not wait behind the thumbnails of a whole library.
  void photoSent(RequestId request, std::string bytes) override {
    photos.post([this, request, sent = dataOf(std::move(bytes))] {
      loop.post([this, request, photo = readPhoto(sent)] { publisher->photoRead(request, photo); });
    });
  }
  void makeThumbnail(RequestId request, const std::string& hash,
                     std::function<ThumbnailFile()> work) {
    thumbnails.post([this, request, hash, work = std::move(work)] {
      loop.post(
          [this, request, hash, made = work()] { publisher->thumbnailMade(request, hash, made); });
    });
  }

  Application& application;
  MainLoop loop;
  WorkerThread photos;
  WorkerThread thumbnails;
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

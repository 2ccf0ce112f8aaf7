#include "settings/web/PageHost.h"

#include <utility>
#include <vector>

#include "platform/foundation/scheduling/MainQueue.h"
#include "platform/foundation/scheduling/ThreadPool.h"
#include "settings/application/Application.h"
#include "settings/web/PagePublisher.h"

namespace settings {
namespace {

using platform::Work;

platform::Data dataOf(std::string bytes) {
  auto kept = std::make_shared<const std::string>(std::move(bytes));
  const std::string_view view = *kept;
  return platform::Data::sharing(std::move(kept), view);
}

}  // namespace

// Transfers the pages' events to the main thread.
struct PageHost::State : PageEvents, std::enable_shared_from_this<State> {
  explicit State(Application& served) : application(served) {}
  ~State() override { application.setWaitHandler({}); }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  // The main queue also runs in the middle of a page's work. Work is then held back until the
  // page's work has ended or has become a long wait.
  void post(Work work) {
    application.mainQueue().push([weak = weak_from_this(), work = std::move(work)]() mutable {
      if (const auto state = weak.lock()) state->held.push_back(std::move(work));
    });
  }
  void turn() {
    for (const Work& work : std::exchange(held, {})) work();
    publisher->publish();
  }

  void opened(ConnectionId connection) override {
    post([this, connection] { publisher->opened(connection); });
  }
  void received(ConnectionId connection, std::string text) override {
    post([this, connection, text = std::move(text)] { publisher->received(connection, text); });
  }
  void wantsWhole(ConnectionId connection) override {
    post([this, connection] { publisher->wantsWhole(connection); });
  }
  void closed(ConnectionId connection) override {
    post([this, connection] { publisher->closed(connection); });
  }
  void imageWanted(RequestId request, std::string hash) override {
    post([this, request, hash = std::move(hash)] {
      if (auto work = application.thumbnailWork(hash)) {
        makeThumbnail(request, hash, std::move(work));
      } else {
        publisher->imageWanted(request, hash);
      }
    });
  }
  // Has its own thread, so that an upload does not wait behind the thumbnails of a whole library.
  void photoSent(RequestId request, std::string bytes) override {
    photos.push([this, request, sent = dataOf(std::move(bytes))] {
      post([this, request, photo = readPhoto(sent)] { publisher->photoRead(request, photo); });
    });
  }
  void makeThumbnail(RequestId request, const std::string& hash,
                     std::function<ThumbnailFile()> work) {
    thumbnails.push([this, request, hash, work = std::move(work)] {
      post([this, request, hash, made = work()] { publisher->thumbnailMade(request, hash, made); });
    });
  }

  Application& application;
  std::vector<Work> held;
  // Work that would block the main thread. Each pool runs one piece after another.
  platform::ThreadPool photos{1, [](const Work& work) { work(); }};
  platform::ThreadPool thumbnails{1, [](const Work& work) { work(); }};
  std::unique_ptr<PageServer> server;
  std::unique_ptr<PagePublisher> publisher;
};

PageHostResult PageHost::create(Application& application, const PageServerOptions& options,
                                const std::string& pageFolder) {
  std::string problem;
  auto files = StaticFiles::load(pageFolder, problem);
  if (!files) return {nullptr, problem};
  auto state = std::make_shared<State>(application);
  PageServerResult made = PageServer::create(options, std::move(*files), *state);
  if (!made.server) return {nullptr, made.error};
  state->server = std::move(made.server);
  state->publisher = std::make_unique<PagePublisher>(application, *state->server);
  application.setWaitHandler([host = state.get()] { host->turn(); });
  state->server->start();
  return {std::unique_ptr<PageHost>(new PageHost(std::move(state))), {}};
}

PageHost::PageHost(std::shared_ptr<State> state) : _state(std::move(state)) {}
PageHost::~PageHost() = default;

std::string PageHost::address() const {
  return _state->server->address();
}

void PageHost::run() {
  _state->application.run([this] { _state->turn(); });
  _state->server->stop();
}

void PageHost::stop() {
  _state->application.stop();
}

void PageHost::filesChanged() {
  _state->publisher->filesChanged();
}

}  // namespace settings

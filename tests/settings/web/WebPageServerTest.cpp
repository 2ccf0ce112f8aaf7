#include <chrono>
#include <condition_variable>
#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "settings/web/PageServer.h"
#include "tests/settings/web/LoopbackClient.h"
#include "tests/settings/web/TemporaryPage.h"

namespace settings {
namespace {

using test::Frame;
using test::HttpReply;
using test::LoopbackClient;
using ::testing::HasSubstr;

// Records the server's events, and lets a test wait for them.
class RecordingEvents : public PageEvents {
 public:
  struct Event {
    std::string kind;
    std::uint64_t id = 0;
    std::string text;
  };

  void opened(ConnectionId connection) override { add({"opened", connection, {}}); }
  void received(ConnectionId connection, std::string text) override {
    add({"received", connection, std::move(text)});
  }
  void wantsWhole(ConnectionId connection) override { add({"wantsWhole", connection, {}}); }
  void closed(ConnectionId connection) override { add({"closed", connection, {}}); }
  void imageWanted(RequestId request, std::string hash) override {
    add({"image", request, std::move(hash)});
  }
  void photoSent(RequestId request, std::string bytes) override {
    add({"photo", request, std::move(bytes)});
  }

  // The next event; its kind is "nothing" if there is none.
  Event next() {
    std::unique_lock lock(_mutex);
    if (!_added.wait_for(lock, std::chrono::seconds(20), [this] { return !_events.empty(); })) {
      return {"nothing", 0, {}};
    }
    Event event = std::move(_events.front());
    _events.pop_front();
    return event;
  }
  bool isEmpty() {
    const std::lock_guard lock(_mutex);
    return _events.empty();
  }

 private:
  void add(Event event) {
    {
      const std::lock_guard lock(_mutex);
      _events.push_back(std::move(event));
    }
    _added.notify_all();
  }

  std::mutex _mutex;
  std::condition_variable _added;
  std::deque<Event> _events;
};

OutgoingMessage message(std::string text, bool whole = false) {
  return {std::make_shared<const std::string>(std::move(text)), whole};
}

class PageServerTest : public ::testing::Test {
 protected:
  PageServerTest() { serve({}); }

  void serve(PageServerOptions options) {
    _server.reset();
    options.port = 0;
    std::string problem;
    auto files = StaticFiles::load(_page.folder.path(), problem);
    PageServerResult made = PageServer::create(options, std::move(*files), _events);
    ASSERT_TRUE(made.server) << made.error;
    _server = std::move(made.server);
    _server->start();
  }

  std::unique_ptr<LoopbackClient> client() {
    return std::make_unique<LoopbackClient>(_server->port());
  }

  // The header line of the session's cookie that a browser receives for the printed address.
  std::string cookieLine() {
    const std::string address = _server->address();
    const HttpReply reply = client()->get(address.substr(address.find("/?")));
    const auto cookie = reply.headers.find("set-cookie");
    if (reply.status != 303 || cookie == reply.headers.end()) return "no cookie";
    return "Cookie: " + cookie->second.substr(0, cookie->second.find(';')) + "\r\n";
  }

  // A page's WebSocket that the server has accepted, and its identity.
  std::pair<std::unique_ptr<LoopbackClient>, ConnectionId> openPage() {
    auto page = client();
    const HttpReply reply = page->openSocket(cookieLine() + page->originLine());
    EXPECT_EQ(reply.status, 101) << reply.body;
    const auto event = _events.next();
    EXPECT_EQ(event.kind, "opened");
    return {std::move(page), event.id};
  }

  // The header of a request that uploads a photo of this many bytes.
  std::string photoHead(const LoopbackClient& page, std::size_t size) {
    return "POST /photos HTTP/1.1\r\nHost: " + page.host() + "\r\n" + cookieLine() +
           page.originLine() + "Content-Length: " + std::to_string(size) + "\r\n\r\n";
  }

  test::TemporaryPage _page;
  RecordingEvents _events;
  std::unique_ptr<PageServer> _server;
};

TEST_F(PageServerTest, ThePrintedAddressLeadsToThePage) {
  EXPECT_THAT(_server->address(),
              ::testing::MatchesRegex("http://127\\.0\\.0\\.1:[0-9]+/\\?token=[0-9a-f]{64}"));
  const HttpReply page = client()->get("/", cookieLine());
  EXPECT_EQ(page.status, 200);
  EXPECT_EQ(page.body, "<!doctype html><title>page</title>");
  EXPECT_EQ(page.headers.at("x-content-type-options"), "nosniff");
}

TEST_F(PageServerTest, WithoutTheTokenNothingIsServed) {
  EXPECT_EQ(client()->get("/").status, 403);
  EXPECT_EQ(client()->get("/?token=" + std::string(64, '0')).status, 403);
  auto page = client();
  EXPECT_EQ(page->openSocket(page->originLine()).status, 403);
}

TEST_F(PageServerTest, AnotherHostAndAnotherOriginAreRefused) {
  auto rebound = client();
  rebound->send("GET / HTTP/1.1\r\nHost: evil.example\r\n" + cookieLine() + "\r\n");
  EXPECT_EQ(rebound->readReply().status, 421);
  const std::string cookie = cookieLine();
  EXPECT_EQ(client()->openSocket(cookie + "Origin: http://evil.example\r\n").status, 403);
  EXPECT_EQ(client()->openSocket(cookie).status, 403);
  EXPECT_EQ(client()->get("/", cookie + "Origin: null\r\n").status, 403);
}

TEST_F(PageServerTest, AConnectionServesSeveralRequests) {
  auto browser = client();
  const std::string cookie = cookieLine();
  EXPECT_EQ(browser->get("/", cookie).status, 200);
  EXPECT_EQ(browser->get("/app.js", cookie, "HEAD").headers.at("content-length"), "13");
  EXPECT_EQ(browser->get("/app.js", cookie).body, "'use strict';");
}

TEST_F(PageServerTest, RequestsThatAreNoneGetAnAnswerAndTheEnd) {
  auto liar = client();
  liar->send("\x16\x03\x01 this is no HTTP\r\n\r\n");
  EXPECT_EQ(liar->readReply().status, 400);
  EXPECT_TRUE(liar->waitForEnd());
}

TEST_F(PageServerTest, AHeaderBeyondTheLimitIsRefused) {
  auto liar = client();
  liar->send("GET / HTTP/1.1\r\nHost: " + liar->host() + "\r\nX: " + std::string(40000, 'x') +
             "\r\n\r\n");
  EXPECT_EQ(liar->readReply().status, 431);
  EXPECT_TRUE(liar->waitForEnd());
}

TEST_F(PageServerTest, ABodyIsNeverRead) {
  auto liar = client();
  const std::string cookie = cookieLine();
  liar->send("POST / HTTP/1.1\r\nHost: " + liar->host() + "\r\n" + cookie +
             "Content-Length: 100000\r\n\r\n" + std::string(100000, 'x'));
  EXPECT_EQ(liar->readReply().status, 405);
  EXPECT_TRUE(liar->waitForEnd());
}

TEST_F(PageServerTest, APhotoIsReadToItsEndAndAnswered) {
  auto page = client();
  const std::string bytes(3'000'000, 'p');
  page->send(photoHead(*page, bytes.size()) + bytes.substr(0, 1000));
  page->send(bytes.substr(1000));
  const auto event = _events.next();
  EXPECT_EQ(event.kind, "photo");
  EXPECT_TRUE(event.text == bytes);
  _server->answerPhoto(event.id, 200, R"({"name":"sent/1"})");
  const HttpReply reply = page->readReply();
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(reply.headers.at("content-type"), "application/json");
  EXPECT_EQ(reply.body, R"({"name":"sent/1"})");
  EXPECT_EQ(page->get("/app.js", cookieLine()).status, 200) << "the connection goes on";
}

TEST_F(PageServerTest, APhotoBeyondTheLimitIsRefusedByItsLength) {
  auto page = client();
  page->send(photoHead(*page, std::size_t{64} * 1024 * 1024 + 1));
  const HttpReply reply = page->readReply();
  EXPECT_EQ(reply.status, 413);
  EXPECT_THAT(reply.body, HasSubstr("64 MiB"));
  EXPECT_TRUE(page->waitForEnd());
  EXPECT_TRUE(_events.isEmpty());
}

TEST_F(PageServerTest, ARequestWithoutAPhotoIsRefused) {
  auto page = client();
  page->send(photoHead(*page, 0));
  EXPECT_EQ(page->readReply().status, 400);
  EXPECT_TRUE(_events.isEmpty());
}

TEST_F(PageServerTest, OnlySoManyPhotosAreReadAtATime) {
  PageServerOptions options;
  options.uploads = 1;
  serve(options);
  auto slow = client();
  // The answer to another request on the same server shows that this request has started.
  slow->send(photoHead(*slow, 10) + "first");
  EXPECT_EQ(client()->get("/", cookieLine()).status, 200);
  auto second = client();
  second->send(photoHead(*second, 6) + "second");
  EXPECT_EQ(second->readReply().status, 503);
  slow->send(" half");
  EXPECT_EQ(_events.next().text, "first half");
  auto third = client();
  third->send(photoHead(*third, 3) + "abc");
  EXPECT_EQ(_events.next().text, "abc");
}

TEST_F(PageServerTest, APageThatGoesWhileItSendsAPhotoLeavesNothingBehind) {
  PageServerOptions options;
  options.uploads = 1;
  serve(options);
  auto gone = client();
  gone->send(photoHead(*gone, 1000) + "123");
  gone->close();
  EXPECT_EQ(client()->get("/", cookieLine()).status, 200);
  auto page = client();
  page->send(photoHead(*page, 3) + "abc");
  EXPECT_EQ(_events.next().text, "abc");
  _server->answerPhoto(12345, 200, "{}");  // no such request: nothing happens
}

TEST_F(PageServerTest, TextsGoBothWays) {
  auto [page, id] = openPage();
  ASSERT_TRUE(page->sendText("{\"type\":\"resync\"}"));
  const auto event = _events.next();
  EXPECT_EQ(event.kind, "received");
  EXPECT_EQ(event.id, id);
  EXPECT_EQ(event.text, "{\"type\":\"resync\"}");
  _server->send(id, message("one"));
  _server->send(id, message(std::string(200000, 'x')));
  EXPECT_EQ(page->receive().payload, "one");
  EXPECT_TRUE(page->receive().payload == std::string(200000, 'x'));
}

TEST_F(PageServerTest, EveryPageHasItsOwnMessages) {
  auto [first, firstId] = openPage();
  auto [second, secondId] = openPage();
  EXPECT_NE(firstId, secondId);
  _server->send(secondId, message("two"));
  _server->send(firstId, message("one"));
  EXPECT_EQ(first->receive().payload, "one");
  EXPECT_EQ(second->receive().payload, "two");
}

TEST_F(PageServerTest, AMessageBeyondTheLimitClosesTheSocketWithACode) {
  auto [page, id] = openPage();
  page->send(LoopbackClient::frameHead(1, 65537));
  const Frame frame = page->receive();
  EXPECT_EQ(frame.closeCode(), 1009);
  page->close();
  EXPECT_EQ(_events.next().kind, "closed");
}

TEST_F(PageServerTest, AMessageAtTheLimitIsTaken) {
  auto [page, id] = openPage();
  page->sendText(std::string(65536, ' '));
  EXPECT_EQ(_events.next().text.size(), 65536U);
}

TEST_F(PageServerTest, ABinaryMessageClosesTheSocketWithACode) {
  auto [page, id] = openPage();
  page->sendFrame(2, "bytes");
  EXPECT_EQ(page->receive().closeCode(), 1003);
}

TEST_F(PageServerTest, TextThatIsNoUtf8ClosesTheSocket) {
  auto [page, id] = openPage();
  page->sendText("\xff\xfe");
  EXPECT_EQ(page->receive().closeCode(), 1007);
}

TEST_F(PageServerTest, AFrameWithoutAMaskClosesTheSocket) {
  auto [page, id] = openPage();
  page->send(std::string("\x81\x02hi", 4));
  EXPECT_EQ(page->receive().closeCode(), 1002);
}

TEST_F(PageServerTest, APageThatGoesInTheMiddleIsTold) {
  auto [page, id] = openPage();
  page->send(LoopbackClient::frameHead(1, 1000) + "half");
  page->close();
  const auto event = _events.next();
  EXPECT_EQ(event.kind, "closed");
  EXPECT_EQ(event.id, id);
  // Messages to it are dropped, and the server goes on.
  _server->send(id, message("late"));
  _server->handled(id);
  EXPECT_EQ(client()->get("/", cookieLine()).status, 200);
}

TEST_F(PageServerTest, ImagesAreAskedForAndAnswered) {
  auto browser = client();
  const std::string hash(64, 'a');
  browser->send("GET /images/" + hash + " HTTP/1.1\r\nHost: " + browser->host() + "\r\n" +
                cookieLine() + "\r\n");
  const auto wanted = _events.next();
  EXPECT_EQ(wanted.kind, "image");
  EXPECT_EQ(wanted.text, hash);
  _server->answerImage(wanted.id, std::make_shared<const std::string>("png"));
  const HttpReply reply = browser->readReply();
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(reply.body, "png");
  EXPECT_THAT(reply.headers.at("cache-control"), HasSubstr("immutable"));
}

TEST_F(PageServerTest, AnImageForAConnectionThatHasGoneIsDropped) {
  _server->answerImage(12345, std::make_shared<const std::string>("png"));
  EXPECT_EQ(client()->get("/", cookieLine()).status, 200);
}

TEST_F(PageServerTest, OnlySoManyMessagesWaitAndTheRestComesLater) {
  serve({.waiting = 2});
  auto [page, id] = openPage();
  for (const char* text : {"1", "2", "3"}) page->sendText(text);
  EXPECT_EQ(_events.next().text, "1");
  EXPECT_EQ(_events.next().text, "2");
  // An answer to another connection shows that the server has completed a turn.
  EXPECT_EQ(client()->get("/", cookieLine()).status, 200);
  EXPECT_TRUE(_events.isEmpty());
  _server->handled(id);
  EXPECT_EQ(_events.next().text, "3");
}

TEST_F(PageServerTest, APageThatDoesNotReadIsAskedForAWholeTreeOnceItReads) {
  auto [page, id] = openPage();
  const std::string large(4ULL * 1024 * 1024, 'x');
  for (int count = 0; count < 8; ++count) _server->send(id, message(large));
  // It receives what was in transit; queued messages were dropped.
  EXPECT_EQ(page->receive().payload.size(), large.size());
  EXPECT_EQ(_events.next().kind, "wantsWhole");
  _server->send(id, message("dropped"));
  _server->send(id, message("tree", true));
  _server->send(id, message("after"));
  EXPECT_EQ(page->receive().payload, "tree");
  EXPECT_EQ(page->receive().payload, "after");
}

TEST_F(PageServerTest, TooManyPagesAreRefusedUntilOneCloses) {
  serve({.pages = 1});
  auto [page, id] = openPage();
  auto second = client();
  EXPECT_EQ(second->openSocket(cookieLine() + second->originLine()).status, 503);
  page->close();
  EXPECT_EQ(_events.next().kind, "closed");
  openPage();
}

TEST_F(PageServerTest, ConnectionsBeyondTheLimitAreClosed) {
  serve({.connections = 2});
  const std::string cookie = cookieLine();
  auto first = client();
  auto second = client();
  EXPECT_EQ(first->get("/", cookie).status, 200);
  EXPECT_EQ(second->get("/", cookie).status, 200);
  EXPECT_EQ(client()->get("/", cookie).status, 0);
}

TEST_F(PageServerTest, AConnectionThatSaysNothingIsClosed) {
  serve({.idleSeconds = 0.05});
  EXPECT_TRUE(client()->waitForEnd());
  auto slow = client();
  slow->send("GET / HT");
  EXPECT_TRUE(slow->waitForEnd());
}

TEST_F(PageServerTest, StoppingSaysGoodbyeToEveryPage) {
  auto [page, id] = openPage();
  auto browser = client();
  _server->stop();
  EXPECT_EQ(page->receive().closeCode(), 1001);
  EXPECT_TRUE(browser->waitForEnd());
  EXPECT_EQ(_events.next().kind, "closed");
}

TEST_F(PageServerTest, APortInUseIsSaidWithWhatToDo) {
  std::string problem;
  auto files = StaticFiles::load(_page.folder.path(), problem);
  PageServerOptions options;
  options.port = _server->port();
  const PageServerResult refused = PageServer::create(options, std::move(*files), _events);
  EXPECT_FALSE(refused.server);
  EXPECT_EQ(refused.error, "port " + std::to_string(options.port) +
                               " is in use; choose another one with --port N, or --port 0 for a "
                               "free one");
}

}  // namespace
}  // namespace settings

#pragma once

#include <csignal>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "tests/settings/cli/ProgramRunner.h"
#include "tests/settings/web/LoopbackClient.h"

// The program serving pages, and a browser that shows one.
namespace settings::test {

// A browser page's handling of the server's messages.
class PageClient {
 public:
  explicit PageClient(const std::string& address) : _port(portOf(address)), _client(_port) {
    LoopbackClient first(portOf(address));
    const HttpReply reply = first.get(address.substr(address.find("/?")));
    const std::string cookie = reply.headers.at("set-cookie");
    _cookieLine = "Cookie: " + cookie.substr(0, cookie.find(';')) + "\r\n";
    _opened = _client.openSocket(_cookieLine + _client.originLine()).status == 101;
  }
  static std::uint16_t portOf(const std::string& address) {
    return static_cast<std::uint16_t>(
        std::stoi(address.substr(std::string("http://127.0.0.1:").size())));
  }

  bool isOpened() const { return _opened; }
  LoopbackClient& client() { return _client; }

  // The next message of this type, after handling all messages before it; null if the connection
  // ends.
  nlohmann::json next(const std::string& type) {
    while (true) {
      const Frame frame = _client.receive();
      if (frame.opcode != 1) return nullptr;
      nlohmann::json message = nlohmann::json::parse(frame.payload);
      takeIn(message);
      if (message["type"] == type) return message;
    }
  }

  // Sends an action. Returns the patch or the refusal with its sequence number.
  nlohmann::json act(nlohmann::json action) {
    action["type"] = "action";
    action["sequence"] = ++_sequence;
    _client.sendText(action.dump());
    while (true) {
      const Frame frame = _client.receive();
      if (frame.opcode != 1) return nullptr;
      nlohmann::json message = nlohmann::json::parse(frame.payload);
      takeIn(message);
      if (message.value("ack", 0) == _sequence) return message;
    }
  }

  // The image with this hash, fetched over a separate connection.
  HttpReply image(const std::string& hash) const {
    return LoopbackClient(_port).get("/images/" + hash, _cookieLine);
  }

  // The key of the first node for which the predicate holds; empty if there is none.
  template <class Test>
  std::string find(Test test) const {
    for (const auto& [key, node] : tree.at("nodes").items()) {
      if (test(node)) return key;
    }
    return {};
  }

  nlohmann::json tree;

 private:
  void takeIn(const nlohmann::json& message) {
    if (message["type"] == "tree") tree = message["tree"];
    if (message["type"] == "patch") {
      EXPECT_EQ(message["base"], tree["revision"]);
      tree = tree.patch(message["patch"]);
      EXPECT_EQ(message["revision"], tree["revision"]);
    }
  }

  std::uint16_t _port;
  LoopbackClient _client;
  std::string _cookieLine;
  bool _opened = false;
  int _sequence = 0;
};

class CliServe : public ::testing::Test {
 protected:
  CliServe() {
    const ProgramResult made = runProgramWith({"device", "create", device});
    EXPECT_EQ(made.status, 0) << made.messages;
    serve();
  }

  // The program must always end in order; a finding of a sanitizer is another exit status.
  void TearDown() override { EXPECT_EQ(program->stop(SIGTERM), 0); }

  void serve(const std::vector<std::string>& options = {}) {
    std::vector<std::string> arguments{"serve",  "--device",        device, "--port", "0",
                                       "--page", page.folder.path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    program = std::make_unique<LiveProgram>(arguments);
    address = program->readLine();
    ASSERT_THAT(address, ::testing::HasSubstr("http://127.0.0.1:"));
  }

  std::optional<nlohmann::json> storedValue(const std::string& key) const {
    const ProgramResult result =
        runProgramWith({"prefs", "get", key, "--json", "--device", device});
    if (result.status != 0) return std::nullopt;
    return nlohmann::json::parse(result.output);
  }

  TemporaryFolder folder;
  TemporaryPage page;
  std::string device = folder.in("device");
  std::unique_ptr<LiveProgram> program;
  std::string address;
};

// All rows of a page are in sight from now on.
inline void showAllRows(PageClient& browser) {
  browser.next("tree");
  browser.act({{"action", "bounds"}, {"width", 400}, {"height", 4000}});
}

inline void tapRow(PageClient& browser, const std::string& identifier) {
  const std::string row = browser.find([&](const nlohmann::json& node) {
    return node.value("kind", "") == "row" && node.value("identifier", "") == identifier;
  });
  ASSERT_NE(row, "") << identifier;
  const nlohmann::json answer = browser.act({{"action", "tap"}, {"node", row}});
  EXPECT_EQ(answer["type"], "patch") << identifier << ": " << answer.value("message", "");
}

}  // namespace settings::test

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

#include "platform/foundation/values/Collections.h"
#include "platform/uikit/images/ImageHeader.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/TreeWriter.h"
#include "tests/root/Pictures.h"
#include "tests/settings/cli/ServeFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

bool isSwitch(const json& node) {
  return node.value("kind", "") == "switch" && node.value("enabled", true);
}

TEST_F(CliServe, EndsInOrderOnBothSignals) {
  EXPECT_EQ(program->stop(SIGINT), 0);
  serve();
  PageClient browser(address);
  EXPECT_FALSE(browser.next("tree").is_null());
  // The other signal is sent at the end of each test.
}

TEST_F(CliServe, ANewPageGetsTheTreeAndThePanes) {
  PageClient browser(address);
  ASSERT_TRUE(browser.isOpened());
  json whole = browser.next("tree");
  EXPECT_EQ(whole["revision"], whole["tree"]["revision"]);
  const std::string root = whole["tree"]["root"];
  EXPECT_EQ(whole["tree"]["nodes"][root]["kind"], "window");
  json side = browser.next("side");
  EXPECT_TRUE(side.contains("file"));
  EXPECT_TRUE(side.contains("log"));
  EXPECT_TRUE(side.contains("programs"));
}

TEST_F(CliServe, EveryTraitOfTheDeviceCanBeGivenAtTheStart) {
  EXPECT_EQ(program->stop(SIGTERM), 0);
  serve({"--idiom", "pad", "--system", "16.5", "--screen", "820x1180@2", "--appearance", "dark",
         "--text-scale", "1.24", "--tint", "FF0000FF"});
  PageClient browser(address);
  const json shown = browser.next("tree")["tree"]["device"];
  EXPECT_EQ(shown["idiom"], "pad");
  EXPECT_EQ(shown["system"], "16.5");
  EXPECT_EQ(shown["screen"], (json{{"width", 820}, {"height", 1180}, {"scale", 2}}));
  EXPECT_EQ(shown["appearance"], "dark");
  EXPECT_EQ(shown["textScale"], 1.24);
  EXPECT_EQ(shown["tint"], "FF0000FF");
}

TEST_F(CliServe, ASwitchIsAnsweredByOnePatchAndIsInTheFile) {
  PageClient browser(address);
  browser.next("tree");
  const std::string node = browser.find(isSwitch);
  ASSERT_NE(node, "");
  const bool wanted = !browser.tree["nodes"][node].value("on", false);
  json answer = browser.act({{"action", "toggle"}, {"node", node}, {"on", wanted}});
  EXPECT_EQ(answer["type"], "patch");
  EXPECT_EQ(browser.tree["nodes"][node].value("on", false), wanted);
  json side = browser.next("side");
  ASSERT_EQ(side["file"]["state"], "ok");
  ASSERT_EQ(side["file"]["changed"].size(), 1U);
  const std::string key = side["file"]["changed"][0]["key"];
  EXPECT_EQ(side["file"]["changed"][0]["after"], wanted);
  EXPECT_EQ(storedValue(key), json(wanted));
}

TEST_F(CliServe, TwoPagesSeeTheSameAndEachItsOwnAnswers) {
  PageClient first(address);
  PageClient second(address);
  first.next("tree");
  second.next("tree");
  const std::string node = first.find(isSwitch);
  const bool wanted = !first.tree["nodes"][node].value("on", false);
  first.act({{"action", "toggle"}, {"node", node}, {"on", wanted}});
  json patch = second.next("patch");
  EXPECT_FALSE(patch.contains("ack"));
  EXPECT_EQ(second.tree["nodes"], first.tree["nodes"]);
}

TEST_F(CliServe, WhatCannotBeDoneIsRefusedAndChangesNothing) {
  PageClient browser(address);
  browser.next("tree");
  json before = browser.tree;
  for (const json& action :
       {json({{"action", "tap"}, {"node", "no such node"}}), json({{"action", "fly"}}),
        json({{"action", "toggle"}, {"node", before["root"]}, {"on", true}}),
        json({{"action", "toggle"}, {"node", 7}, {"on", "x"}}),
        json({{"action", "trait"}, {"name", "appearance"}, {"value", "purple"}})}) {
    json answer = browser.act(action);
    EXPECT_EQ(answer["type"], "refused") << action;
    EXPECT_NE(answer["message"], "") << action;
  }
  browser.client().sendText("{ this is no JSON");
  EXPECT_FALSE(browser.next("refused").contains("ack"));
  EXPECT_EQ(browser.tree, before);
}

TEST_F(CliServe, ALostTreeIsSentAgain) {
  PageClient browser(address);
  browser.next("tree");
  json before = std::exchange(browser.tree, nullptr);
  browser.client().sendText(R"({"type":"resync"})");
  browser.next("tree");
  EXPECT_EQ(browser.tree, before);
}

TEST_F(CliServe, ABrowserThatClosesInTheMiddleLosesNothing) {
  std::string node;
  bool wanted = false;
  {
    PageClient browser(address);
    browser.next("tree");
    node = browser.find(isSwitch);
    wanted = !browser.tree["nodes"][node].value("on", false);
    const json action = {
        {"type", "action"}, {"sequence", 1}, {"action", "toggle"}, {"node", node}, {"on", wanted}};
    browser.client().sendText(action.dump());
    browser.client().send(LoopbackClient::frameHead(1, 100) + "half a message");
  }
  PageClient again(address);
  again.next("tree");
  if (again.tree["nodes"][node].value("on", false) != wanted) again.next("patch");
  EXPECT_EQ(again.tree["nodes"][node].value("on", false), wanted);
}

TEST_F(CliServe, AChangeOfTheFileFromOutsideIsShownInThePane) {
  PageClient browser(address);
  browser.next("side");
  const ProgramResult set =
      runProgramWith({"prefs", "set", "fromOutside", "1", "--device", device});
  EXPECT_EQ(set.status, 0) << set.messages;
  EXPECT_EQ(browser.next("side")["file"]["entries"]["fromOutside"], 1);
}

TEST_F(CliServe, TheSpecifierBehindARowIsToldOnRequest) {
  PageClient browser(address);
  browser.next("tree");
  browser.next("side");
  const std::string row = browser.find([](const json& node) {
    return node.value("kind", "") == "row" && node.contains("identifier");
  });
  ASSERT_NE(row, "");
  browser.client().sendText(json({{"type", "inspect"}, {"node", row}}).dump());
  json side = browser.next("side");
  EXPECT_EQ(side["row"]["node"], row);
  EXPECT_EQ(side["row"]["identifier"], browser.tree["nodes"][row]["identifier"]);
}

// Decompressing a photo takes long: the page asks for its thumbnail, and the application keeps
// answering in the meantime. The library then reports photos that turn out to be damaged.
TEST_F(CliServe, ThumbnailsAreMadeOnDemandAndADamagedPhotoIsToldThen) {
  std::string damaged = zentrova::tests::pngOf(64, 64);
  damaged[50] = static_cast<char>(damaged[50] + 1);
  TreeWriter writer(device);
  writer.file(std::string(photosPath) + "/IMG_0000.PNG", damaged);
  ASSERT_EQ(writer.problem(), "");

  PageClient browser(address);
  showAllRows(browser);
  tapRow(browser, "customize");
  tapRow(browser, "backgroundImageCell");
  const std::string picker =
      browser.find([](const json& node) { return node.value("kind", "") == "imagePicker"; });
  ASSERT_NE(picker, "");
  const json library = browser.tree["nodes"][picker]["photos"];
  ASSERT_EQ(library[1]["name"], "IMG_0001.JPG");
  EXPECT_EQ(library[1]["image"]["width"], 320);
  const HttpReply thumbnail = browser.image(library[1]["image"]["hash"]);
  EXPECT_EQ(thumbnail.status, 200);
  EXPECT_EQ(thumbnail.headers.at("content-type"), "image/jpeg");
  const platform::Data bytes(thumbnail.body);
  EXPECT_EQ(platform::readImageHeader(bytes.bytes()).value().width, 320U);

  ASSERT_TRUE(library[0].contains("image"));
  EXPECT_EQ(browser.image(library[0]["image"]["hash"]).status, 404);
  browser.next("patch");
  const json told = browser.tree["nodes"][picker]["photos"][0];
  EXPECT_THAT(told.value("problem", ""), HasSubstr("The PNG cannot be read"));
  const json answer = browser.act({{"action", "photo"}, {"node", picker}, {"name", told["name"]}});
  EXPECT_EQ(answer["type"], "refused");
  EXPECT_EQ(answer["message"], told["problem"]);
}

TEST_F(CliServe, APortInUseIsAFailureThatSaysSo) {
  const std::string port = std::to_string(PageClient::portOf(address));
  const ProgramResult second =
      runProgramWith({"serve", "--device", device, "--port", port, "--page", page.folder.path()});
  EXPECT_EQ(second.status, 1);
  EXPECT_EQ(second.output, "");
  EXPECT_THAT(second.messages, HasSubstr("port " + port + " is in use"));
}

TEST_F(CliServe, AFolderWithoutAPageIsAFailureThatSaysSo) {
  const TemporaryFolder empty;
  const ProgramResult result =
      runProgramWith({"serve", "--device", device, "--port", "0", "--page", empty.path()});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.messages, HasSubstr("holds no index.html. Build the page"));
}

}  // namespace
}  // namespace settings::test

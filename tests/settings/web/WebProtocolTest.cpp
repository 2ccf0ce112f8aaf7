#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

#include "settings/web/Protocol.h"

namespace settings {
namespace {

using nlohmann::json;

ClientMessage parse(const std::string& text) {
  json fields;
  return parseClientMessage(text, fields);
}

TEST(Protocol, ReadsAnAction) {
  json fields;
  const ClientMessage message =
      parseClientMessage(R"({"type":"action","sequence":7,"action":"tap","node":"17"})", fields);
  EXPECT_EQ(message.kind, ClientMessageKind::action);
  EXPECT_EQ(message.sequence, 7);
  EXPECT_EQ(fields["action"], "tap");
  EXPECT_EQ(fields["node"], "17");
}

TEST(Protocol, ReadsInspectionsAndResyncs) {
  const ClientMessage inspection = parse(R"({"type":"inspect","node":"3"})");
  EXPECT_EQ(inspection.kind, ClientMessageKind::inspect);
  EXPECT_EQ(inspection.node, "3");
  EXPECT_EQ(parse(R"({"type":"resync"})").kind, ClientMessageKind::resync);
}

TEST(Protocol, RefusesWhatItDoesNotKnowAndSaysWhy) {
  for (const char* text :
       {"", "{", "null", "[]", "1", "\"tap\"", "{}", R"({"type":1})", R"({"type":"acton"})",
        R"({"type":"action"})", R"({"type":"action","sequence":"1","action":"tap"})",
        R"({"type":"action","sequence":1.5,"action":"tap"})", R"({"type":"action","sequence":1})",
        R"({"type":"action","sequence":1,"action":2})", R"({"type":"inspect"})",
        R"({"type":"inspect","node":7})", "{\"type\":\"resync\"} x",
        R"({"type":"action","sequence":1e999,"action":"tap"})", "\xff\xfe"}) {
    const ClientMessage message = parse(text);
    EXPECT_EQ(message.kind, ClientMessageKind::bad) << text;
    EXPECT_FALSE(message.problem.empty()) << text;
  }
}

TEST(Protocol, ABadActionIsRefusedUnderItsSequenceWhereItHasOne) {
  EXPECT_EQ(parse(R"({"type":"action","sequence":9})").sequence, 9);
  EXPECT_EQ(parse(R"({"type":"acton","sequence":9})").sequence, 9);
  EXPECT_EQ(parse(R"({"type":"action"})").sequence, std::nullopt);
}

TEST(Protocol, RefusesNestingThatWouldExhaustTheStack) {
  const std::string deep(32000, '[');
  EXPECT_EQ(parse(deep + std::string(32000, ']')).kind, ClientMessageKind::bad);
  const std::string nested = R"({"type":"resync","x":)" + deep + std::string(32000, ']') + "}";
  EXPECT_EQ(parse(nested).kind, ClientMessageKind::bad);
}

TEST(Protocol, APatchNamesItsBaseAndTheActionThatItAnswers) {
  const json message = json::parse(patchMessage(12, json::array(), 3));
  EXPECT_EQ(message, json({{"type", "patch"},
                           {"revision", 12},
                           {"base", 11},
                           {"patch", json::array()},
                           {"ack", 3}}));
  EXPECT_FALSE(json::parse(patchMessage(12, json::array(), std::nullopt)).contains("ack"));
}

TEST(Protocol, WritesTheOtherMessages) {
  EXPECT_EQ(json::parse(treeMessage(2, {{"root", "1"}}, std::nullopt)),
            json({{"type", "tree"}, {"revision", 2}, {"tree", {{"root", "1"}}}}));
  EXPECT_EQ(json::parse(refusedMessage(4, "no")),
            json({{"type", "refused"}, {"ack", 4}, {"message", "no"}}));
  EXPECT_EQ(json::parse(announcementMessage("done")),
            json({{"type", "event"}, {"event", "announce"}, {"text", "done"}}));
  EXPECT_EQ(json::parse(homeScreenRestartedMessage()),
            json({{"type", "event"}, {"event", "homeScreenRestarted"}}));
  EXPECT_EQ(json::parse(openURLMessage("https://example.org/")),
            json({{"type", "event"}, {"event", "openURL"}, {"url", "https://example.org/"}}));
  EXPECT_EQ(
      json::parse(transitionMessage("push", 0.35)),
      json({{"type", "event"}, {"event", "transition"}, {"kind", "push"}, {"duration", 0.35}}));
  EXPECT_EQ(json::parse(sideMessage({{"log", json::array()}})),
            json({{"type", "side"}, {"log", json::array()}}));
}

TEST(Protocol, ALoneSurrogateIsShownAsAReplacementCharacter) {
  const std::string text = treeMessage(1, {{"string", "a\xED\xA0\x80z"}}, std::nullopt);
  const json message = json::parse(text);
  const std::string shown = message["tree"]["string"];
  EXPECT_TRUE(shown.starts_with("a\xEF\xBF\xBD"));
  EXPECT_TRUE(shown.ends_with("z"));
}

}  // namespace
}  // namespace settings

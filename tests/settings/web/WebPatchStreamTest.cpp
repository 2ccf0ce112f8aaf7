#include <cstddef>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <random>
#include <string>

#include "settings/web/PatchStream.h"

namespace settings {
namespace {

using nlohmann::json;

json tree(json nodes) {
  return {{"revision", 5}, {"root", "1"}, {"nodes", std::move(nodes)}};
}

TEST(PatchStream, ReplacesOnlyTheMemberThatDiffers) {
  PatchStream stream;
  stream.advance(tree({{"1", {{"kind", "window"}, {"children", {"2"}}}},
                       {"2", {{"kind", "switch"}, {"on", false}, {"children", json::array()}}}}));
  const json patch = stream.advance(
      tree({{"1", {{"kind", "window"}, {"children", {"2"}}}},
            {"2", {{"kind", "switch"}, {"on", true}, {"children", json::array()}}}}));
  const json expected = json::array({{{"op", "replace"}, {"path", "/nodes/2/on"}, {"value", true}},
                                     {{"op", "replace"}, {"path", "/revision"}, {"value", 2}}});
  EXPECT_EQ(patch, expected);
}

TEST(PatchStream, AListIsReplacedAsAWhole) {
  PatchStream stream;
  stream.advance(tree({{"1", {{"children", {"2", "3"}}}}}));
  const json patch = stream.advance(tree({{"1", {{"children", {"2", "4", "3"}}}}}));
  EXPECT_EQ(patch[0]["path"], "/nodes/1/children");
  EXPECT_EQ(patch[0]["value"], json({"2", "4", "3"}));
}

TEST(PatchStream, CountsByItself) {
  PatchStream stream;
  EXPECT_EQ(stream.revision(), 0U);
  stream.advance(tree(json::object()));
  const json patch = stream.advance(tree(json::object()));
  EXPECT_EQ(stream.revision(), 2U);
  // Even if only the revision differs there is a patch, so that each action has an answer.
  EXPECT_EQ(patch, json::array({{{"op", "replace"}, {"path", "/revision"}, {"value", 2}}}));
  EXPECT_EQ(stream.shown()["revision"], 2);
}

TEST(PatchStream, MembersComeAndGo) {
  PatchStream stream;
  stream.advance(tree({{"1", {{"hidden", true}}}}));
  const json patch = stream.advance(tree({{"1", {{"alpha", 0.5}}}, {"2", json::object()}}));
  const json expected =
      json::array({{{"op", "remove"}, {"path", "/nodes/1/hidden"}},
                   {{"op", "add"}, {"path", "/nodes/1/alpha"}, {"value", 0.5}},
                   {{"op", "add"}, {"path", "/nodes/2"}, {"value", json::object()}},
                   {{"op", "replace"}, {"path", "/revision"}, {"value", 2}}});
  EXPECT_EQ(patch, expected);
}

TEST(PatchStream, EscapesNamesInPointers) {
  PatchStream stream;
  stream.advance(tree({{"a/b~c", {{"on", 1}}}}));
  const json patch = stream.advance(tree({{"a/b~c", {{"on", 2}}}}));
  EXPECT_EQ(patch[0]["path"], "/nodes/a~1b~0c/on");
}

json randomNode(std::mt19937& random) {
  json node = {{"kind", random() % 2 == 0 ? "row" : "cell"}, {"children", json::array()}};
  for (std::size_t count = random() % 4; count > 0; --count) {
    node["children"].push_back(std::to_string(random() % 8));
  }
  if (random() % 2 == 0) node["frame"] = {random() % 3, random() % 3, 1.5, 2.5};
  if (random() % 2 == 0) node["text"] = {{"string", std::to_string(random() % 3)}, {"size", 17}};
  if (random() % 4 == 0) node["a/b~"] = random() % 2 == 0;
  return node;
}

TEST(PatchStream, EveryPatchMakesTheShownTreeTheNewOne) {
  std::mt19937 random(20261121);
  PatchStream stream;
  json client = json::object();
  for (int round = 0; round < 300; ++round) {
    json nodes = json::object();
    for (int node = 0; node < 8; ++node) {
      if (random() % 3 != 0) nodes[std::to_string(node)] = randomNode(random);
    }
    json wanted = tree(nodes);
    if (random() % 2 == 0) wanted["device"] = {{"tint", random() % 3}, {"screen", {{"width", 3}}}};
    client = client.patch(stream.advance(wanted));
    wanted["revision"] = stream.revision();
    ASSERT_EQ(client, wanted) << "round " << round;
    ASSERT_EQ(stream.shown(), wanted) << "round " << round;
  }
}

}  // namespace
}  // namespace settings

// Link rows in the application: it asks before it opens an address, and shows rows with any
// property values.

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "settings/application/Application.h"
#include "settings/application/ApplicationObserver.h"
#include "settings/device/DeviceTree.h"
#include "settings/scripting/TreeQuery.h"
#include "tests/settings/web/TemporaryPage.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// An entry of a property list in XML.
std::string textEntry(const std::string& key, const std::string& value) {
  return "<key>" + key + "</key>" + value;
}
std::string text(const std::string& key, const std::string& value) {
  return textEntry(key, "<string>" + value + "</string>");
}
std::string linkRow(const std::string& id, const std::string& more) {
  return "<dict>" + text("cell", "PSLinkCell") + text("id", id) + text("label", "Row " + id) +
         text("cellClass", "HBLinkTableCell") + more + "</dict>";
}

class LinkRows : public testing::Test, private ApplicationObserver {
 protected:
  static void SetUpTestSuite() {
    device = new TemporaryFolder;
    const DeviceTreeResult made = DeviceTree::create(device->in("device"));
    ASSERT_TRUE(made) << made.problem;
  }
  static void TearDownTestSuite() {
    delete device;
    device = nullptr;
  }
  ~LinkRows() override {
    if (application) application->removeObserver(this);
  }

  // Opens a root page with these rows.
  void openRows(const std::string& rows) {
    ApplicationOptions options;
    options.deviceRoot = device->in("device");
    ApplicationResult made = Application::create(options);
    ASSERT_TRUE(made.application) << made.error;
    application = std::move(made.application);
    application->addObserver(this);
    const auto error = application->device().writeAtomically(
        options.bundlePath + "/Root.plist",
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" +
            textEntry("items", "<array>" + rows + "</array>") + "</dict></plist>\n");
    ASSERT_FALSE(error) << error.message;
    application->open();
  }
  TreeQuery query() { return TreeQuery(application->tree()); }
  FoundNode row(const std::string& id) {
    return query().row({RowAddress::By::identifier, id, 1, 0, 0});
  }
  ActionResult tap(const std::string& id) {
    return application->perform({{"action", "tap"}, {"node", row(id).id}});
  }
  // What is presented over the page; an empty object if there is nothing.
  json presented() {
    const FoundNode found = query().presented();
    return found ? *found.node : json::object();
  }
  void choose(int index) {
    const std::string node = query().presented().id;
    EXPECT_TRUE(application->perform({{"action", "choose"}, {"node", node}, {"index", index}}));
  }
  std::vector<std::string> messages() {
    std::uint64_t cursor = 0;
    std::vector<std::string> result;
    for (const auto& each : application->logEntriesSince(cursor)) result.push_back(each.message);
    return result;
  }

  std::unique_ptr<Application> application;
  std::vector<std::string> opened;
  static inline TemporaryFolder* device = nullptr;

 private:
  void openedURL(const std::string& url) override { opened.push_back(url); }
};

// --- Opening ---

TEST_F(LinkRows, ATapAsksBeforeItLeavesTheDevice) {
  openRows(linkRow("a", text("url", "https://example.org/page?q=1")));
  EXPECT_EQ((*row("a").node)["selectable"], true);
  EXPECT_TRUE(tap("a"));
  const json alert = presented();
  EXPECT_EQ(alert["kind"], "alert");
  EXPECT_EQ(alert["style"], "alert");
  EXPECT_EQ(alert["title"], "Open “example.org”?");
  EXPECT_EQ(alert["message"], "This leaves Settings for\nhttps://example.org/page?q=1");
  EXPECT_EQ(alert["actions"], json::array({{{"title", "Open"}, {"style", "default"}},
                                           {{"title", "Cancel"}, {"style", "cancel"}}}));
  EXPECT_THAT(opened, IsEmpty());
  choose(0);
  EXPECT_THAT(opened, ElementsAre("https://example.org/page?q=1"));
  EXPECT_TRUE(presented().empty());
  EXPECT_THAT(messages(),
              ::testing::Contains("[Preferences] opening https://example.org/page?q=1"));
}

TEST_F(LinkRows, CancelStays) {
  openRows(linkRow("a", text("url", "https://example.org/")));
  EXPECT_TRUE(tap("a"));
  choose(1);
  EXPECT_THAT(opened, IsEmpty());
  EXPECT_TRUE(presented().empty());
}

TEST_F(LinkRows, AProfileOpensByTheAddressThatItsCellWrote) {
  openRows("<dict>" + text("cell", "PSLinkCell") + text("id", "a") + text("label", "hollowmere") +
           text("cellClass", "HBTwitterCell") + text("user", "hollowmere") + "</dict>");
  EXPECT_TRUE(tap("a"));
  EXPECT_EQ(presented()["title"], "Open “twitter.com”?");
  choose(0);
  EXPECT_THAT(opened, ElementsAre("https://twitter.com/hollowmere"));
}

TEST_F(LinkRows, TheRealHostIsShown) {
  openRows(linkRow("a", text("url", "https://example.org@other.example/")) +
           linkRow("b", text("url", "http://exa%0Ample.org/")) +
           linkRow("c", text("url", "HTTPS://EXAMPLE.ORG:8443/")));
  EXPECT_TRUE(tap("a"));
  EXPECT_EQ(presented()["title"], "Open “other.example”?");
  choose(1);
  EXPECT_TRUE(tap("b"));
  EXPECT_EQ(presented()["title"], "Open “exa%0Ample.org”?");
  choose(1);
  EXPECT_TRUE(tap("c"));
  EXPECT_EQ(presented()["title"], "Open “EXAMPLE.ORG”?");
}

TEST_F(LinkRows, OnlyWebPagesCanBeOpened) {
  const std::vector<std::string> addresses = {
      "javascript:alert(1)", "file:///etc/passwd", "ftp://example.org/", "data:text/html,x",
      "/relative",           "https:///nohost",    "http:example.org",   ""};
  std::string rows;
  for (std::size_t i = 0; i < addresses.size(); ++i) {
    rows += linkRow(std::to_string(i), text("url", addresses[i]));
  }
  openRows(rows);
  for (std::size_t i = 0; i < addresses.size(); ++i) {
    EXPECT_TRUE(tap(std::to_string(i))) << addresses[i];
    const json alert = presented();
    EXPECT_EQ(alert["title"], "This link cannot be opened") << addresses[i];
    EXPECT_EQ(alert["message"], "It is not a web address:\n" + addresses[i]);
    EXPECT_EQ(alert["actions"], json::array({{{"title", "OK"}, {"style", "cancel"}}}));
    choose(0);
  }
  EXPECT_THAT(opened, IsEmpty());
}

TEST_F(LinkRows, ALongAddressIsShownShortAndOpenedWhole) {
  const std::string address = "https://example.org/" + std::string(100'000, 'a');
  openRows(linkRow("a", text("url", address) + text("iconURL", address)));
  EXPECT_TRUE(tap("a"));
  const std::string message = presented()["message"];
  EXPECT_LT(message.size(), 400U);
  EXPECT_TRUE(message.ends_with("aaa…"));
  choose(0);
  EXPECT_THAT(opened, ElementsAre(address));
}

TEST_F(LinkRows, AnAddressThatDoesNotParseIsToldInItsRow) {
  openRows(linkRow("a", text("url", "not a url")) + linkRow("b", ""));
  EXPECT_TRUE(tap("a"));
  EXPECT_TRUE(presented().empty());
  EXPECT_EQ((*row("a").node)["problem"],
            "Root.plist, row 1 (\"Row a\"): \"url\" is not an address");
  EXPECT_FALSE(tap("b")) << "a link row without an address";
}

TEST_F(LinkRows, AnAddressIsOpenedOnPhoneAndTabletAlike) {
  openRows(linkRow("a", text("url", "https://example.org/")));
  application->setTrait("idiom", "pad");
  application->open();
  EXPECT_TRUE(tap("a"));
  EXPECT_EQ(presented()["style"], "alert");
}

// --- Showing ---

TEST_F(LinkRows, TheTileLiesOverThePictureOfTheCell) {
  openRows(linkRow("a", text("initials", "hm") + text("subtitle", "below")) + linkRow("b", ""));
  const FoundNode cell = query().firstOfKind(row("a"), {"cell"});
  EXPECT_EQ((*cell.node)["style"], "subtitle");
  EXPECT_EQ((*cell.node)["detail"]["string"], "below");
  EXPECT_EQ((*cell.node)["accessory"], "none") << "the symbol stands in its place";
  const FoundNode content = query().children(cell).at(0);
  ASSERT_EQ(query().children(content).size(), 1U);
  const FoundNode picture = query().children(content)[0];
  EXPECT_EQ((*picture.node)["role"], "imageView");
  EXPECT_EQ((*picture.node)["kind"], "image");
  const FoundNode tile = query().children(picture).at(0);
  EXPECT_EQ((*tile.node)["frame"], json::array({0.0, 0.0, 29.0, 29.0}));
  EXPECT_TRUE((*tile.node)["layer"].contains("mask"));
  EXPECT_EQ((*query().children(tile).at(0).node)["string"], "hm");
  const FoundNode plain = query().children(query().firstOfKind(row("b"), {"cell"})).at(0);
  EXPECT_THAT(query().children(plain), IsEmpty()) << "nothing lies over the picture";
}

TEST_F(LinkRows, TheSymbolBehindTheRowIsTinted) {
  openRows(linkRow("a", ""));
  const FoundNode cell = query().firstOfKind(row("a"), {"cell"});
  const FoundNode accessory = query().children(cell).back();
  EXPECT_EQ((*accessory.node)["role"], "accessoryView");
  EXPECT_EQ((*accessory.node)["image"], json({{"symbol", "safari"}}));
  EXPECT_EQ((*accessory.node)["tint"], json({{"name", "systemGray3Color"}}));
}

TEST_F(LinkRows, TitlesFollowTheTintOfTheDevice) {
  openRows(linkRow("a", "") + linkRow("b", ""));
  application->setTrait("tint", "FF0000FF");
  for (const char* id : {"a", "b"}) {
    const FoundNode cell = query().firstOfKind(row(id), {"cell"});
    const json red = {{"rgba", json::array({1.0, 0.0, 0.0, 1.0})}};
    EXPECT_EQ((*cell.node)["text"]["color"], red);
    EXPECT_EQ((*cell.node)["text"]["highlightedColor"], red);
  }
}

TEST_F(LinkRows, ARadiusThatIsNoLengthIsShownAsNone) {
  openRows(linkRow("a", text("initials", "x") + textEntry("iconCornerRadius", "<real>nan</real>")) +
           linkRow("b", text("initials", "x") + textEntry("iconCornerRadius", "<real>inf</real>")));
  for (const char* id : {"a", "b"}) {
    const FoundNode picture =
        query().children(query().children(query().firstOfKind(row(id), {"cell"})).at(0)).at(0);
    EXPECT_FALSE(query().children(picture).at(0).node->contains("layer")) << id;
  }
  const auto revision = application->revision();
  EXPECT_TRUE(application->runAtEdge("nothing", [] {}));
  application->setTrait("appearance", "light");
  EXPECT_EQ(application->revision(), revision) << "an equal tree keeps its revision";
}

TEST_F(LinkRows, NoValueOfAnyKindKeepsAPageFromOpening) {
  const std::vector<std::string> values = {"<array><integer>1</integer></array>",
                                           "<dict/>",
                                           "<data>AAAA</data>",
                                           "<date>2026-01-02T03:04:05Z</date>",
                                           "<integer>-7</integer>",
                                           "<real>nan</real>",
                                           "<true/>",
                                           "<false/>",
                                           "<string></string>",
                                           "<string>some text</string>"};
  std::string rows;
  int count = 0;
  for (const char* key : {"big", "iconURL", "subtitle", "initials", "iconCircular",
                          "iconCornerRadius", "showIcon", "showAvatar", "iconImage", "url"}) {
    for (const std::string& value : values) {
      rows += linkRow(std::to_string(count++), textEntry(key, value));
    }
  }
  openRows(rows);
  EXPECT_FALSE(application->crash());
  for (int i = 0; i < count; ++i) {
    const std::string node = row(std::to_string(i)).id;
    ASSERT_TRUE(application->reveal(node)) << i;
    application->perform({{"action", "tap"}, {"node", node}});
    if (!presented().empty()) choose(static_cast<int>(presented()["actions"].size()) - 1);
  }
  application->runBackground(std::nullopt);
  EXPECT_FALSE(application->crash());
  EXPECT_THAT(opened, IsEmpty());
}

TEST_F(LinkRows, AProfileWithAnIDAloneIsACrashThatOneCanGoOnFrom) {
  openRows("<dict>" + text("cell", "PSLinkCell") + text("id", "bad") + text("label", "Bad") +
           text("cellClass", "HBTwitterCell") + text("userID", "42") + "</dict>" +
           linkRow("good", text("url", "https://example.org/")));
  ASSERT_TRUE(application->crash());
  EXPECT_EQ(application->crash()->name, "NSInvalidArgumentException");
  const std::string crash = query().presented().id;
  EXPECT_TRUE(application->perform({{"action", "continue"}, {"node", crash}}));
  EXPECT_FALSE(application->crash());
  EXPECT_THAT((*row("bad").node)["problem"].get<std::string>(), HasSubstr("nil argument"));
  EXPECT_TRUE(tap("good"));
}

TEST_F(LinkRows, AProfileWithoutNameAndIDFailsItsAssertion) {
  openRows("<dict>" + text("cell", "PSLinkCell") + text("label", "Bad") +
           text("cellClass", "HBTwitterCell") + "</dict>");
  ASSERT_TRUE(application->crash());
  EXPECT_EQ(application->crash()->name, "NSInternalInconsistencyException");
  EXPECT_EQ(application->crash()->reason,
            "Invalid parameter not satisfying: username != nil || userID != nil");
}

}  // namespace
}  // namespace settings::test

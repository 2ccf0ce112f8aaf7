// The two pages whose tables are always in editing mode, in the application and as presenters see
// them.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/application/ApplicationObserver.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/TreeContents.h"
#include "settings/device/TreeWriter.h"
#include "settings/scripting/TreeQuery.h"
#include "settings/web/PagePublisher.h"
#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;
using platform::Dictionary;
using testing::ElementsAre;
using testing::IsEmpty;

// The application on a device with installed modules.
class ModulePages : public ApplicationTest, private ApplicationObserver {
 protected:
  ModulePages() {
    TreeWriter writer(root());
    addSample(writer);
    EXPECT_EQ(writer.problem(), "");
    application().addObserver(this);
  }
  ~ModulePages() override { application().removeObserver(this); }

  void putModule(const std::string& name, const std::string& identifier,
                 const std::string& displayName) {
    const platform::PropertyListText info = platform::writeXmlPropertyList(
        Dictionary{{"CFBundleIdentifier", identifier}, {"CFBundleDisplayName", displayName}});
    EXPECT_FALSE(application().device().createDirectory(folderOf(name)));
    put(folderOf(name) + "/Info.plist", info.bytes);
  }
  static std::string folderOf(const std::string& name) {
    return std::string(addedModulesPath) + "/" + name + ".bundle";
  }

  void scrollToEnd() {
    scrollTo(TreeQuery(application().tree()).table().node->at("contentHeight"));
  }
  // The hash of the icon in a row's cell.
  std::string iconOf(const std::string& identifier) {
    const json cell = node(row(identifier)["children"][0]);
    return cell["image"]["hash"];
  }
  void openPage(const std::string& row) {
    open();
    ASSERT_TRUE(tap(row).accepted);
  }
  ActionResult move(const std::string& row, int section, int index) {
    return act({{"action", "move"}, {"section", section}, {"index", index}}, rowNode(row));
  }
  ActionResult commit(const std::string& row) { return act({{"action", "commit"}}, rowNode(row)); }
  bool hasRow(const std::string& identifier) {
    return static_cast<bool>(
        TreeQuery(application().tree()).row({RowAddress::By::identifier, identifier, 1, 0, 0}));
  }
  std::vector<std::string> namesIn(std::size_t section) {
    const TreeQuery query(application().tree());
    std::vector<std::string> names;
    for (const FoundNode& each : query.children(query.sections().at(section))) {
      names.push_back(TreeQuery::text(*each.node, "identifier"));
    }
    return names;
  }
  std::vector<std::string> takeAnnouncements() { return std::exchange(_announcements, {}); }

  static constexpr const char* alarm = "com.apple.mobiletimer.controlcenter.alarm";
  static constexpr const char* camera = "com.apple.control-center.CameraModule";
  static constexpr const char* brightness = "com.hollowmere.ZentrovaModule.DisplaySliderModule";
  static constexpr const char* power = "com.hollowmere.ZentrovaModule.PowerModule";
  static constexpr const char* pinned =
      "com.hollowmere.ZentrovaModule.ConnectivityModule,"
      "com.hollowmere.ZentrovaModule.GroupedTogglesModule";

 private:
  void announced(const std::string& text) override { _announcements.push_back(text); }

  std::vector<std::string> _announcements;
};

TEST_F(ModulePages, RefusedEditPutsTheRowBackAndIsAnnounced) {
  openPage("arrangeModules");
  const auto enabled = namesIn(0);
  const json before = row(pinned);
  EXPECT_TRUE(move(pinned, 1, 0).accepted);
  EXPECT_TRUE(commit(pinned).accepted);
  EXPECT_TRUE(move(power, 1, 0).accepted);
  EXPECT_EQ(namesIn(0), enabled);
  EXPECT_THAT(namesIn(1), ElementsAre(power));
  EXPECT_EQ(row(pinned), before) << "with the cell that it had";
  EXPECT_THAT(takeAnnouncements(), ElementsAre("Connectivity & favorites modules stays where it is",
                                               "Connectivity & favorites modules stays where it is",
                                               "Power module stays where it is"));
}

TEST_F(ModulePages, FifthFavouriteLeavesTheTreeAsItWasAndIsAnnounced) {
  openPage("favoriteModules");
  const json before = application().tree();
  EXPECT_TRUE(commit(alarm).accepted);
  EXPECT_TRUE(move(alarm, 0, 2).accepted);
  EXPECT_TRUE(move(alarm, 1, 7).accepted);
  EXPECT_EQ(application().tree(), before);
  EXPECT_EQ(takeAnnouncements(), std::vector<std::string>(3, "Alarm stays where it is"));
}

TEST_F(ModulePages, AcceptedEditIsAnnouncedWithItsPlace) {
  openPage("arrangeModules");
  EXPECT_TRUE(move(brightness, 0, 3).accepted);
  EXPECT_TRUE(commit(power).accepted);
  EXPECT_TRUE(commit(brightness).accepted);
  EXPECT_THAT(takeAnnouncements(), ElementsAre("Brightness is now 4 of 4 in Enabled modules",
                                               "Power module is now 5 of 5 in Enabled modules",
                                               "Brightness is now 1 of 1 in Disabled modules"));
}

// A presenter animates the row to the place where the page wants it.
TEST_F(ModulePages, RowKeepsItsIdentityFromSectionToSection) {
  openPage("favoriteModules");
  const std::string node = rowNode(camera);
  EXPECT_TRUE(act({{"action", "commit"}}, node).accepted);
  EXPECT_EQ(rowNode(camera), node);
  EXPECT_TRUE(move(camera, 0, 0).accepted);
  EXPECT_EQ(rowNode(camera), node);
  EXPECT_EQ(namesIn(0).front(), camera);
}

// When a row is dragged far away, a screen reader still announces its name.
TEST_F(ModulePages, RowThatWasSeenKeepsItsNameOutOfSight) {
  openPage("favoriteModules");
  EXPECT_EQ(row(camera)["title"], "Camera");
  scrollToEnd();
  ASSERT_EQ(row(camera)["visible"], false);
  EXPECT_EQ(row(camera)["title"], "Camera");
  EXPECT_TRUE(move(camera, 0, 0));
  ASSERT_EQ(row(camera)["visible"], false);
  EXPECT_THAT(takeAnnouncements(),
              ElementsAre("Camera is now 1 of 4 in Active modules (min 3, max 4)"));
}

// A presenter fetches an image after it has read its hash, and the user scrolls in the meantime.
TEST_F(ModulePages, IconThatHasJustGoneOutOfSightCanStillBeAskedFor) {
  openPage("favoriteModules");
  const std::string icon = iconOf(camera);
  const auto bytes = application().imageBytes(icon);
  ASSERT_TRUE(bytes);
  scrollToEnd();
  ASSERT_EQ(row(camera)["visible"], false);
  EXPECT_EQ(application().imageBytes(icon), bytes);
}

TEST_F(ModulePages, RowOfAModuleThatIsGoneIsAnnouncedAsRemoved) {
  openPage("favoriteModules");
  EXPECT_FALSE(
      application().device().remove(std::string(systemModulesPath) + "/CameraModule.bundle"));
  EXPECT_TRUE(commit(camera).accepted);
  EXPECT_FALSE(hasRow(camera));
  EXPECT_THAT(takeAnnouncements(), ElementsAre("Camera was removed"));
}

TEST_F(ModulePages, PlaceThatIsNotThereIsRefusedAndNothingIsSaid) {
  openPage("arrangeModules");
  const json before = application().tree();
  for (const auto& [section, index] :
       std::vector<std::pair<int, int>>{{0, 4}, {1, 2}, {2, 0}, {-1, 0}, {0, -1}}) {
    EXPECT_FALSE(move(brightness, section, index).accepted) << section << " " << index;
  }
  EXPECT_EQ(application().tree(), before);
  EXPECT_THAT(takeAnnouncements(), IsEmpty());
  std::uint64_t cursor = 0;
  EXPECT_THAT(application().writesSince(cursor), IsEmpty());
}

TEST_F(ModulePages, OnlyRowsInSightHaveCells) {
  for (int number = 0; number < 1000; ++number) {
    const std::string text = std::to_string(number);
    putModule("Module" + text, "org.example." + text, "Module " + text);
  }
  openPage("favoriteModules");
  std::size_t cells = 0;
  for (const auto& [key, node] : application().tree()["nodes"].items()) {
    if (node["kind"] == "cell") ++cells;
  }
  EXPECT_GT(cells, 10U);
  EXPECT_LT(cells, 40U);
  EXPECT_GT(namesIn(1).size(), 1000U);
  // Rows that come into sight have one, and can be dragged across the whole table.
  EXPECT_TRUE(commit(camera).accepted);
  const std::string last = namesIn(1).back();
  ASSERT_TRUE(application().reveal(rowNode(last)).accepted);
  EXPECT_TRUE(row(last)["visible"]);
  EXPECT_TRUE(move(last, 0, 0).accepted);
  EXPECT_EQ(namesIn(0).front(), last);
}

TEST_F(ModulePages, LongNamesAndFilesThatAreNoIconsLeaveThePageUsable) {
  const std::string name(10000, 'n');
  putModule("AAA", "org.example.long", name);
  putModule("AAB", "org.example.rtl", "\u202Eשלום");
  put(folderOf("AAB") + "/icon.png", "no picture");
  putModule("AAC", "org.example.damaged", "Damaged");
  put(folderOf("AAC") + "/Info.plist", "damaged");
  openPage("favoriteModules");
  ASSERT_TRUE(application().reveal(rowNode("org.example.long")).accepted);
  EXPECT_EQ(row("org.example.long")["title"], name);
  ASSERT_TRUE(application().reveal(rowNode("org.example.rtl")).accepted);
  EXPECT_EQ(row("org.example.rtl")["title"], "\u202Eשלום");
  EXPECT_TRUE(commit(camera).accepted);
  EXPECT_TRUE(move("org.example.long", 0, 0).accepted);
  EXPECT_EQ(namesIn(0).front(), "org.example.long");
}

TEST_F(ModulePages, SamePageComesBackOnTheNextVisit) {
  openPage("arrangeModules");
  const std::string page = TreeQuery(application().tree()).page().id;
  ASSERT_TRUE(
      act({{"action", "back"}}, TreeQuery(application().tree()).outerNavigation().id).accepted);
  ASSERT_TRUE(tap("arrangeModules").accepted);
  EXPECT_EQ(TreeQuery(application().tree()).page().id, page);
}

// The patches that browser pages would receive.
class Sink : public PageSink {
 public:
  void send(ConnectionId /*connection*/, OutgoingMessage message) override {
    json parsed = json::parse(*message.text);
    if (parsed["type"] != "side") messages.push_back(std::move(parsed));
  }
  void handled(ConnectionId /*connection*/) override {}
  void answerImage(RequestId /*request*/, std::shared_ptr<const std::string> /*image*/) override {}
  void answerPhoto(RequestId /*request*/, unsigned /*status*/, std::string /*told*/) override {}
  std::vector<json> messages;
};

TEST_F(ModulePages, RefusedMoveIsAnnouncedAndThenAnsweredByAPatchThatChangesNothing) {
  openPage("favoriteModules");
  Sink sink;
  PagePublisher publisher(application(), sink);
  publisher.opened(1);
  sink.messages.clear();
  const json action{{"type", "action"},       {"sequence", 5}, {"action", "move"},
                    {"node", rowNode(alarm)}, {"section", 0},  {"index", 0}};
  publisher.received(1, action.dump());
  ASSERT_EQ(sink.messages.size(), 2U);
  EXPECT_EQ(sink.messages[0]["event"], "announce");
  EXPECT_EQ(sink.messages[0]["text"], "Alarm stays where it is");
  EXPECT_EQ(sink.messages[1]["type"], "patch");
  EXPECT_EQ(sink.messages[1]["ack"], 5);
  ASSERT_EQ(sink.messages[1]["patch"].size(), 1U);
  EXPECT_EQ(sink.messages[1]["patch"][0]["path"], "/revision");
}

}  // namespace
}  // namespace settings::test

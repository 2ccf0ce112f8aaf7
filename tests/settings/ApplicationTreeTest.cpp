// The view tree as docs/tree.md describes it, of the pages as the bundle has them.

#include <algorithm>
#include <cstdint>
#include <gmock/gmock.h>
#include <map>
#include <set>

#include "platform/foundation/Process.h"
#include "platform/uikit/UIImage.h"
#include "platform/uikit/UIImageView.h"
#include "settings/application/SettingsProcess.h"
#include "tests/settings/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

enum class Need { always, sometimes };

struct Member {
  json::value_t type;
  Need need = Need::always;
};

using Members = std::map<std::string, Member>;

constexpr auto textType = json::value_t::string;
constexpr auto number = json::value_t::number_float;
constexpr auto whole = json::value_t::number_integer;
constexpr auto flag = json::value_t::boolean;
constexpr auto list = json::value_t::array;
constexpr auto map = json::value_t::object;

// What is left out where it has its default value.
const Members anyView = {
    {"kind", {textType}},
    {"children", {list}},
    {"class", {textType, Need::sometimes}},
    {"frame", {list, Need::sometimes}},
    {"alpha", {number, Need::sometimes}},
    {"hidden", {flag, Need::sometimes}},
    {"interactive", {flag, Need::sometimes}},
    {"background", {map, Need::sometimes}},
    {"tint", {map, Need::sometimes}},
    {"layer", {map, Need::sometimes}},
    {"label", {textType, Need::sometimes}},
    {"animation", {map, Need::sometimes}},
    {"role", {textType, Need::sometimes}},
};

const std::map<std::string, Members>& kinds() {
  static const std::map<std::string, Members> table = {
      {"window", {}},
      {"navigation", {{"bar", {map}}, {"class", {textType}}, {"frame", {list}}}},
      {"page",
       {{"title", {textType}}, {"largeTitle", {flag}}, {"problem", {map, Need::sometimes}}}},
      {"table",
       {{"style", {textType}},
        {"editing", {flag}},
        {"offset", {number}},
        {"contentHeight", {number}}}},
      {"section",
       {{"index", {whole}},
        {"rowsTop", {number, Need::sometimes}},
        {"header", {textType, Need::sometimes}},
        {"footer", {textType, Need::sometimes}},
        {"identifier", {textType, Need::sometimes}}}},
      {"row",
       {{"section", {whole}},
        {"index", {whole}},
        {"height", {number}},
        {"identifier", {textType, Need::sometimes}},
        {"title", {textType}},
        {"visible", {flag}},
        {"selectable", {flag}},
        {"editing", {map, Need::sometimes}},
        {"problem", {textType, Need::sometimes}}}},
      {"cell",
       {{"style", {textType}},
        {"text", {map, Need::sometimes}},
        {"detail", {map, Need::sometimes}},
        {"image", {map, Need::sometimes}},
        {"accessory", {textType}},
        {"selected", {flag, Need::sometimes}},
        {"enabled", {flag, Need::sometimes}},
        {"cellType", {textType, Need::sometimes}}}},
      {"switch", {{"on", {flag}}, {"enabled", {flag}}}},
      {"segmented", {{"segments", {list}}, {"selected", {whole}}, {"enabled", {flag}}}},
      {"slider",
       {{"value", {number}},
        {"min", {number}},
        {"max", {number}},
        {"continuous", {flag}},
        {"showValue", {flag}},
        {"segmentCount", {whole}},
        {"enabled", {flag}}}},
      {"textField",
       {{"string", {textType}},
        {"placeholder", {textType}},
        {"secure", {flag}},
        {"keyboard", {textType}},
        {"editing", {flag}},
        {"enabled", {flag}}}},
      {"label",
       {{"string", {textType}},
        {"color", {map}},
        {"size", {number}},
        {"weight", {textType}},
        {"lines", {whole}},
        {"alignment", {textType}}}},
      {"image", {{"image", {map, Need::sometimes}}, {"contentMode", {textType}}}},
      {"button", {{"string", {textType}}, {"destructive", {flag}}, {"enabled", {flag}}}},
      {"activity", {{"animating", {flag}}}},
      {"view", {}},
  };
  return table;
}

bool hasType(const json& value, json::value_t type) {
  if (type == number) return value.is_number();
  if (type == whole) return value.is_number_integer();
  return value.type() == type;
}

void expectMembers(const json& node, const Members& members) {
  for (const auto& [name, member] : members) {
    const auto found = node.find(name);
    if (found == node.end()) {
      EXPECT_EQ(member.need, Need::sometimes) << "no \"" << name << "\" in " << node;
    } else {
      EXPECT_TRUE(hasType(*found, member.type)) << "\"" << name << "\" of " << node;
    }
  }
}

// What has its default value is not there.
void expectNoDefaults(const json& node) {
  EXPECT_NE(node.value("alpha", 0.5), 1.0) << node;
  EXPECT_TRUE(node.value("hidden", true)) << node;
  EXPECT_FALSE(node.value("interactive", false)) << node;
  const bool isEnabledCell = node["kind"] == "cell" && node.value("enabled", false);
  EXPECT_FALSE(isEnabledCell) << node;
}

class ApplicationTreeTest : public ApplicationTest {
 protected:
  // Every node is of a documented kind with its members, and stands once below the root.
  static void expectSoundTree(const json& tree) {
    std::set<std::string> seen;
    expectSoundNode(tree, tree["root"], seen);
    EXPECT_EQ(seen.size(), tree["nodes"].size());
  }
  void scrollTo(double offset) {
    const std::string table = TreeQuery(application().tree()).table().id;
    ASSERT_TRUE(act({{"action", "scroll"}, {"offset", offset}}, table).accepted);
  }
  std::map<std::string, std::string> identitiesOfRows() {
    std::map<std::string, std::string> identities;
    const TreeQuery query(application().tree());
    for (const FoundNode& row : query.rows()) {
      identities[row.node->value("identifier", "")] = row.id;
    }
    return identities;
  }
  void chooseStyle(int index) {
    const std::string control = controlNode("presentationStyle");
    ASSERT_TRUE(act({{"action", "segment"}, {"index", index}}, control).accepted);
  }

 private:
  static void expectSoundNode(const json& tree, const std::string& id,
                              std::set<std::string>& seen) {
    EXPECT_TRUE(seen.insert(id).second) << id << " stands twice in the tree";
    ASSERT_TRUE(tree["nodes"].contains(id)) << id;
    const json& node = tree["nodes"][id];
    expectMembers(node, anyView);
    ASSERT_TRUE(kinds().contains(node["kind"])) << node["kind"];
    expectMembers(node, kinds().at(node["kind"]));
    expectNoDefaults(node);
    for (const json& child : node["children"]) expectSoundNode(tree, child, seen);
  }
};

TEST_F(ApplicationTreeTest, BeforeAnythingIsOpenThereIsAnEmptyWindow) {
  const json shown = tree();
  EXPECT_FALSE(application().isOpen());
  EXPECT_EQ(shown["nodes"].size(), 1U);
  EXPECT_EQ(shown["nodes"][shown["root"].get<std::string>()]["kind"], "window");
  EXPECT_EQ(shown["revision"], 1);
}

TEST_F(ApplicationTreeTest, TheWholeHasRootNodesRevisionAndTheDevice) {
  options.traits.systemVersion = {15, 4, 0};
  open();
  const json shown = tree();
  EXPECT_EQ(shown["nodes"][shown["root"].get<std::string>()]["kind"], "window");
  EXPECT_EQ(shown["device"],
            (json{{"idiom", "phone"},
                  {"system", "15.4"},
                  {"screen", {{"width", 390.0}, {"height", 844.0}, {"scale", 3.0}}},
                  {"appearance", "light"},
                  {"textScale", 1.0},
                  {"tint", "007AFFFF"},
                  {"neighbours",
                   {{"CCSModuleRepository", true},
                    {"ZVModuleRepository", true},
                    {"CCUISettingsListController", true},
                    {"CCUISettingsModulesController", true}}}}));
}

TEST_F(ApplicationTreeTest, ANeighbourThatIsSwitchedIsThereOrNotFromTheNextOpening) {
  const auto isThere = [this] {
    bool found = false;
    const auto look = [&] {
      found = platform::Process::current().classes().find("CCSModuleRepository") != nullptr;
    };
    EXPECT_TRUE(application().runAtEdge("a look", look));
    return found;
  };
  const auto set = [this](const char* value) {
    return application().perform({{"action", "trait"}, {"name", "neighbour"}, {"value", value}});
  };
  open();
  EXPECT_TRUE(set("CCSModuleRepository off"));
  EXPECT_EQ(tree()["device"]["neighbours"]["CCSModuleRepository"], false);
  EXPECT_EQ(tree()["device"]["neighbours"]["ZVModuleRepository"], true);
  EXPECT_TRUE(isThere()) << "what runs already has it";
  open();
  EXPECT_FALSE(isThere());
  EXPECT_TRUE(set("CCSModuleRepository on"));
  EXPECT_EQ(tree()["device"]["neighbours"]["CCSModuleRepository"], true);
  open();
  EXPECT_TRUE(isThere());
  EXPECT_THAT(set("CCSModuleRepository").message, HasSubstr("on or off"));
  EXPECT_THAT(set("Nobody on").message, HasSubstr("\"Nobody\" is no neighbour"));
}

TEST_F(ApplicationTreeTest, EveryNodeOfTheRootPageHasItsDocumentedMembers) {
  useWholeDevice();
  open();
  expectSoundTree(tree());
  scrollTo(600);
  expectSoundTree(tree());
  EXPECT_TRUE(application().setTrait("idiom", "pad").accepted);
  open();
  expectSoundTree(tree());
}

TEST_F(ApplicationTreeTest, EveryNodeOfEveryCellKindHasItsDocumentedMembers) {
  useRows({{{"cell", "PSGroupCell"}, {"id", "group"}, {"label", "Head"}, {"footerText", "Foot"}},
           {{"cell", "PSLinkCell"},
            {"id", "link"},
            {"label", "Link"},
            {"detail", "PSListItemsController"}},
           {{"cell", "PSLinkListCell"},
            {"id", "choice"},
            {"key", "choice"},
            {"label", "Choice"},
            {"detail", "PSListItemsController"},
            {"validValues", {1, 2}},
            {"validTitles", {"One", "Two"}}},
           {{"cell", "PSTitleValueCell"}, {"id", "value"}, {"label", "Value"}, {"default", "V"}},
           {{"cell", "PSSliderCell"}, {"id", "slider"}, {"key", "s"}, {"showValue", true}},
           {{"cell", "PSSwitchCell"}, {"id", "switch"}, {"key", "w"}, {"label", "Switch"}},
           {{"cell", "PSStaticTextCell"}, {"id", "text"}, {"label", "Text"}},
           {{"cell", "PSEditTextCell"}, {"id", "edit"}, {"key", "e"}, {"label", "Edit"}},
           {{"cell", "PSSecureEditTextCell"}, {"id", "secret"}, {"key", "x"}, {"label", "Secret"}},
           {{"cell", "PSSegmentCell"},
            {"id", "segment"},
            {"key", "g"},
            {"validValues", {1, 2}},
            {"validTitles", {"One", "Two"}}},
           {{"cell", "PSButtonCell"}, {"id", "button"}, {"label", "Button"}, {"enabled", false}}});
  open();
  expectSoundTree(tree());
  std::set<std::string> cellTypes;
  const json nodes = tree()["nodes"];
  for (const json& node : nodes) {
    if (node["kind"] == "cell") cellTypes.insert(node["cellType"]);
  }
  EXPECT_EQ(cellTypes.size(), 10U) << json(cellTypes);  // all but the group
}

TEST_F(ApplicationTreeTest, EveryNodeOfAPageInEditingHasItsDocumentedMembers) {
  useWholeDevice();
  open();
  ASSERT_TRUE(tap("arrangeModules").accepted);
  expectSoundTree(tree());
  const TreeQuery query(application().tree());
  EXPECT_EQ((*query.table().node)["editing"], true);
  for (const FoundNode& row : query.rows()) {
    const json& editing = (*row.node)["editing"];
    EXPECT_TRUE(editing["style"].is_string());
    EXPECT_TRUE(editing["movable"].is_boolean());
  }
}

TEST_F(ApplicationTreeTest, TheBarShowsThePageOnTopAndTheWayBack) {
  useWholeDevice();
  open();
  const auto bar = [this] {
    return (*TreeQuery(application().tree()).outerNavigation().node)["bar"];
  };
  EXPECT_EQ(bar()["title"], "Zentrova");
  EXPECT_EQ(bar()["back"], "Settings");
  EXPECT_EQ(bar()["hidden"], false);
  EXPECT_TRUE(bar()["titleOpacity"].is_number());
  ASSERT_TRUE(tap("arrangeModules").accepted);
  EXPECT_EQ(bar()["title"], page()["title"]);
  EXPECT_EQ(bar()["back"], "Zentrova");

  const std::string navigation = TreeQuery(application().tree()).outerNavigation().id;
  ASSERT_TRUE(act({{"action", "back"}}, navigation));
  ASSERT_TRUE(act({{"action", "back"}}, navigation));
  EXPECT_EQ(bar()["title"], "Settings");
  EXPECT_FALSE(bar().contains("back"));
}

TEST_F(ApplicationTreeTest, ATableThatWatchesForLongPressesSaysSo) {
  useWholeDevice();
  open();
  const auto table = [this] { return *TreeQuery(application().tree()).table().node; };
  EXPECT_FALSE(table().contains("pressable"));
  ASSERT_TRUE(tap("customize").accepted);
  EXPECT_EQ(table()["pressable"], true);
}

TEST_F(ApplicationTreeTest, ASectionTellsWhereItsRowsBegin) {
  useWholeDevice();
  open();
  const json tree = application().tree();
  const TreeQuery query(tree);
  double bottom = 0;
  for (const FoundNode& section : query.sections()) {
    const double top = section.node->at("rowsTop");
    EXPECT_GT(top, bottom) << "rows begin below those before, and a header";
    bottom = top;
    for (const json& row : section.node->at("children")) {
      bottom += tree["nodes"][row.get<std::string>()]["height"].get<double>();
    }
  }
  EXPECT_LE(bottom, query.table().node->at("contentHeight").get<double>());
}

TEST_F(ApplicationTreeTest, RowsBeyondTheBoundsHaveCellsAsFarAsThePresenterSeesThem) {
  useWholeDevice();
  open();
  const auto shown = [this] {
    const TreeQuery query(application().tree());
    const auto rows = query.rows();
    return std::ranges::count_if(rows,
                                 [](const FoundNode& row) { return row.node->at("visible"); });
  };
  const std::string table = TreeQuery(application().tree()).table().id;
  const auto scroll = [&](const json& overscan) {
    EXPECT_TRUE(act({{"action", "scroll"}, {"offset", 0}, {"overscan", overscan}}, table));
  };
  const auto inBounds = shown();
  scroll(200);
  EXPECT_GT(shown(), inBounds);
  scroll(0);
  EXPECT_EQ(shown(), inBounds);
}

TEST_F(ApplicationTreeTest, RowsStandInTheirSectionsWithTheirPlaces) {
  useRows({{{"cell", "PSGroupCell"}, {"label", "First"}},
           {{"cell", "PSButtonCell"}, {"label", "A"}},
           {{"cell", "PSButtonCell"}, {"label", "B"}},
           {{"cell", "PSGroupCell"}, {"id", "second"}, {"footerText", "Foot"}},
           {{"cell", "PSButtonCell"}, {"label", "C"}}});
  open();
  const TreeQuery query(application().tree());
  const auto sections = query.sections();
  ASSERT_EQ(sections.size(), 2U);
  EXPECT_EQ((*sections[0].node)["header"], "First");
  EXPECT_FALSE(sections[0].node->contains("footer"));
  EXPECT_FALSE(sections[1].node->contains("header"));
  EXPECT_EQ((*sections[1].node)["footer"], "Foot");
  EXPECT_EQ((*sections[1].node)["identifier"], "second");
  const json last = *query.rows().back().node;
  EXPECT_EQ(last["section"], 1);
  EXPECT_EQ(last["index"], 0);
  EXPECT_EQ(rowTitles(), (std::vector<std::string>{"A", "B", "C"}));
}

TEST_F(ApplicationTreeTest, ARowIsCalledByItsLabelElseByItsTitle) {
  useRows({{{"cell", "PSButtonCell"}, {"id", "both"}, {"label", "Label"}, {"title", "Title"}},
           {{"cell", "PSButtonCell"}, {"id", "title"}, {"title", "Title"}},
           {{"cell", "PSButtonCell"}, {"id", "none"}}});
  open();
  EXPECT_EQ(row("both")["title"], "Label");
  EXPECT_EQ(row("title")["title"], "Title");
  EXPECT_EQ(row("none")["title"], "");
}

TEST_F(ApplicationTreeTest, OnlyRowsInSightHaveACell) {
  useWholeDevice();
  open();
  const auto expectRightChildren = [this] {
    bool anyHidden = false;
    const TreeQuery query(application().tree());
    for (const FoundNode& row : query.rows()) {
      EXPECT_EQ((*row.node)["children"].size(), (*row.node)["visible"] == true ? 1U : 0U);
      anyHidden = anyHidden || (*row.node)["visible"] == false;
    }
    EXPECT_TRUE(anyHidden);
  };
  expectRightChildren();
  EXPECT_EQ(row("version")["visible"], false);
  EXPECT_TRUE(application().reveal(rowNode("version")).accepted);
  EXPECT_EQ(row("version")["visible"], true);
  EXPECT_EQ(row("enabled")["visible"], false);
  expectRightChildren();
}

TEST_F(ApplicationTreeTest, RowsKeepTheirIdentityWhenOthersAreInsertedAndRemoved) {
  open();
  const auto before = identitiesOfRows();
  const std::string control = controlNode("presentationStyle");
  chooseStyle(1);
  auto inserted = identitiesOfRows();
  EXPECT_EQ(inserted.size(), before.size() + 2);
  for (const auto& [identifier, id] : before) EXPECT_EQ(inserted[identifier], id) << identifier;
  EXPECT_EQ(controlNode("presentationStyle"), control);
  chooseStyle(0);
  EXPECT_EQ(identitiesOfRows(), before);
}

TEST_F(ApplicationTreeTest, AnIdentityIsNeverUsedAgain) {
  open();
  chooseStyle(1);
  const auto first = identitiesOfRows();
  chooseStyle(0);
  chooseStyle(1);
  const auto second = identitiesOfRows();
  EXPECT_NE(second.at("alwaysPresentFromTop"), first.at("alwaysPresentFromTop"));
  const json old = tree()["nodes"];
  EXPECT_TRUE(application().perform({{"action", "reopen"}}).accepted);
  const json fresh = tree()["nodes"];
  for (const auto& [id, node] : fresh.items()) EXPECT_FALSE(old.contains(id)) << node;
}

TEST_F(ApplicationTreeTest, ACellThatComesBackIntoSightKeepsItsIdentity) {
  useWholeDevice();
  open();
  const std::string control = controlNode("enabled");
  scrollTo(900);
  EXPECT_EQ(node(control), json::object());
  scrollTo(0);
  EXPECT_EQ(controlNode("enabled"), control);
}

TEST_F(ApplicationTreeTest, AnImageThatWasDrawnIsFetchedAsPng) {
  open();
  ASSERT_TRUE(application().runAtEdge("a test", [this] {
    platform::ImagePixels pixels{1, 1, {255, 0, 0, 255}};
    const auto view = platform::make<platform::UIImageView>();
    view->setImage(platform::UIImage::imageWithPixels(std::move(pixels), 1));
    application().process()->topPage()->view()->addSubview(view);
  }));
  const json shown = node(page()["children"].back());
  ASSERT_EQ(shown["kind"], "image");
  const auto bytes = application().imageBytes(shown["image"]["hash"].get<std::string>());
  ASSERT_TRUE(bytes);
  EXPECT_EQ(bytes->substr(1, 3), "PNG");
  EXPECT_EQ(application().imageBytes("absent"), std::nullopt);
}

TEST_F(ApplicationTreeTest, TheRevisionCountsTreesThatDiffer) {
  open();
  const std::uint64_t first = application().revision();
  EXPECT_EQ(application().revision(), first);
  EXPECT_EQ(application().advance(1).accepted, true);  // nothing waits, nothing changes
  EXPECT_EQ(application().revision(), first);
  chooseStyle(1);
  EXPECT_EQ(application().revision(), first + 1);
  EXPECT_EQ(tree()["revision"], first + 1);
}

TEST_F(ApplicationTreeTest, ARefusedActionLeavesTheTreeAsItWas) {
  open();
  const json before = tree();
  EXPECT_FALSE(act({{"action", "toggle"}, {"on", true}}, rowNode("respring")).accepted);
  EXPECT_EQ(tree(), before);
}

TEST_F(ApplicationTreeTest, AChangeOfATraitIsInTheTreeAndStaysOverReopen) {
  open();
  EXPECT_TRUE(application().setTrait("appearance", "dark").accepted);
  EXPECT_EQ(tree()["device"]["appearance"], "dark");
  open();
  EXPECT_EQ(tree()["device"]["appearance"], "dark");
}

TEST_F(ApplicationTreeTest, WhatThePresenterCanShowIsTheFrameOfTheWindow) {
  open();
  EXPECT_TRUE(application().perform({{"action", "bounds"}, {"width", 800}, {"height", 600}}));
  const json shown = tree();
  EXPECT_EQ(shown["nodes"][shown["root"].get<std::string>()]["frame"],
            json({0.0, 0.0, 800.0, 600.0}));
  for (const json& width : {json(0), json(-1), json(10001), json("800"), json(nullptr)}) {
    EXPECT_FALSE(application().perform({{"action", "bounds"}, {"width", width}, {"height", 600}}))
        << width;
  }
  EXPECT_EQ(tree(), shown);
}

}  // namespace
}  // namespace settings::test

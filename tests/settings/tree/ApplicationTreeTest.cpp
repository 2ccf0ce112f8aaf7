// The view tree of the bundle's pages.

#include <algorithm>
#include <cstdint>
#include <gmock/gmock.h>
#include <map>

#include "platform/foundation/objects/Process.h"
#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/views/UIImageView.h"
#include "settings/application/SettingsProcess.h"
#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

class ApplicationTreeTest : public ApplicationTest {
 protected:
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
  EXPECT_THAT(set("Nobody on").message, HasSubstr("unknown neighbour: \"Nobody\""));
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
  EXPECT_EQ(application().advance(1).accepted, true);  // nothing is pending, nothing changes
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

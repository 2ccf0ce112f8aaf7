// What users can and cannot do to the pages.

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

#include "settings/application/ApplicationObserver.h"
#include "settings/device/Product.h"
#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// A page with one control of each kind.
class ApplicationHandTest : public ApplicationTest {
 protected:
  ApplicationHandTest() {
    useRows(
        {{{"cell", "PSGroupCell"}, {"id", "group"}},
         {{"cell", "PSSwitchCell"}, {"id", "switch"}, {"key", "switch"}, {"label", "Switch"}},
         {{"cell", "PSSegmentCell"},
          {"id", "segment"},
          {"key", "segment"},
          {"validValues", {10, 20, 30}},
          {"validTitles", {"Ten", "Twenty", "Thirty"}}},
         {{"cell", "PSSliderCell"}, {"id", "slider"}, {"key", "slider"}, {"max", 10.0}},
         {{"cell", "PSSliderCell"}, {"id", "smooth"}, {"key", "smooth"}, {"isContinuous", true}},
         {{"cell", "PSEditTextCell"}, {"id", "edit"}, {"key", "edit"}, {"label", "Edit"}},
         {{"cell", "PSSwitchCell"},
          {"id", "off"},
          {"key", "off"},
          {"label", "Off"},
          {"enabled", false}},
         {{"cell", "PSLinkListCell"},
          {"id", "choice"},
          {"key", "choice"},
          {"label", "Choice"},
          {"detail", "PSListItemsController"},
          {"validValues", {"a", "b"}},
          {"validTitles", {"First", "Second"}}},
         {{"cell", "PSStaticTextCell"}, {"id", "text"}, {"label", "Text"}},
         {{"cell", "PSButtonCell"}, {"id", "button"}, {"label", "B"}, {"action", "respring"}}});
    open();
  }

  ActionResult slide(const json& value, const char* phase) {
    return act({{"action", "slide"}, {"value", value}, {"phase", phase}}, controlNode("slider"));
  }
  ActionResult edit(const char* phase, const json& string = nullptr) {
    return act({{"action", "edit"}, {"phase", phase}, {"string", string}}, controlNode("edit"));
  }
  ActionResult press(const char* phase, const std::string& identifier) {
    return act({{"action", "press"}, {"phase", phase}}, rowNode(identifier));
  }
  bool isStored(const char* key) { return preferenceEntries().contains(key); }
  std::string tableNode() { return TreeQuery(application().tree()).table().id; }
};

// --- Switches ---

TEST_F(ApplicationHandTest, ASwitchIsSetAndItsValueIsInTheFile) {
  EXPECT_TRUE(act({{"action", "toggle"}, {"on", true}}, controlNode("switch")));
  EXPECT_EQ(shownValue("switch"), true);
  EXPECT_EQ(preferenceEntries()["switch"], true);
  EXPECT_TRUE(act({{"action", "toggle"}, {"on", false}}, controlNode("switch")));
  EXPECT_EQ(preferenceEntries()["switch"], false);
}

TEST_F(ApplicationHandTest, ASwitchTakesTrueAndFalseAlone) {
  for (const json& on : {json(nullptr), json(1), json("true"), json::array()}) {
    const ActionResult result = act({{"action", "toggle"}, {"on", on}}, controlNode("switch"));
    EXPECT_THAT(result.message, HasSubstr("true or false")) << on;
  }
  EXPECT_FALSE(isStored("switch"));
}

TEST_F(ApplicationHandTest, ADisabledControlTakesNoTouches) {
  const ActionResult result = act({{"action", "toggle"}, {"on", true}}, controlNode("off"));
  EXPECT_THAT(result.message, HasSubstr("disabled"));
  EXPECT_EQ(shownValue("off"), false);
  EXPECT_FALSE(isStored("off"));
}

// --- Segments ---

TEST_F(ApplicationHandTest, ASegmentStoresItsElementOfTheValidValues) {
  EXPECT_TRUE(act({{"action", "segment"}, {"index", 2}}, controlNode("segment")));
  EXPECT_EQ(preferenceEntries()["segment"], 30);
  EXPECT_EQ(shownValue("segment"), "Thirty");
}

TEST_F(ApplicationHandTest, ASegmentThatIsNotThereIsRefusedWithTheRange) {
  for (const json& index : {json(3), json(-1), json(1.5), json("1"), json(nullptr),
                            json(std::numeric_limits<std::uint64_t>::max())}) {
    const ActionResult result =
        act({{"action", "segment"}, {"index", index}}, controlNode("segment"));
    EXPECT_THAT(result.message, HasSubstr("from 0 to 2")) << index;
  }
  EXPECT_FALSE(isStored("segment"));
}

// --- Sliders ---

TEST_F(ApplicationHandTest, ASliderIsStoredWhenItIsLetGo) {
  EXPECT_TRUE(slide(4, "move"));
  EXPECT_FALSE(isStored("slider"));
  EXPECT_TRUE(slide(7.5, "end"));
  EXPECT_EQ(preferenceEntries()["slider"], 7.5);
  EXPECT_EQ(shownValue("slider"), 7.5);
}

TEST_F(ApplicationHandTest, AContinuousSliderIsStoredWhileItMoves) {
  EXPECT_TRUE(act({{"action", "slide"}, {"value", 0.5}, {"phase", "move"}}, controlNode("smooth")));
  EXPECT_EQ(preferenceEntries()["smooth"], 0.5);
}

TEST_F(ApplicationHandTest, ASliderStaysWithinItsEnds) {
  EXPECT_TRUE(slide(1e300, "end"));
  EXPECT_EQ(preferenceEntries()["slider"], 10.0);
  EXPECT_TRUE(slide(-5, "end"));
  EXPECT_EQ(preferenceEntries()["slider"], 0.0);
}

TEST_F(ApplicationHandTest, ASliderTakesNumbersAndKnownPhases) {
  EXPECT_THAT(slide("5", "end").message, HasSubstr("\"value\" must be a number"));
  EXPECT_THAT(slide(std::nan(""), "end").message, HasSubstr("\"value\" must be a number"));
  EXPECT_THAT(slide(5, "begin").message, HasSubstr("move or end"));
  EXPECT_FALSE(isStored("slider"));
}

// --- Text fields ---

TEST_F(ApplicationHandTest, ATextIsStoredAtTheEndOfEditing) {
  EXPECT_TRUE(edit("begin"));
  EXPECT_EQ(node(controlNode("edit"))["editing"], true);
  EXPECT_TRUE(edit("change", "hello"));
  EXPECT_FALSE(isStored("edit"));
  EXPECT_TRUE(edit("end"));
  EXPECT_EQ(preferenceEntries()["edit"], "hello");
  EXPECT_EQ(node(controlNode("edit"))["editing"], false);
}

TEST_F(ApplicationHandTest, ACancelledEditPutsTheTextBack) {
  EXPECT_TRUE(edit("begin"));
  EXPECT_TRUE(edit("change", "hello"));
  EXPECT_TRUE(edit("cancel"));
  EXPECT_EQ(shownValue("edit"), "");
  EXPECT_FALSE(isStored("edit"));
}

TEST_F(ApplicationHandTest, AnEditNeedsATextAndAKnownPhase) {
  EXPECT_TRUE(edit("begin"));
  EXPECT_THAT(edit("change", 7).message, HasSubstr("must be a text"));
  EXPECT_THAT(edit("shout", "a").message, HasSubstr("begin, change, end or cancel"));
}

// --- Rows ---

TEST_F(ApplicationHandTest, AButtonRowRunsItsAction) {
  EXPECT_TRUE(tap("button"));
  ASSERT_EQ(application().programRecords().size(), 1U);
  EXPECT_EQ(application().programRecords()[0].request.path, "/var/jb/usr/bin/killall");
}

TEST_F(ApplicationHandTest, ARowThatDoesNothingTakesNoTap) {
  EXPECT_EQ(row("text")["selectable"], false);
  EXPECT_THAT(tap("text").message, HasSubstr("takes no tap"));
}

TEST_F(ApplicationHandTest, ARowOutOfSightIsOutOfReachUntilItIsRevealed) {
  ASSERT_TRUE(application().perform({{"action", "bounds"}, {"width", 390}, {"height", 200}}));
  const std::string button = rowNode("button");
  EXPECT_THAT(act({{"action", "tap"}}, button).message, HasSubstr("out of sight"));
  EXPECT_THAT(press("begin", "button").message, HasSubstr("out of sight"));
  EXPECT_TRUE(application().programRecords().empty());
  EXPECT_TRUE(application().reveal(button));
  EXPECT_TRUE(act({{"action", "tap"}}, button));
  EXPECT_EQ(application().programRecords().size(), 1U);
}

TEST_F(ApplicationHandTest, ARowBelowRowsThatTurnOutHigherIsRevealed) {
  std::vector<nlohmann::json> rows(
      60, {{"cell", "PSStaticTextCell"}, {"label", std::string(400, 'x')}});
  rows.push_back(
      {{"cell", "PSButtonCell"}, {"id", "last"}, {"label", "Last"}, {"action", "respring"}});
  useRows(rows);
  application().open();
  EXPECT_TRUE(application().reveal(rowNode("last")));
  EXPECT_TRUE(tap("last"));
}

TEST_F(ApplicationHandTest, RevealingTakesRowsOnly) {
  EXPECT_FALSE(application().reveal(tableNode()));
  EXPECT_THAT(application().reveal("999999").message, HasSubstr("is gone"));
}

TEST_F(ApplicationHandTest, AChoiceIsMadeOnAPageOfItsOwn) {
  EXPECT_TRUE(tap("choice"));
  EXPECT_EQ(rowTitles(), (std::vector<std::string>{"First", "Second"}));
  const TreeQuery query(application().tree());
  EXPECT_TRUE(act({{"action", "tap"}}, query.rows()[1].id));
  EXPECT_EQ(preferenceEntries()["choice"], "b");
}

TEST_F(ApplicationHandTest, BackGoesToThePageBeforeWhileThereIsOne) {
  EXPECT_TRUE(tap("choice"));
  EXPECT_EQ(page()["title"], "Choice");
  const std::string navigation = TreeQuery(application().tree()).outerNavigation().id;
  EXPECT_TRUE(act({{"action", "back"}}, navigation));
  EXPECT_EQ(page()["title"], "Rows");
  EXPECT_TRUE(act({{"action", "back"}}, navigation));
  EXPECT_EQ(page()["title"], "Settings");
  EXPECT_THAT(act({{"action", "back"}}, navigation).message, HasSubstr("no page to go back to"));
}

TEST_F(ApplicationHandTest, ATableIsScrolledNoFurtherThanAScreenBeyondItsEnds) {
  const auto scroll = [this](const json& offset) {
    return act({{"action", "scroll"}, {"offset", offset}}, tableNode());
  };
  const auto offset = [this] { return node(tableNode())["offset"].get<double>(); };
  const double height = node(tableNode())["frame"][3];
  EXPECT_TRUE(scroll(20));
  EXPECT_EQ(offset(), 20);
  EXPECT_TRUE(scroll(-1e9));
  EXPECT_EQ(offset(), -height);
  EXPECT_TRUE(scroll(1e9));
  EXPECT_LE(offset(), node(tableNode())["contentHeight"].get<double>() + height);
  EXPECT_THAT(scroll("20").message, HasSubstr("must be a number"));
}

// --- Presses ---

TEST_F(ApplicationHandTest, APressThatNobodyRecognisesIsATap) {
  EXPECT_TRUE(press("begin", "button"));
  EXPECT_TRUE(application().advance(2));
  EXPECT_TRUE(application().programRecords().empty());
  EXPECT_TRUE(press("end", "button"));
  EXPECT_EQ(application().programRecords().size(), 1U);
}

TEST_F(ApplicationHandTest, ACancelledPressIsNoTap) {
  EXPECT_TRUE(press("begin", "button"));
  EXPECT_TRUE(press("cancel", "button"));
  EXPECT_TRUE(application().programRecords().empty());
  EXPECT_THAT(press("end", "button").message, HasSubstr("no finger is down"));
}

TEST_F(ApplicationHandTest, APressHasThreePhases) {
  EXPECT_THAT(press("end", "button").message, HasSubstr("no finger is down"));
  EXPECT_THAT(press("hold", "button").message, HasSubstr("begin, end or cancel"));
}

TEST_F(ApplicationHandTest, AFingerThatMovesToAnotherRowLetsGoOfTheFirst) {
  EXPECT_TRUE(press("begin", "button"));
  EXPECT_TRUE(press("begin", "text"));
  EXPECT_TRUE(press("end", "text"));
  EXPECT_TRUE(application().programRecords().empty());
}

// --- Editing tables ---

TEST_F(ApplicationHandTest, ARowOfAPageWithoutEditingIsNeitherCommittedNorMoved) {
  EXPECT_THAT(act({{"action", "commit"}}, rowNode("button")).message,
              HasSubstr("no insert or delete control"));
  EXPECT_THAT(act({{"action", "move"}, {"section", 0}, {"index", 0}}, rowNode("button")).message,
              HasSubstr("cannot be moved there"));
}

TEST_F(ApplicationHandTest, AMoveNeedsWholeNumbers) {
  for (const json& index : {json(nullptr), json("0"), json(0.5)}) {
    EXPECT_THAT(
        act({{"action", "move"}, {"section", 0}, {"index", index}}, rowNode("button")).message,
        HasSubstr("whole numbers"));
  }
}

TEST_F(ApplicationHandTest, RowsOfAnEditingTableAreMovedAndDeleted) {
  useWholeDevice();
  dropApplication();
  open();
  ASSERT_TRUE(tap("arrangeModules"));
  const auto rowAt = [this](std::size_t section, std::size_t index) {
    return TreeQuery(application().tree()).row({RowAddress::By::position, "", 1, section, index});
  };
  const FoundNode second = rowAt(0, 1);
  const std::string title = (*second.node)["title"];
  ASSERT_TRUE(act({{"action", "move"}, {"section", 0}, {"index", 2}}, second.id));
  EXPECT_EQ((*rowAt(0, 2).node)["title"], title);
  ASSERT_TRUE(act({{"action", "commit"}}, rowAt(0, 2).id));
  EXPECT_NE((*rowAt(0, 2).node)["title"], title);
  EXPECT_TRUE(preferenceEntries().contains("moduleConfig"));
}

// --- Invalid actions ---

TEST_F(ApplicationHandTest, AnActionOnANodeThatIsGoneIsRefused) {
  const std::string control = controlNode("switch");
  open();
  const ActionResult result = act({{"action", "toggle"}, {"on", true}}, control);
  EXPECT_FALSE(result.accepted);
  EXPECT_EQ(result.message, "the node " + control + " is gone");
  EXPECT_FALSE(isStored("switch"));
}

TEST_F(ApplicationHandTest, AnActionOnAnotherKindOfNodeIsRefusedByName) {
  const std::string text = rowNode("text");
  const std::vector<std::pair<const char*, const char*>> wanted = {
      {"toggle", "(expected switch)"},      {"segment", "(expected segmented control)"},
      {"slide", "(expected slider)"},       {"edit", "(expected text field)"},
      {"scroll", "(expected table)"},       {"back", "(expected navigation)"},
      {"choose", "(expected sheet)"},       {"pick", "(expected colour picker)"},
      {"photo", "(expected photo picker)"}, {"close", "(expected sheet or picker)"}};
  for (const auto& [action, message] : wanted) {
    EXPECT_THAT(act({{"action", action}}, text).message, HasSubstr(message)) << action;
  }
  for (const char* action : {"tap", "press", "commit", "move"}) {
    EXPECT_THAT(act({{"action", action}, {"phase", "begin"}}, tableNode()).message,
                HasSubstr("(expected row"))
        << action;
  }
}

TEST_F(ApplicationHandTest, WhatIsNoActionIsRefused) {
  const json before = tree();
  for (const json& action :
       {json(nullptr), json(7), json("tap"), json::array({1}), json::object(),
        json{{"action", nullptr}}, json{{"action", "explode"}, {"node", "1"}},
        json{{"action", "tap"}}, json{{"action", "tap"}, {"node", 5}},
        json{{"action", "continue"}, {"node", "1"}}, json{{"action", "trait"}},
        json{{"action", "trait"}, {"name", "appearance"}, {"value", "pink"}}}) {
    const ActionResult result = application().perform(action);
    EXPECT_FALSE(result.accepted) << action;
    EXPECT_NE(result.message, "") << action;
  }
  EXPECT_EQ(tree(), before);
}

TEST_F(ApplicationHandTest, BeforeOpenEveryActionIsRefused) {
  dropApplication();
  for (const char* action : {"tap", "toggle", "scroll", "bounds", "close"}) {
    EXPECT_FALSE(
        application().perform({{"action", action}, {"node", "1"}, {"width", 10}, {"height", 10}}))
        << action;
  }
  EXPECT_FALSE(application().advance(1));
  EXPECT_FALSE(application().reveal("1"));
}

TEST_F(ApplicationHandTest, ReopenStartsANewProcessThatReadsTheFileAnew) {
  EXPECT_EQ(shownValue("switch"), false);
  put(productPreferencesPath, propertyList("<dict><key>switch</key><true/></dict>"));
  EXPECT_EQ(shownValue("switch"), false);  // each page reads the file once
  EXPECT_TRUE(application().perform({{"action", "reopen"}}));
  EXPECT_EQ(shownValue("switch"), true);
}

TEST_F(ApplicationHandTest, WorkOfAProcessThatWasReopenedIsDropped) {
  EXPECT_TRUE(tap("button"));
  EXPECT_TRUE(tap("choice"));
  EXPECT_TRUE(application().perform({{"action", "reopen"}}));
  EXPECT_TRUE(application().advance(10));
  EXPECT_EQ(page()["title"], "Rows");
}

// --- Notifications ---

class Notes : public ApplicationObserver {
 public:
  void treeChanged() override { ++changes; }
  void announced(const std::string& text) override { announcements.push_back(text); }
  void homeScreenRestarted() override { ++restarts; }
  void transitioned(TransitionKind kind, double seconds) override {
    EXPECT_GT(seconds, 0);
    transitions.emplace_back(transitionName(kind));
  }

  int changes = 0;
  int restarts = 0;
  std::vector<std::string> announcements;
  std::vector<std::string> transitions;
};

TEST_F(ApplicationHandTest, ObserversAreToldOfPagesThatComeAndGo) {
  Notes notes;
  application().addObserver(&notes);
  EXPECT_TRUE(tap("choice"));
  const std::string navigation = TreeQuery(application().tree()).outerNavigation().id;
  EXPECT_TRUE(act({{"action", "back"}}, navigation));
  EXPECT_THAT(notes.transitions, ElementsAre("push", "pop"));
  EXPECT_GE(notes.changes, 2);
  application().removeObserver(&notes);
  EXPECT_TRUE(tap("choice"));
  EXPECT_EQ(notes.transitions.size(), 2U);
}

TEST_F(ApplicationHandTest, ARestartOfTheHomeScreenIsToldOnce) {
  useWholeDevice();
  dropApplication();
  Notes notes;
  application().addObserver(&notes);
  open();
  ASSERT_TRUE(tap("respring"));
  ASSERT_TRUE(application().waitForPrograms());
  EXPECT_EQ(notes.restarts, 1);
  EXPECT_THAT(notes.announcements, ElementsAre("The home screen has restarted"));
  EXPECT_TRUE(application().waitForPrograms());
  EXPECT_EQ(notes.restarts, 1);
  application().removeObserver(&notes);
}

}  // namespace
}  // namespace settings::test

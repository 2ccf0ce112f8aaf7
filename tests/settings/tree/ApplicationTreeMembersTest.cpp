// Each node of the view tree has the members that docs/tree.md specifies for its kind.

#include <map>
#include <set>
#include <string>

#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;

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

// Members that are omitted if they have their default value.
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
      {"button", {{"string", {textType}}, {"enabled", {flag}}}},
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

// Members with their default value are absent.
void expectNoDefaults(const json& node) {
  EXPECT_NE(node.value("alpha", 0.5), 1.0) << node;
  EXPECT_TRUE(node.value("hidden", true)) << node;
  EXPECT_FALSE(node.value("interactive", false)) << node;
  const bool isEnabledCell = node["kind"] == "cell" && node.value("enabled", false);
  EXPECT_FALSE(isEnabledCell) << node;
}

class ApplicationTreeMembersTest : public ApplicationTest {
 protected:
  // Each node has a documented kind and its members, and occurs once below the root.
  static void expectSoundTree(const json& tree) {
    std::set<std::string> seen;
    expectSoundNode(tree, tree["root"], seen);
    EXPECT_EQ(seen.size(), tree["nodes"].size());
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

TEST_F(ApplicationTreeMembersTest, EveryNodeOfTheRootPageHasItsDocumentedMembers) {
  useWholeDevice();
  open();
  expectSoundTree(tree());
  scrollTo(600);
  expectSoundTree(tree());
  EXPECT_TRUE(application().setTrait("idiom", "pad").accepted);
  open();
  expectSoundTree(tree());
}

TEST_F(ApplicationTreeMembersTest, EveryNodeOfEveryCellKindHasItsDocumentedMembers) {
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

TEST_F(ApplicationTreeMembersTest, EveryNodeOfAPageInEditingHasItsDocumentedMembers) {
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

}  // namespace
}  // namespace settings::test

// Each node of the view tree has the members that docs/tree.md specifies for its kind.

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "settings/tree/NodeKinds.h"
#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;

bool hasForm(const json& value, MemberForm form) {
  switch (form) {
    case MemberForm::flag:
      return value.is_boolean();
    case MemberForm::whole:
      return value.is_number_integer();
    case MemberForm::number:
      return value.is_number();
    case MemberForm::text:
      return value.is_string();
    case MemberForm::texts:
    case MemberForm::list:
      return value.is_array();
    case MemberForm::map:
    case MemberForm::color:
    case MemberForm::image:
      return value.is_object();
  }
  return false;
}

void expectMembers(const json& node, const std::vector<NodeMember>& members) {
  for (const NodeMember& member : members) {
    const auto found = node.find(member.name);
    if (found == node.end()) {
      EXPECT_TRUE(member.optional) << "no \"" << member.name << "\" in " << node;
      continue;
    }
    EXPECT_TRUE(hasForm(*found, member.form)) << "\"" << member.name << "\" of " << node;
    const auto isFound = [&](std::string_view choice) { return *found == choice; };
    EXPECT_TRUE(member.choices.empty() || std::ranges::any_of(member.choices, isFound))
        << "\"" << member.name << "\" of " << node;
  }
}

// Undocumented members are absent.
void expectNoOthers(const json& node, const NodeKind& kind) {
  std::set<std::string_view> known;
  for (const NodeMember& member : nodeKinds().everyNode().members) known.insert(member.name);
  for (const NodeMember& member : kind.members) known.insert(member.name);
  for (const auto& [name, member] : node.items()) {
    EXPECT_TRUE(known.contains(name)) << "\"" << name << "\" of " << node;
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
    expectMembers(node, nodeKinds().everyNode().members);
    const auto kind =
        std::ranges::find(nodeKinds().all(), node["kind"].get<std::string>(), &NodeKind::name);
    ASSERT_NE(kind, nodeKinds().all().end()) << node["kind"];
    expectMembers(node, kind->members);
    expectNoOthers(node, *kind);
    EXPECT_EQ(node.contains("frame"), kind->look != nullptr) << node;
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

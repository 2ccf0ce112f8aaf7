// The table of node kinds must agree with docs/tree.md and with the page's own types. If they
// differ, the test names the file and the missing or unknown line.

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "settings/tree/NodeKinds.h"

namespace settings::test {
namespace {

using testing::IsEmpty;
using Lines = std::vector<std::string>;

// --- Texts ---

std::string readSource(const std::string& path) {
  std::ifstream file(ZENTROVA_SOURCES "/" + path);
  std::stringstream text;
  text << file.rdbuf();
  EXPECT_FALSE(text.str().empty()) << path << " cannot be read";
  return text.str();
}

// Returns the text between `start` and `end`; fails the test if `start` is missing.
std::string between(const std::string& text, const std::string& start, const std::string& end) {
  const auto from = text.find(start);
  if (from == std::string::npos) {
    ADD_FAILURE() << "no \"" << start << "\"";
    return {};
  }
  const auto to = text.find(end, from + start.size());
  return text.substr(from + start.size(), to == std::string::npos ? to : to - from - start.size());
}

Lines linesOf(const std::string& text) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string joined(const Lines& parts, const std::string& with) {
  std::string text;
  for (const auto& part : parts) text += (text.empty() ? "" : with) + part;
  return text;
}

std::string marked(std::string_view text, char mark) {
  return mark + std::string(text) + mark;
}

// --- docs/tree.md ---

// The type as docs/tree.md writes it: "bool", "\"begin\", \"end\" or \"cancel\"".
std::string documentedType(const NodeMember& member) {
  Lines choices;
  for (const auto choice : member.choices) choices.push_back(marked(choice, '"'));
  if (!choices.empty()) return alternatives({choices.begin(), choices.end()});
  static const std::map<MemberForm, std::string> names = {
      {MemberForm::flag, "bool"},           {MemberForm::whole, "integer"},
      {MemberForm::number, "number"},       {MemberForm::text, "text"},
      {MemberForm::texts, "list of texts"}, {MemberForm::list, "list"},
      {MemberForm::map, "object"},          {MemberForm::color, "colour"},
      {MemberForm::image, "image"}};
  return names.at(member.form);
}

std::string documentedName(const NodeMember& member) {
  return marked(std::string(member.name) + (member.optional ? "?" : ""), '`');
}

std::string documentedMember(const NodeMember& member) {
  return documentedName(member) + ": " + documentedType(member);
}

std::string documentedKind(const NodeKind& kind) {
  Lines facts;
  if (!kind.className.empty()) facts.push_back(marked(kind.className, '`'));
  Lines actions;
  for (const NodeAction& action : kind.actions) actions.push_back(marked(action.name, '`'));
  if (!actions.empty()) facts.push_back("takes " + joined(actions, ", "));
  const std::string line = "- " + marked(kind.name, '`');
  return facts.empty() ? line : line + " (" + joined(facts, "; ") + ")";
}

// Returns whether the line starts with this text and the text ends there.
bool says(const std::string& line, const std::string& beginning) {
  if (!line.starts_with(beginning)) return false;
  const std::string rest = line.substr(beginning.size());
  return rest.empty() || rest.starts_with(':') || rest.starts_with(',') || rest.starts_with(" |") ||
         rest.starts_with(" of ");
}

// The lines that are missing from the document, and those that are unknown.
Lines differences(const Lines& wanted, const Lines& found) {
  Lines result;
  for (const auto& line : wanted) {
    const bool isThere =
        std::ranges::any_of(found, [&](const auto& each) { return says(each, line); });
    if (!isThere) result.push_back("missing: " + line);
  }
  for (const auto& line : found) {
    const bool isKnown =
        std::ranges::any_of(wanted, [&](const auto& each) { return says(line, each); });
    if (!isKnown) result.push_back("unknown: " + line);
  }
  return result;
}

// The lines of a section of docs/tree.md that start with any of these.
Lines documentedLines(const std::string& heading, const Lines& beginnings) {
  const std::string part = between(readSource("docs/tree.md"), "\n## " + heading + "\n", "\n## ");
  Lines lines;
  for (const auto& line : linesOf(part)) {
    const bool isOne = std::ranges::any_of(
        beginnings, [&](const auto& beginning) { return line.starts_with(beginning); });
    if (isOne) lines.push_back(line);
  }
  return lines;
}

TEST(NodeKindsTest, DocsTreeMdNamesTheMembersOfEveryNode) {
  Lines wanted;
  for (const NodeMember& member : nodeKinds().everyNode().members) {
    wanted.push_back("| " + documentedName(member) + " | " + documentedType(member));
  }
  EXPECT_THAT(differences(wanted, documentedLines("Members of every node", {"| `"})), IsEmpty())
      << "in docs/tree.md, \"Members of every node\"";
}

TEST(NodeKindsTest, DocsTreeMdNamesEachKindWithItsClassItsActionsAndItsMembers) {
  std::map<std::string, Lines> documented;  // by the line of the kind
  std::string kind;
  for (const auto& line : documentedLines("Kinds", {"- `", "  - `"})) {
    if (line.starts_with("- ")) kind = line;
    auto& members = documented[kind];
    if (line != kind) members.push_back(line);
  }
  Lines kinds;
  for (const NodeKind& each : nodeKinds().all()) {
    const std::string wanted = documentedKind(each);
    kinds.push_back(wanted);
    Lines members;
    for (const NodeMember& member : each.members) {
      members.push_back("  - " + documentedMember(member));
    }
    for (const auto& [line, found] : documented) {
      if (!says(line, wanted)) continue;
      EXPECT_THAT(differences(members, found), IsEmpty()) << "in docs/tree.md, below: " << line;
    }
  }
  Lines found;
  for (const auto& [line, members] : documented) found.push_back(line);
  EXPECT_THAT(differences(kinds, found), IsEmpty()) << "in docs/tree.md, \"Kinds\"";
}

// The actions of all kinds and of the application, without duplicates, and the kinds that take
// them.
std::map<std::string, std::pair<NodeAction, Lines>> allActions() {
  std::map<std::string, std::pair<NodeAction, Lines>> all;
  for (const NodeKind& kind : nodeKinds().all()) {
    for (const NodeAction& action : kind.actions) {
      auto& [known, kinds] = all[std::string(action.name)];
      if (kinds.empty()) known = action;
      kinds.emplace_back(kind.name);
    }
  }
  for (const NodeAction& action : nodeKinds().applicationActions()) {
    all[std::string(action.name)].first = action;
  }
  return all;
}

TEST(NodeKindsTest, DocsTreeMdNamesEachActionWithItsKindsAndMembers) {
  Lines wanted;
  for (const auto& [name, action] : allActions()) {
    Lines kinds;
    for (const auto& kind : action.second) kinds.push_back(marked(kind, '`'));
    Lines members;
    for (const NodeMember& member : action.first.members) {
      members.push_back(documentedMember(member));
    }
    std::string line = "| " + marked(name, '`') + " |";
    for (const auto& part : {joined(kinds, ", "), joined(members, "; ")}) {
      line += part.empty() ? " |" : " " + part + " |";
    }
    wanted.push_back(line.substr(0, line.size() - 2));
  }
  EXPECT_THAT(differences(wanted, documentedLines("What the user did", {"| `"})), IsEmpty())
      << "in docs/tree.md, \"What the user did\"";
}

// --- The page's types ---

struct TypedMember {
  bool optional = false;
  std::string type;
};
using TypedMembers = std::map<std::string, TypedMember>;

std::string trimmed(const std::string& text) {
  const auto start = text.find_first_not_of(" \n");
  if (start == std::string::npos) return {};
  return text.substr(start, text.find_last_not_of(" \n") - start + 1);
}

// The text inside the braces that open at `start`.
std::string bodyAt(const std::string& text, std::size_t start) {
  int depth = 0;
  for (std::size_t i = start; i < text.size(); ++i) {
    if (text[i] == '{') ++depth;
    if (text[i] == '}' && --depth == 0) return text.substr(start + 1, i - start - 1);
  }
  ADD_FAILURE() << "no end of " << text.substr(start, 40);
  return {};
}

std::string withoutComments(std::string text) {
  for (auto start = text.find("/**"); start != std::string::npos; start = text.find("/**")) {
    text.erase(start, text.find("*/", start) + 2 - start);
  }
  return text;
}

// Parses "name?: type; name: type" into members.
TypedMembers membersIn(const std::string& body) {
  TypedMembers members;
  int depth = 0;
  std::string part;
  for (const char each : withoutComments(body) + ";") {
    depth += each == '{' ? 1 : each == '}' ? -1 : 0;
    if (each != ';' || depth > 0) {
      part += each;
      continue;
    }
    const auto colon = part.find(':');
    std::string name = trimmed(part.substr(0, colon));
    const bool optional = name.ends_with('?');
    if (optional) name.pop_back();
    if (!name.empty()) members[name] = {optional, trimmed(part.substr(colon + 1))};
    part.clear();
  }
  return members;
}

// Each `interface NAME ... { ... }` of a file, by name.
std::map<std::string, TypedMembers> interfacesIn(const std::string& path) {
  const std::string text = readSource(path);
  const std::string word = "export interface ";
  std::map<std::string, TypedMembers> interfaces;
  for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
    const auto start = at + word.size();
    const std::string name = text.substr(start, text.find(' ', start) - start);
    interfaces[name] = membersIn(bodyAt(text, text.find('{', start)));
  }
  return interfaces;
}

bool isType(const std::string& type, const NodeMember& member) {
  switch (member.form) {
    case MemberForm::flag:
      return type == "boolean";
    case MemberForm::whole:
    case MemberForm::number:
      return type == "number";
    case MemberForm::texts:
      return type == "string[]";
    case MemberForm::list:
      return type.ends_with("[]") || type.starts_with("[");
    case MemberForm::map:
      return type.starts_with("{") || std::isupper(static_cast<unsigned char>(type[0])) != 0;
    case MemberForm::color:
      return type == "Color";
    case MemberForm::image:
      return type == "Picture";
    case MemberForm::text:
      break;
  }
  Lines choices;
  for (const auto choice : member.choices) choices.push_back(marked(choice, '\''));
  return type == (choices.empty() ? "string" : joined(choices, " | "));
}

// The members that are missing, unknown or of another type; the members in `own` are also known.
Lines typeDifferences(const std::vector<NodeMember>& wanted, const TypedMembers& found,
                      const std::set<std::string>& own) {
  Lines result;
  std::set<std::string> known = own;
  for (const NodeMember& member : wanted) {
    const std::string name(member.name);
    known.insert(name);
    const auto typed = found.find(name);
    if (typed == found.end()) {
      result.push_back("missing: " + documentedMember(member));
    } else if (typed->second.optional != member.optional || !isType(typed->second.type, member)) {
      result.push_back("is not " + documentedMember(member) + ": " + name +
                       (typed->second.optional ? "?" : "") + ": " + typed->second.type);
    }
  }
  for (const auto& [name, typed] : found) {
    if (!known.contains(name)) result.push_back("unknown: " + name);
  }
  return result;
}

constexpr const char* treeTypes = "settings/web/ui/src/protocol/tree.ts";
constexpr const char* messageTypes = "settings/web/ui/src/protocol/messages.ts";

TEST(NodeKindsTest, ThePagesTypesHaveEachKindWithItsMembers) {
  const auto interfaces = interfacesIn(treeTypes);
  EXPECT_THAT(typeDifferences(nodeKinds().everyNode().members, interfaces.at("Common"), {}),
              IsEmpty())
      << "in " << treeTypes << ", interface Common";
  std::map<std::string, std::string> nameOfKind;
  for (const auto& [name, members] : interfaces) {
    const auto kind = members.find("kind");
    if (name.ends_with("Node") && kind != members.end()) nameOfKind[kind->second.type] = name;
  }
  for (const NodeKind& kind : nodeKinds().all()) {
    const auto name = nameOfKind.find(marked(kind.name, '\''));
    if (name == nameOfKind.end()) {
      ADD_FAILURE() << "no interface of the kind " << kind.name << " in " << treeTypes;
      continue;
    }
    EXPECT_THAT(typeDifferences(kind.members, interfaces.at(name->second), {"kind"}), IsEmpty())
        << "in " << treeTypes << ", interface " << name->second;
  }
  EXPECT_EQ(nameOfKind.size(), nodeKinds().all().size()) << "kinds in " << treeTypes;
}

TEST(NodeKindsTest, ThePagesTypesCountEveryKindAsANode) {
  const std::string text = readSource(treeTypes);
  const std::string nodes = between(text, "export type TreeNode =", ";");
  for (const auto& [name, members] : interfacesIn(treeTypes)) {
    if (!name.ends_with("Node") || !members.contains("kind")) continue;
    EXPECT_THAT(nodes, testing::ContainsRegex("\\| " + name + "\\b"))
        << "in " << treeTypes << ", type TreeNode";
  }
}

TEST(NodeKindsTest, ThePagesTypesHaveEachActionWithItsMembers) {
  const TypedMembers typed = interfacesIn(messageTypes).at("ActionMembers");
  std::set<std::string> known;
  for (const auto& [name, action] : allActions()) {
    known.insert(name);
    std::vector<NodeMember> members = action.first.members;
    if (!action.second.empty()) members.push_back({"node"});
    const auto found = typed.find(name);
    if (found == typed.end()) {
      ADD_FAILURE() << "no action " << name << " in " << messageTypes;
      continue;
    }
    const std::string& type = found->second.type;
    const auto given = type.starts_with("{") ? membersIn(bodyAt(type, 0)) : TypedMembers();
    EXPECT_THAT(typeDifferences(members, given, {}), IsEmpty())
        << "in " << messageTypes << ", action " << name;
  }
  for (const auto& [name, member] : typed) {
    EXPECT_TRUE(known.contains(name)) << messageTypes << " has an unknown action " << name;
  }
}

// --- The table itself ---

TEST(NodeKindsTest, NoNameIsGivenTwice) {
  std::set<std::string_view> names;
  std::set<std::string_view> classes;
  for (const NodeKind& kind : nodeKinds().all()) {
    EXPECT_TRUE(names.insert(kind.name).second) << kind.name;
    if (kind.isFoundByClass) {
      EXPECT_TRUE(classes.insert(kind.className).second) << kind.className;
    }
    std::set<std::string_view> members;
    for (const NodeMember& member : kind.members) {
      EXPECT_TRUE(members.insert(member.name).second) << kind.name << " " << member.name;
    }
  }
}

}  // namespace
}  // namespace settings::test

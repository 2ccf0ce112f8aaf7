#pragma once

#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <unordered_map>
#include <vector>

#include "platform/foundation/objects/Object.h"
#include "settings/tree/ActionResult.h"

namespace platform {
class UIView;
}

namespace settings {

class NodeWriter;
struct HandTools;
struct NodeTarget;

// The JSON type of a member.
enum class MemberForm : std::uint8_t {
  flag,    // true or false
  whole,   // a whole number
  number,  // any number
  text,
  texts,  // a list of texts
  list,   // a list of something else
  map,    // an object with members of its own
  color,
  image,
};

// "begin, end or cancel"
std::string alternatives(const std::vector<std::string_view>& words);

// One member of a node, or of an action.
struct NodeMember {
  std::string_view name;
  MemberForm form = MemberForm::text;
  bool optional = false;                       // left out where there is nothing to say
  std::vector<std::string_view> choices = {};  // of a text that is one of a few; else empty
};

// Something that a user can do to a node.
struct NodeAction {
  std::string_view name;
  std::vector<NodeMember> members;  // beside "action" and "node"
  // Performs the action or refuses it. The action may hold anything. Raises what the bundle raises.
  // Empty if the application itself performs the action.
  std::function<ActionResult(HandTools&, const NodeTarget&, const nlohmann::json& action)> perform;
};

// The source of one node, borrowed: an object of the platform, or a part that is not an object,
// such as a row of a table.
class NodeSubject {
 public:
  template <class T>
  requires(!std::is_same_v<std::remove_cv_t<T>, NodeSubject>) NodeSubject(T& subject) {
    if constexpr (std::is_base_of_v<platform::Object, T>) {
      _object = &subject;
    } else {
      _part = &subject;
      _type = &typeid(T);
    }
  }

  // Null for a part.
  platform::Object* object() const noexcept { return _object; }
  // Throws std::bad_cast if the subject is not a T.
  template <class T>
  T& as() const {
    if constexpr (std::is_base_of_v<platform::Object, T>) {
      if (_object) return dynamic_cast<T&>(*_object);
    } else {
      if (_type && *_type == typeid(T)) return *static_cast<T*>(_part);
    }
    throw std::bad_cast();
  }

 private:
  platform::Object* _object = nullptr;
  void* _part = nullptr;
  const std::type_info* _type = nullptr;
};

// The description of one kind of node (docs/tree.md). Made with KindBuilder.
struct NodeKind {
  std::string_view name;
  std::string_view title;  // what people call it
  // The platform class that the kind shows; empty for a part of something else.
  std::string_view className;
  // Whether objects of the class and its subclasses are shown as this kind. False if another node
  // decides that, such as a row for its cell.
  bool isFoundByClass = false;
  std::vector<NodeMember> members;
  std::vector<NodeAction> actions;

  // Puts the members into the node.
  std::function<void(NodeWriter&, const NodeSubject&, nlohmann::json& node)> write;
  // Adds the child nodes and returns their identities. Empty if the kind has no children.
  std::function<std::vector<std::string>(NodeWriter&, const NodeSubject&)> addChildren;
  // Returns the view whose frame and look the node shows. Empty if it shows none.
  std::function<platform::UIView&(const NodeSubject&)> look;
  // The member that a row with this node shows as its value. Empty for a kind without a value.
  std::function<nlohmann::json(const nlohmann::json& node)> shownValue;

  // Returns null if the kind does not accept the action.
  const NodeAction* action(std::string_view wanted) const;
};

// All kinds, by name and by the platform's class. Immutable. Threads: any.
class KindTable {
 public:
  // `everyNode` has the members that any node may have, written from a view; `applicationActions`
  // are those that name no node.
  KindTable(NodeKind everyNode, std::vector<NodeKind> kinds,
            std::vector<NodeAction> applicationActions);
  KindTable(const KindTable&) = delete;
  KindTable& operator=(const KindTable&) = delete;

  const NodeKind& everyNode() const noexcept { return _everyNode; }
  const std::vector<NodeKind>& all() const noexcept { return _kinds; }
  const std::vector<NodeAction>& applicationActions() const noexcept { return _applicationActions; }
  // Throws std::out_of_range if no kind has the name.
  const NodeKind& named(std::string_view name) const { return *_byName.at(name); }
  // Returns the kind of the object's class, or of its nearest base class that has one. Throws
  // std::out_of_range if none has. The object's process must be the current one.
  const NodeKind& of(const platform::Object& object) const;

  // Returns whether any kind accepts the action.
  bool isAction(std::string_view name) const;
  // Returns the titles of the kinds that accept the action: "row or button".
  std::string takersOf(std::string_view action) const;

 private:
  using Index = std::unordered_map<std::string_view, const NodeKind*>;

  NodeKind _everyNode;
  std::vector<NodeKind> _kinds;
  std::vector<NodeAction> _applicationActions;
  Index _byName;
  Index _byClass;
};

}  // namespace settings

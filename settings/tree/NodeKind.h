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

// What the JSON of a member is.
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
  // Does it, or refuses. What the action holds need not be sound. Raises what the bundle raises.
  // Empty where it is for the application itself to do.
  std::function<ActionResult(HandTools&, const NodeTarget&, const nlohmann::json& action)> perform;
};

// What one node is written from, borrowed: an object of the platform, or a part that is none, such
// as a row of a table.
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
  // Raises std::bad_cast where the subject is no T.
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

// All that is to be known of one kind of node (docs/tree.md). Made with KindBuilder.
struct NodeKind {
  std::string_view name;
  std::string_view title;  // what people call it
  // What it stands for; empty for a part of something else.
  std::string_view className;
  // Whether the class, and those below it, lead to this kind. Not where another node decides that
  // it is one, as a row does of its cell.
  bool isFoundByClass = false;
  std::vector<NodeMember> members;
  std::vector<NodeAction> actions;

  // Puts the members into the node.
  std::function<void(NodeWriter&, const NodeSubject&, nlohmann::json& node)> write;
  // Adds the nodes below it and gives their identities. Empty where there are none.
  std::function<std::vector<std::string>(NodeWriter&, const NodeSubject&)> addChildren;
  // The view whose frame and look the node shows. Empty where it shows none.
  std::function<platform::UIView&(const NodeSubject&)> look;
  // What a row with this node in it shows as its value. Empty for a kind that holds none.
  std::function<nlohmann::json(const nlohmann::json& node)> shownValue;

  // Null where the kind does not take the action.
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
  // Raises std::out_of_range where there is no such kind.
  const NodeKind& named(std::string_view name) const { return *_byName.at(name); }
  // The kind that an object of that class is shown as: that of its class, else of the nearest base
  // class that has one. Raises std::out_of_range where none has. The object's process must be the
  // current one.
  const NodeKind& of(const platform::Object& object) const;

  // Whether any kind takes the action.
  bool isAction(std::string_view name) const;
  // "row or button": what the kinds that take the action are called.
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

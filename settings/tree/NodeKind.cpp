#include "settings/tree/NodeKind.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/objects/Class.h"

namespace settings {

std::string alternatives(const std::vector<std::string_view>& words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) text += i + 1 < words.size() ? ", " : " or ";
    text += words[i];
  }
  return text;
}

const NodeAction* NodeKind::action(std::string_view wanted) const {
  const auto found = std::ranges::find(actions, wanted, &NodeAction::name);
  return found == actions.end() ? nullptr : &*found;
}

KindTable::KindTable(NodeKind everyNode, std::vector<NodeKind> kinds,
                     std::vector<NodeAction> applicationActions)
    : _everyNode(std::move(everyNode)),
      _kinds(std::move(kinds)),
      _applicationActions(std::move(applicationActions)) {
  for (const NodeKind& kind : _kinds) {
    _byName.emplace(kind.name, &kind);
    if (kind.isFoundByClass) _byClass.emplace(kind.className, &kind);
  }
}

const NodeKind& KindTable::of(const platform::Object& object) const {
  for (const auto* type = &object.objectClass(); type != nullptr; type = type->base()) {
    if (const auto found = _byClass.find(type->name()); found != _byClass.end()) {
      return *found->second;
    }
  }
  throw std::out_of_range("no kind of node for " + std::string(object.className()));
}

bool KindTable::isAction(std::string_view name) const {
  return std::ranges::any_of(_kinds, [&](const NodeKind& kind) { return kind.action(name); });
}

std::string KindTable::takersOf(std::string_view action) const {
  const auto lastWord = [](std::string_view title) { return title.substr(title.rfind(' ') + 1); };
  std::vector<std::string_view> titles;
  for (const NodeKind& kind : _kinds) {
    if (!kind.action(action)) continue;
    // A colour picker and a photo picker together are any picker.
    const bool isAlike = !titles.empty() && lastWord(titles.back()) == lastWord(kind.title);
    if (isAlike) titles.pop_back();
    titles.push_back(isAlike ? lastWord(kind.title) : kind.title);
  }
  return alternatives(titles);
}

}  // namespace settings

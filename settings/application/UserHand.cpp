#include "settings/application/UserHand.h"

#include <nlohmann/json.hpp>

#include "platform/uikit/tables/UITableView.h"
#include "settings/application/SettingsProcess.h"
#include "settings/tree/ActionMembers.h"
#include "settings/tree/NodeKinds.h"
#include "settings/tree/PresentedKinds.h"
#include "settings/tree/TableKinds.h"

namespace settings {

using nlohmann::json;

ActionResult UserHand::perform(const json& action, const NodeTargets& targets) {
  const auto node = stringMember(action, "node");
  if (!node) return refused("the action names no node");
  const auto name = stringMember(action, "action").value_or("");
  // A table that was pushed still moves when something opens over it.
  const Covered covered = name == "scroll" ? Covered::taken : Covered::refused;
  const auto work = [&](const NodeTarget& target) {
    const NodeAction* taken = nodeKinds().named(target.kind).action(name);
    if (taken && taken->perform) return taken->perform(_tools, target, action);
    return refused("wrong kind of node (expected " + nodeKinds().takersOf(name) + ")");
  };
  return onNode(*node, targets, work, covered);
}

ActionResult UserHand::choosePhoto(const std::string& node, const PhotoResult& photo,
                                   const NodeTargets& targets) {
  return onNode(node, targets,
                [&](const NodeTarget& target) { return settings::choosePhoto(target, photo); });
}

ActionResult UserHand::onNode(const std::string& node, const NodeTargets& targets,
                              const std::function<ActionResult(const NodeTarget&)>& work,
                              Covered covered) const {
  const auto found = targets.nodes.find(node);
  if (found == targets.nodes.end()) return refused("the node " + node + " is gone");
  const auto over = coverOf(found->second);
  if (over && covered == Covered::refused) return refused(*over);
  return work(found->second);
}

std::optional<std::string> UserHand::coverOf(const NodeTarget& target) const {
  auto over = _process.outer() ? _process.outer()->presentedViewController() : nullptr;
  while (over && over->presentedViewController()) over = over->presentedViewController();
  if (!over || target.object.lock() == over) return std::nullopt;
  if (over->isViewLoaded()) {
    const auto view = target.as<platform::UIView>();
    if (view && view->isDescendantOfView(*over->view())) return std::nullopt;
  }
  return "something else is open over the page: " +
         over->title().value_or(std::string(over->className()));
}

ActionResult UserHand::reveal(const NodeTarget& target) {
  const auto row = RowPlace::of(target);
  if (!row) return refused("the node is not a row");
  const auto isInSight = [&] { return row->table->cellForRowAtIndexPath(row->path) != nullptr; };
  // Rows on the way may turn out to be higher than they were taken for, which pushes it out of
  // sight again.
  std::optional<double> before;
  while (!isInSight() && before != row->table->contentOffset().y) {
    before = row->table->contentOffset().y;
    row->table->scrollToRowAtIndexPath(row->path);
    _process.settle();
  }
  const auto problem = row->table->rowProblem(row->path);
  if (problem) return refused("the row could not be made: " + *problem);
  return accepted(isInSight(), "the row cannot be brought into sight");
}

}  // namespace settings

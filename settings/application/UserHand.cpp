#include "settings/application/UserHand.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/controls/UIButton.h"
#include "platform/uikit/controls/UISegmentedControl.h"
#include "platform/uikit/controls/UISlider.h"
#include "platform/uikit/controls/UISwitch.h"
#include "platform/uikit/controls/UITextField.h"
#include "platform/uikit/tables/UITableView.h"
#include "platform/uikit/views/UIGestureRecognizer.h"
#include "settings/application/SettingsProcess.h"
#include "settings/tree/ActionMembers.h"

namespace settings {

using nlohmann::json;

namespace {

constexpr const char* takesNoTouches = "the control is disabled or takes no touches just now";

// A presenter may show more rows than lie in the table's bounds, as its texts are of another
// height.
void setOverscan(platform::UITableView& table, double points) {
  constexpr double mostScreens = 2;
  table.setOverscan(std::clamp(points, 0.0, mostScreens * table.bounds().height));
}

}  // namespace

ActionResult UserHand::accepted(bool done, const char* otherwise) {
  return done ? ActionResult{} : refused(otherwise);
}

ActionResult UserHand::wrongNode(const char* wanted) {
  return refused(std::string("the node is no ") + wanted);
}

const std::vector<UserHand::Entry>& UserHand::entries() {
  static const std::vector<Entry> table = {
      {"tap", &UserHand::tap},     {"toggle", &UserHand::toggle}, {"segment", &UserHand::segment},
      {"slide", &UserHand::slide}, {"edit", &UserHand::edit},     {"scroll", &UserHand::scroll},
      {"press", &UserHand::press}, {"back", &UserHand::back},     {"commit", &UserHand::commit},
      {"move", &UserHand::move},   {"choose", &UserHand::choose}, {"pick", &UserHand::pick},
      {"photo", &UserHand::photo}, {"close", &UserHand::close},
  };
  return table;
}

bool UserHand::knows(const std::string& action) {
  return std::ranges::any_of(entries(), [&](const Entry& entry) { return entry.name == action; });
}

ActionResult UserHand::perform(const json& action, const NodeTargets& targets) {
  const auto node = stringMember(action, "node");
  if (!node) return refused("the action names no node");
  const auto name = stringMember(action, "action").value_or("");
  // A table that was pushed still moves when something opens over it.
  const Covered covered = name == "scroll" ? Covered::taken : Covered::refused;
  const auto work = [&](const NodeTarget& target) {
    for (const Entry& entry : entries()) {
      if (entry.name == name) return (this->*entry.action)(action, target);
    }
    return refused("\"" + name + "\" is no action");
  };
  return onNode(*node, targets, work, covered);
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

std::optional<UserHand::Row> UserHand::rowOf(const NodeTarget& target) const {
  if (target.kind != NodeKind::row) return std::nullopt;
  const auto table = target.as<platform::UITableView>();
  if (!table) return std::nullopt;
  const auto path = table->indexPathForRowToken(target.token);
  if (!path) return std::nullopt;
  return Row{table, *path};
}

ActionResult UserHand::reveal(const NodeTarget& target) {
  const auto row = rowOf(target);
  if (!row) return wrongNode("row");
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

ActionResult UserHand::tap(const json& /*action*/, const NodeTarget& target) {
  if (const auto button = target.as<platform::UIButton>()) {
    return accepted(button->userTap(), takesNoTouches);
  }
  const auto row = rowOf(target);
  if (!row) return wrongNode("row or button");
  if (!row->table->cellForRowAtIndexPath(row->path)) return refused("the row is out of sight");
  return accepted(row->table->userTapRow(row->path), "the row takes no tap");
}

ActionResult UserHand::toggle(const json& action, const NodeTarget& target) {
  const auto control = target.as<platform::UISwitch>();
  if (!control) return wrongNode("switch");
  const auto on = booleanMember(action, "on");
  if (!on) return refused("\"on\" must be true or false");
  return accepted(control->userSetOn(*on), takesNoTouches);
}

ActionResult UserHand::segment(const json& action, const NodeTarget& target) {
  const auto control = target.as<platform::UISegmentedControl>();
  if (!control) return wrongNode("segmented control");
  const auto index = integerMember(action, "index");
  if (!index || *index < 0 || *index >= control->numberOfSegments()) {
    return refused("\"index\" must be that of a segment, from 0 to " +
                   std::to_string(control->numberOfSegments() - 1));
  }
  return accepted(control->userSelectSegment(*index), takesNoTouches);
}

ActionResult UserHand::slide(const json& action, const NodeTarget& target) {
  const auto control = target.as<platform::UISlider>();
  if (!control) return wrongNode("slider");
  const auto value = numberMember(action, "value");
  if (!value) return refused("\"value\" must be a number");
  const auto phase = stringMember(action, "phase").value_or("");
  if (phase != "move" && phase != "end") return refused("\"phase\" must be move or end");
  const auto which = phase == "end" ? platform::SlidePhase::end : platform::SlidePhase::move;
  return accepted(control->userSlide(static_cast<float>(*value), which), takesNoTouches);
}

ActionResult UserHand::edit(const json& action, const NodeTarget& target) {
  const auto field = target.as<platform::UITextField>();
  if (!field) return wrongNode("text field");
  const auto phase = stringMember(action, "phase").value_or("");
  if (!field->acceptsTouches()) return refused(takesNoTouches);
  if (phase == "begin")
    return accepted(field->becomeFirstResponder(), "the field refuses to be edited");
  if (phase == "end") return accepted(field->resignFirstResponder(), "the field goes on editing");
  if (phase == "cancel") return accepted(field->userCancel(), takesNoTouches);
  if (phase != "change") return refused("\"phase\" must be begin, change, end or cancel");
  const auto text = stringMember(action, "string");
  if (!text) return refused("\"string\" must be a text");
  return accepted(field->userChangeText(*text), takesNoTouches);
}

// A hand can pull a table past its ends, but no further than a screen.
ActionResult UserHand::scroll(const json& action, const NodeTarget& target) {
  const auto table = target.as<platform::UITableView>();
  if (!table || target.kind != NodeKind::table) return wrongNode("table");
  const auto offset = numberMember(action, "offset");
  if (!offset) return refused("\"offset\" must be a number");
  if (const auto overscan = numberMember(action, "overscan")) setOverscan(*table, *overscan);
  const double height = table->bounds().height;
  const double end = std::max(0.0, table->contentSize().height - height);
  table->setContentOffset({table->contentOffset().x, std::clamp(*offset, -height, end + height)});
  return {};
}

ActionResult UserHand::press(const json& action, const NodeTarget& target) {
  const auto row = rowOf(target);
  if (!row) return wrongNode("row");
  const auto phase = stringMember(action, "phase").value_or("");
  if (phase == "begin") return beginPress(*row);
  if (phase != "end" && phase != "cancel") return refused("\"phase\" must be begin, end or cancel");
  if (!_pressing) return refused("no finger is down");
  if (phase == "end") return endPress(*row);
  cancelPress();
  return {};
}

ActionResult UserHand::beginPress(const Row& row) {
  const auto cell = row.table->cellForRowAtIndexPath(row.path);
  if (!cell) return refused("the row is out of sight");
  if (_pressing) cancelPress();
  const platform::Rect bounds = cell->bounds();
  const platform::Point middle{bounds.x + bounds.width / 2, bounds.y + bounds.height / 2};
  const platform::Point point = cell->convertPointToView(middle, nullptr);
  _pressing = true;
  std::vector<std::shared_ptr<platform::UIGestureRecognizer>> watching;
  for (std::shared_ptr<platform::UIView> view = cell; view; view = view->superview()) {
    for (const auto& recognizer : view->gestureRecognizers()) watching.push_back(recognizer);
  }
  _watching.assign(watching.begin(), watching.end());
  for (const auto& recognizer : watching) recognizer->touchBegan(point);
  return {};
}

// A press that nobody recognised is a slow tap.
ActionResult UserHand::endPress(const Row& row) {
  bool taken = false;
  _pressing = false;
  for (const auto& weak : std::exchange(_watching, {})) {
    const auto recognizer = weak.lock();
    if (!recognizer) continue;
    taken = taken || (recognizer->hasRecognized() && recognizer->cancelsTouchesInView());
    recognizer->touchEnded();
  }
  if (!taken) row.table->userTapRow(row.path);
  return {};
}

void UserHand::cancelPress() {
  _pressing = false;
  for (const auto& weak : std::exchange(_watching, {})) {
    if (const auto recognizer = weak.lock()) recognizer->touchCancelled();
  }
}

ActionResult UserHand::back(const json& /*action*/, const NodeTarget& target) {
  if (target.kind != NodeKind::navigation) return wrongNode("navigation");
  const auto navigation = _process.inner();
  if (!navigation || navigation->viewControllers().size() < 2) {
    return refused("there is no page to go back to");
  }
  navigation->popViewControllerAnimated(true);
  return {};
}

ActionResult UserHand::commit(const json& /*action*/, const NodeTarget& target) {
  const auto row = rowOf(target);
  if (!row) return wrongNode("row");
  return accepted(row->table->userCommitRow(row->path),
                  "the row has no insert or delete control just now");
}

ActionResult UserHand::move(const json& action, const NodeTarget& target) {
  const auto row = rowOf(target);
  if (!row) return wrongNode("row");
  const auto section = integerMember(action, "section");
  const auto index = integerMember(action, "index");
  if (!section || !index) return refused("\"section\" and \"index\" must be whole numbers");
  return accepted(row->table->userMoveRow(row->path, {*section, *index}),
                  "the row cannot be moved there");
}

}  // namespace settings

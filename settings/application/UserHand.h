#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "platform/uikit/tables/NSIndexPath.h"
#include "settings/application/ActionResult.h"
#include "settings/tree/NodeTarget.h"

namespace platform {
class UIAlertController;
class UIGestureRecognizer;
class UITableView;
}  // namespace platform

namespace settings {

class PhotoLibrary;
class SettingsProcess;
struct PhotoResult;

// Does to the pages what a user's hand does: taps, drags, types, presses. Refuses what a hand
// could not do: a control that takes no touches, a row that is out of sight, a page under a sheet.
// Raises what the bundle raises. One for each process; the process must be the current one.
class UserHand {
 public:
  UserHand(SettingsProcess& process, PhotoLibrary& photos) : _process(process), _photos(photos) {}

  // Whether the name is that of an action of the hand.
  static bool knows(const std::string& action);
  // Does the action, as docs/tree.md says, with the nodes of the present tree. What it holds need
  // not be sound.
  ActionResult perform(const nlohmann::json& action, const NodeTargets& targets);
  // Chooses the picture in a photo picker; refused where there is none.
  ActionResult choosePhoto(const std::string& node, const PhotoResult& photo,
                           const NodeTargets& targets);
  // Scrolls so that the row comes into sight.
  ActionResult reveal(const NodeTarget& target);

 private:
  struct Row {
    std::shared_ptr<platform::UITableView> table;
    platform::IndexPath path;
  };
  using Action = ActionResult (UserHand::*)(const nlohmann::json&, const NodeTarget&);
  struct Entry {
    const char* name;
    Action action;
  };
  static const std::vector<Entry>& entries();
  static ActionResult accepted(bool done, const char* otherwise);
  static ActionResult wrongNode(const char* wanted);

  ActionResult tap(const nlohmann::json& action, const NodeTarget& target);
  ActionResult toggle(const nlohmann::json& action, const NodeTarget& target);
  ActionResult segment(const nlohmann::json& action, const NodeTarget& target);
  ActionResult slide(const nlohmann::json& action, const NodeTarget& target);
  ActionResult edit(const nlohmann::json& action, const NodeTarget& target);
  ActionResult scroll(const nlohmann::json& action, const NodeTarget& target);
  ActionResult press(const nlohmann::json& action, const NodeTarget& target);
  ActionResult back(const nlohmann::json& action, const NodeTarget& target);
  ActionResult commit(const nlohmann::json& action, const NodeTarget& target);
  ActionResult move(const nlohmann::json& action, const NodeTarget& target);
  ActionResult choose(const nlohmann::json& action, const NodeTarget& target);
  ActionResult pick(const nlohmann::json& action, const NodeTarget& target);
  ActionResult photo(const nlohmann::json& action, const NodeTarget& target);
  ActionResult close(const nlohmann::json& action, const NodeTarget& target);

  static ActionResult chooseIn(const NodeTarget& target, const PhotoResult& photo);
  // What becomes of an action on a page while something lies over it.
  enum class Covered : std::uint8_t { refused, taken };
  // Does the work with what the node stands for, where a hand can reach it.
  ActionResult onNode(const std::string& node, const NodeTargets& targets,
                      const std::function<ActionResult(const NodeTarget&)>& work,
                      Covered covered = Covered::refused) const;

  ActionResult beginPress(const Row& row);
  ActionResult endPress(const Row& row);
  void cancelPress();
  std::optional<Row> rowOf(const NodeTarget& target) const;
  // The refusal of an action on a page while a sheet lies over it.
  std::optional<std::string> coverOf(const NodeTarget& target) const;

  SettingsProcess& _process;
  PhotoLibrary& _photos;
  // The finger that is down: what watches it, and the row that it is on.
  std::vector<std::weak_ptr<platform::UIGestureRecognizer>> _watching;
  bool _pressing = false;
};

}  // namespace settings

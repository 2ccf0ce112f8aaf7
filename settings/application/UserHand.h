#pragma once

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "settings/tree/ActionResult.h"
#include "settings/tree/HandTools.h"
#include "settings/tree/NodeTarget.h"

namespace settings {

class PhotoLibrary;
class SettingsProcess;
struct PhotoResult;

// Does to the pages what a user's hand does: taps, drags, types, presses. Refuses what a hand
// could not do: a control that takes no touches, a row that is out of sight, a page under a sheet.
// Raises what the bundle raises. One for each process; the process must be the current one.
class UserHand {
 public:
  UserHand(SettingsProcess& process, PhotoLibrary& photos)
      : _process(process), _tools{photos, _finger} {}
  UserHand(const UserHand&) = delete;
  UserHand& operator=(const UserHand&) = delete;

  // Does the action, as docs/tree.md says, with the nodes of the present tree. What it holds need
  // not be sound.
  ActionResult perform(const nlohmann::json& action, const NodeTargets& targets);
  // Chooses the picture in a photo picker; refused where there is none.
  ActionResult choosePhoto(const std::string& node, const PhotoResult& photo,
                           const NodeTargets& targets);
  // Scrolls so that the row comes into sight.
  ActionResult reveal(const NodeTarget& target);

 private:
  // What becomes of an action on a page while something lies over it.
  enum class Covered { refused, taken };
  // Does the work with what the node stands for, where a hand can reach it.
  ActionResult onNode(const std::string& node, const NodeTargets& targets,
                      const std::function<ActionResult(const NodeTarget&)>& work,
                      Covered covered = Covered::refused) const;
  // The refusal of an action on a page while a sheet lies over it.
  std::optional<std::string> coverOf(const NodeTarget& target) const;

  SettingsProcess& _process;
  Finger _finger;
  HandTools _tools;
};

}  // namespace settings

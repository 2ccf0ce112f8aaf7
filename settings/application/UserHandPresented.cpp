// What a hand does with what lies over the pages: sheets and pickers.

#include <nlohmann/json.hpp>

#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/controllers/UIColorPickerViewController.h"
#include "platform/uikit/controllers/UIImagePickerController.h"
#include "settings/application/UserHand.h"
#include "settings/device/PhotoLibrary.h"
#include "settings/tree/ActionMembers.h"

namespace settings {

using nlohmann::json;
using platform::UIAlertController;
using platform::UIColorPickerViewController;
using platform::UIImagePickerController;

ActionResult UserHand::choose(const json& action, const NodeTarget& target) {
  const auto alert = target.as<UIAlertController>();
  if (!alert) return wrongNode("sheet");
  const auto index = integerMember(action, "index");
  if (!index) return refused("\"index\" must be a whole number");
  return accepted(alert->userChoose(*index), "the sheet has no such choice");
}

ActionResult UserHand::pick(const json& action, const NodeTarget& target) {
  const auto picker = target.as<UIColorPickerViewController>();
  if (!picker) return wrongNode("colour picker");
  const auto rgba = colorMember(action, "rgba");
  if (!rgba) return refused("\"rgba\" must be a list of four numbers from 0 to 1");
  const auto [red, green, blue, alpha] = *rgba;
  return accepted(picker->userPick({red, green, blue, alpha}), "the picker is closed");
}

ActionResult UserHand::photo(const json& action, const NodeTarget& target) {
  if (!target.as<UIImagePickerController>()) return wrongNode("photo picker");
  const auto name = stringMember(action, "name");
  if (!name) return refused("\"name\" must be that of a photo");
  return chooseIn(target, _photos.photo(*name));
}

ActionResult UserHand::choosePhoto(const std::string& node, const PhotoResult& photo,
                                   const NodeTargets& targets) {
  return onNode(node, targets, [&](const NodeTarget& target) { return chooseIn(target, photo); });
}

ActionResult UserHand::chooseIn(const NodeTarget& target, const PhotoResult& photo) {
  const auto picker = target.as<UIImagePickerController>();
  if (!picker) return wrongNode("photo picker");
  if (picker->isBusy()) return refused("the photo picker is busy with the picture chosen before");
  if (!photo.image) return refused(photo.problem);
  return accepted(picker->userChoose(photo.image), "the photo picker is closed");
}

ActionResult UserHand::close(const json& /*action*/, const NodeTarget& target) {
  if (const auto alert = target.as<UIAlertController>()) {
    return accepted(alert->userCancel(), "the sheet wants a choice: it has none that cancels");
  }
  if (const auto picker = target.as<UIColorPickerViewController>()) {
    return accepted(picker->userClose(), "the picker is closed");
  }
  const auto picker = target.as<UIImagePickerController>();
  if (!picker) return wrongNode("sheet or picker");
  return accepted(picker->userCancel(), "the photo picker is closed");
}

}  // namespace settings

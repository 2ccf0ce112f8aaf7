#include "settings/tree/PresentedKinds.h"

#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/controllers/UIColorPickerViewController.h"
#include "platform/uikit/controllers/UIImagePickerController.h"
#include "settings/device/PhotoLibrary.h"
#include "settings/tree/CrashReport.h"
#include "settings/tree/HandTools.h"
#include "settings/tree/KindBuilder.h"

namespace settings {

using nlohmann::json;
using platform::UIAlertActionStyle;
using platform::UIAlertController;
using platform::UIAlertControllerStyle;
using platform::UIColorPickerViewController;
using platform::UIImagePickerController;

namespace {

constexpr std::array alertStyles{Named{UIAlertControllerStyle::alert, "alert"},
                                 Named{UIAlertControllerStyle::actionSheet, "sheet"}};
constexpr std::array actionStyles{Named{UIAlertActionStyle::standard, "default"},
                                  Named{UIAlertActionStyle::cancel, "cancel"},
                                  Named{UIAlertActionStyle::destructive, "destructive"}};

json actionsJson(const UIAlertController& alert) {
  json result = json::array();
  for (const auto& action : alert.actions()) {
    result.push_back({{"title", action->title().value_or("")},
                      {"style", nameOf(actionStyles, action->style())}});
  }
  return result;
}

NodeKind alertKind() {
  return KindBuilder<UIAlertController>("alert", "sheet")
      .withoutLook()
      .choice("style", &UIAlertController::preferredStyle, alertStyles)
      .member("title", &UIAlertController::title)
      .member("message", &UIAlertController::message)
      .list("actions", &actionsJson)
      .action(
          "choose",
          [](UIAlertController& alert, std::int64_t index) {
            return accepted(alert.userChoose(index), "the sheet has no such choice");
          },
          Argument<std::int64_t>{"index"})
      .action("close",
              [](UIAlertController& alert) {
                return accepted(alert.userCancel(),
                                "the sheet wants a choice: it has none that cancels");
              })
      .build();
}

NodeKind colorPickerKind() {
  using Picker = UIColorPickerViewController;
  constexpr const char* isClosed = "the picker is closed";
  return KindBuilder<Picker>("colorPicker", "colour picker")
      .optional("title", &Picker::title)
      .member("color", &Picker::selectedColor)
      .member("alpha", &Picker::supportsAlpha)
      .action(
          "pick",
          [](Picker& picker, const Rgba& rgba) {
            return accepted(picker.userPick({rgba[0], rgba[1], rgba[2], rgba[3]}), isClosed);
          },
          Argument<Rgba>{"rgba"})
      .action("close", [](Picker& picker) { return accepted(picker.userClose(), isClosed); })
      .build();
}

json photoJson(const LibraryPhoto& photo) {
  if (!photo.problem.empty()) return {{"name", photo.name}, {"problem", photo.problem}};
  const Thumbnail& thumbnail = photo.thumbnail;
  return {{"name", photo.name},
          {"image",
           {{"hash", thumbnail.key},
            {"width", thumbnail.width},
            {"height", thumbnail.height},
            {"scale", 1}}}};
}

json photosJson(NodeWriter& writer, const UIImagePickerController& picker) {
  json result = json::array();
  for (const auto& photo : writer.photos().photosFor(picker.nodeIdentifier())) {
    result.push_back(photoJson(photo));
  }
  return result;
}

ActionResult choose(UIImagePickerController& picker, const PhotoResult& photo) {
  if (picker.isBusy()) return refused("the photo picker is busy with the picture chosen before");
  if (!photo.image) return refused(photo.problem);
  return accepted(picker.userChoose(photo.image), "the photo picker is closed");
}

NodeKind imagePickerKind() {
  using Picker = UIImagePickerController;
  return KindBuilder<Picker>("imagePicker", "photo picker")
      .member("busy", &Picker::isBusy)
      .list("photos", &photosJson)
      .children(
          [](NodeWriter& writer, Picker& picker) { return writer.addSubviews(*picker.view()); })
      .action(
          "photo",
          [](Picker& picker, HandTools& tools, const std::string& name) {
            return choose(picker, tools.photos.photo(name));
          },
          Argument<std::string>{"name"})
      .action("close",
              [](Picker& picker) {
                return accepted(picker.userCancel(), "the photo picker is closed");
              })
      .build();
}

NodeKind crashKind() {
  return KindBuilder<CrashReport>("crash", "crash report")
      .member("name", &CrashReport::name)
      .member("reason", &CrashReport::reason)
      .member("where", &CrashReport::where)
      .action("continue")
      .action("restart")
      .build();
}

NodeKind waitingKind() {
  return KindBuilder<Wait>("waiting", "wait for a program")
      .member("program", &Wait::program)
      .action("stop")
      .build();
}

}  // namespace

std::vector<NodeKind> presentedKinds() {
  return {alertKind(), colorPickerKind(), imagePickerKind(), crashKind(), waitingKind()};
}

ActionResult choosePhoto(const NodeTarget& target, const PhotoResult& photo) {
  const auto picker = target.as<UIImagePickerController>();
  return picker ? choose(*picker, photo) : refused("the node is not a photo picker");
}

}  // namespace settings

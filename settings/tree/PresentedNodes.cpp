#include "settings/tree/PresentedNodes.h"

#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/controllers/UIColorPickerViewController.h"
#include "platform/uikit/controllers/UIImagePickerController.h"
#include "settings/device/PhotoLibrary.h"
#include "settings/tree/NodeWriter.h"

namespace settings {

using nlohmann::json;

namespace {

std::string_view actionStyleName(platform::UIAlertActionStyle style) {
  switch (style) {
    case platform::UIAlertActionStyle::standard:
      return "default";
    case platform::UIAlertActionStyle::cancel:
      return "cancel";
    case platform::UIAlertActionStyle::destructive:
      return "destructive";
  }
  return "default";
}

std::string addAlert(NodeWriter& writer,
                     const std::shared_ptr<platform::UIAlertController>& alert) {
  const bool isSheet = alert->preferredStyle() == platform::UIAlertControllerStyle::actionSheet;
  json node{{"kind", "alert"},
            {"class", alert->className()},
            {"style", isSheet ? "sheet" : "alert"},
            {"title", alert->title().value_or("")},
            {"message", alert->message().value_or("")},
            {"actions", json::array()}};
  for (const auto& action : alert->actions()) {
    node["actions"].push_back(
        {{"title", action->title().value_or("")}, {"style", actionStyleName(action->style())}});
  }
  return writer.add(alert->nodeIdentifier(), {NodeKind::alert, alert, 0}, std::move(node), {});
}

std::string addColorPicker(NodeWriter& writer,
                           const std::shared_ptr<platform::UIColorPickerViewController>& picker) {
  json node = writer.viewMembers(*picker->view(), "colorPicker");
  node["class"] = picker->className();
  if (picker->title()) node["title"] = *picker->title();
  node["color"] = colorJson(*picker->selectedColor());
  node["alpha"] = picker->supportsAlpha();
  return writer.add(picker->nodeIdentifier(), {NodeKind::colorPicker, picker, 0}, std::move(node),
                    {});
}

json thumbnailJson(const Thumbnail& thumbnail) {
  return {{"hash", thumbnail.key},
          {"width", thumbnail.width},
          {"height", thumbnail.height},
          {"scale", 1}};
}

json photosJson(const std::vector<LibraryPhoto>& photos) {
  json result = json::array();
  for (const LibraryPhoto& photo : photos) {
    json entry{{"name", photo.name}};
    if (photo.problem.empty()) {
      entry["image"] = thumbnailJson(photo.thumbnail);
    } else {
      entry["problem"] = photo.problem;
    }
    result.push_back(std::move(entry));
  }
  return result;
}

std::string addImagePicker(NodeWriter& writer,
                           const std::shared_ptr<platform::UIImagePickerController>& picker,
                           PhotoLibrary& library) {
  const auto& view = picker->view();
  json node = writer.viewMembers(*view, "imagePicker");
  node["class"] = picker->className();
  node["busy"] = picker->isBusy();
  node["photos"] = photosJson(library.photosFor(picker->nodeIdentifier()));
  return writer.add(picker->nodeIdentifier(), {NodeKind::imagePicker, picker, 0}, std::move(node),
                    writer.addSubviews(*view));
}

}  // namespace

std::optional<std::string> addPresented(
    NodeWriter& writer, const std::shared_ptr<platform::UIViewController>& controller,
    PhotoLibrary& library) {
  if (auto alert = std::dynamic_pointer_cast<platform::UIAlertController>(controller)) {
    return addAlert(writer, alert);
  }
  if (auto picker = std::dynamic_pointer_cast<platform::UIColorPickerViewController>(controller)) {
    return addColorPicker(writer, picker);
  }
  if (auto picker = std::dynamic_pointer_cast<platform::UIImagePickerController>(controller)) {
    return addImagePicker(writer, picker, library);
  }
  return std::nullopt;
}

}  // namespace settings

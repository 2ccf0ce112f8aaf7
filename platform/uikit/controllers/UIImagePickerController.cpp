#include "platform/uikit/controllers/UIImagePickerController.h"

namespace platform {

void UIImagePickerControllerDelegate::imagePickerControllerDidCancel(
    const std::shared_ptr<UIImagePickerController>& picker) {
  picker->dismissViewControllerAnimated(true);
}

void UIImagePickerController::setSourceType(UIImagePickerControllerSourceType type) {
  _sourceType = type;
  noteChange();
}

void UIImagePickerController::setDelegateObject(const std::shared_ptr<Object>& delegate) {
  setDelegate(std::dynamic_pointer_cast<UIImagePickerControllerDelegate>(delegate));
}

bool UIImagePickerController::isBusy() {
  return isViewLoaded() && !view()->isUserInteractionEnabled();
}

bool UIImagePickerController::userChoose(const std::shared_ptr<UIImage>& image) {
  if (!image || !presentingViewController() || isBusy()) return false;
  const auto keptAlive = self<UIImagePickerController>();
  if (const auto told = delegate()) {
    told->didFinishPickingMediaWithInfo(
        keptAlive, Dictionary{{UIImagePickerControllerMediaType, "public.image"},
                              {UIImagePickerControllerOriginalImage, Value(image)}});
  } else {
    dismissViewControllerAnimated(true);
  }
  return true;
}

bool UIImagePickerController::userCancel() {
  if (!presentingViewController()) return false;
  const auto keptAlive = self<UIImagePickerController>();
  if (const auto told = delegate()) {
    told->imagePickerControllerDidCancel(keptAlive);
  } else {
    dismissViewControllerAnimated(true);
  }
  return true;
}

}  // namespace platform

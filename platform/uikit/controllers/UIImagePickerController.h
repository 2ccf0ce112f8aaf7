#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/foundation/values/Collections.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/images/UIImage.h"

namespace platform {

class UIImagePickerController;

enum class UIImagePickerControllerSourceType : std::uint8_t {
  photoLibrary = 0,
  camera = 1,
  savedPhotosAlbum = 2,
};

// Keys of what a picker tells of the choice.
inline constexpr std::string_view UIImagePickerControllerMediaType =
    "UIImagePickerControllerMediaType";  // "public.image"
inline constexpr std::string_view UIImagePickerControllerOriginalImage =
    "UIImagePickerControllerOriginalImage";  // a UIImage

// What an image picker tells. Every operation has the answer of a delegate without it.
class UIImagePickerControllerDelegate {
 public:
  virtual ~UIImagePickerControllerDelegate() = default;
  // The user chose a picture; the picker stays until somebody dismisses it. The dictionary may go
  // to another thread.
  virtual void didFinishPickingMediaWithInfo(const std::shared_ptr<UIImagePickerController>&,
                                             const Dictionary& /*info*/) {}
  // The user wants no picture: the picker is dismissed.
  virtual void imagePickerControllerDidCancel(
      const std::shared_ptr<UIImagePickerController>& picker);
};

// The platform's page for choosing a photo. What there is to choose from is the presenter's.
// Threads: main.
class UIImagePickerController : public UINavigationController {
  PLATFORM_CLASS(UIImagePickerController)

 public:
  UIImagePickerControllerSourceType sourceType() const noexcept { return _sourceType; }
  void setSourceType(UIImagePickerControllerSourceType type);
  // Not kept alive.
  void setDelegate(const std::shared_ptr<UIImagePickerControllerDelegate>& delegate) {
    _delegate = delegate;
  }
  std::shared_ptr<UIImagePickerControllerDelegate> delegate() const { return _delegate.lock(); }
  // By name; an object that is no such delegate counts as none.
  void setDelegateObject(const std::shared_ptr<Object>& delegate);

  // Whether the picker's view takes no touches, as while a choice is being worked on.
  bool isBusy();

  // The user's hand: chooses the picture; without a delegate that only closes the picker. False,
  // and nothing done, where there is none, or the picker is not shown or busy.
  bool userChoose(const std::shared_ptr<UIImage>& image);
  // Closes the picker without a choice. A busy one too: the sheet is swiped away from outside of
  // its view. False where it is not shown.
  bool userCancel();

 private:
  UIImagePickerControllerSourceType _sourceType = UIImagePickerControllerSourceType::photoLibrary;
  std::weak_ptr<UIImagePickerControllerDelegate> _delegate;
};

}  // namespace platform

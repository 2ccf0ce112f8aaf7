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

// Keys of the dictionary that describes the choice.
inline constexpr std::string_view UIImagePickerControllerMediaType =
    "UIImagePickerControllerMediaType";  // "public.image"
inline constexpr std::string_view UIImagePickerControllerOriginalImage =
    "UIImagePickerControllerOriginalImage";  // a UIImage

// Receives events of an image picker. The defaults behave like a delegate without the function.
class UIImagePickerControllerDelegate {
 public:
  virtual ~UIImagePickerControllerDelegate() = default;
  // The user chose a picture. The picker stays until it is dismissed. The dictionary may be used on
  // another thread.
  virtual void didFinishPickingMediaWithInfo(const std::shared_ptr<UIImagePickerController>&,
                                             const Dictionary& /*info*/) {}
  // The user cancelled. The picker is dismissed.
  virtual void imagePickerControllerDidCancel(
      const std::shared_ptr<UIImagePickerController>& picker);
};

// The platform's page to choose a photo. The presenter supplies the photos. Threads: main.
class UIImagePickerController : public UINavigationController {
  PLATFORM_CLASS(UIImagePickerController)

 public:
  UIImagePickerControllerSourceType sourceType() const noexcept { return _sourceType; }
  void setSourceType(UIImagePickerControllerSourceType type);
  // Does not keep the delegate alive.
  void setDelegate(const std::shared_ptr<UIImagePickerControllerDelegate>& delegate) {
    _delegate = delegate;
  }
  std::shared_ptr<UIImagePickerControllerDelegate> delegate() const { return _delegate.lock(); }
  // For callers by name. An object that is not a delegate clears it.
  void setDelegateObject(const std::shared_ptr<Object>& delegate);

  // Returns whether the picker's view ignores touches, for example while a choice is processed.
  bool isBusy();

  // User input: chooses the picture; without a delegate, only closes the picker. Does nothing and
  // returns false if the image is empty or the picker is busy or not shown.
  bool userChoose(const std::shared_ptr<UIImage>& image);
  // User input: closes the picker without a choice, even if it is busy, because the sheet is swiped
  // away from outside of its view. Returns false if it is not shown.
  bool userCancel();

 private:
  UIImagePickerControllerSourceType _sourceType = UIImagePickerControllerSourceType::photoLibrary;
  std::weak_ptr<UIImagePickerControllerDelegate> _delegate;
};

}  // namespace platform

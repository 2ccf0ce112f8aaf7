#pragma once

#include <memory>

#include "platform/foundation/values/Collections.h"
#include "platform/uikit/controllers/UIImagePickerController.h"
#include "platform/uikit/views/UILongPressGestureRecognizer.h"
#include "prefs/HBRootListController.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// The page where the user sets the look of the control centre: the way to three lists of colours,
// the background image, and the size of the toggles. The page makes its store anew each time that
// its rows are built; what others have written to the file since is lost at its next write.
// Threads: main; a picture that was chosen is encoded and stored in the background.
class ZVRCustomizeListController : public HBRootListController,
                                   public platform::UIImagePickerControllerDelegate {
  PLATFORM_CLASS(ZVRCustomizeListController)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  platform::PSSpecifiers specifiers() override;
  void viewDidLoad() override;
  // Resets the colour that is pressed, should the list hold one.
  void handleLongPress(const std::shared_ptr<platform::UILongPressGestureRecognizer>& press);
  // The row "backgroundImageTextCell" gets the stored image as its accessory, of the size that the
  // cell has just then; what is stored and is no image gives an empty one.
  std::shared_ptr<platform::UITableViewCell> cellForRowAtIndexPath(
      const std::shared_ptr<platform::UITableView>& tableView,
      platform::IndexPath indexPath) override;

  // Each opens a list of colours; nothing without a navigation controller around the page.
  void showGlobalColors();
  void showLightColors();
  void showDarkColors();

  // Hands the size that makes the toggles as wide as the screen has room for to the store, and
  // shows the rows anew. The store takes no floats: it raises NSInvalidArgumentException,
  // "-[HBPreferences setFloat:forKey:]: unrecognized selector sent to instance", and nothing is
  // stored.
  void restoreToggleSize();

  // Opens the image picker; asks first where an image is stored, which can be cleared then.
  void backgroundViewButtonPressed();
  // Dims the picker, encodes and stores the picture in the background, then shows it and takes the
  // picker away. A picture that cannot be encoded leaves what is stored.
  void didFinishPickingMediaWithInfo(
      const std::shared_ptr<platform::UIImagePickerController>& picker,
      const platform::Dictionary& info) override;

 private:
  platform::Value storedImage() const;
  void showColors(int style);
  void showThumbnail(platform::UITableViewCell& cell) const;
  void askAboutImage();
  void openImagePicker();
  void clearImage();
  void setImageRowTitle(const char* title);
  void storePicture(const platform::Value& picture);
};

}  // namespace zentrova

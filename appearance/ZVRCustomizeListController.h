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

// The page where the user sets the look of the control centre: it leads to three lists of colours
// and sets the background image and the size of the toggles. The page makes a new store whenever
// its rows are built; its next write loses what others have written to the file since.
// Threads: main. A chosen picture is encoded and stored in the background.
class ZVRCustomizeListController : public HBRootListController,
                                   public platform::UIImagePickerControllerDelegate {
  PLATFORM_CLASS(ZVRCustomizeListController)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  platform::PSSpecifiers specifiers() override;
  void viewDidLoad() override;
  // Resets the pressed colour, if the list has colour rows.
  void handleLongPress(const std::shared_ptr<platform::UILongPressGestureRecognizer>& press);
  // Sets the stored image as the accessory of the row "backgroundImageTextCell", sized after the
  // cell. A stored value that is not an image gives an empty accessory.
  std::shared_ptr<platform::UITableViewCell> cellForRowAtIndexPath(
      const std::shared_ptr<platform::UITableView>& tableView,
      platform::IndexPath indexPath) override;

  // Open a list of colours. Do nothing without a navigation controller.
  void showGlobalColors();
  void showLightColors();
  void showDarkColors();

  // Computes the widest toggle size for the screen, sends it to the store as "setFloat:forKey:" and
  // reloads the rows. The store does not have that operation: it raises NSInvalidArgumentException,
  // "-[HBPreferences setFloat:forKey:]: unrecognized selector sent to instance", and nothing is
  // stored.
  void restoreToggleSize();

  // Opens the image picker. If an image is stored, asks first whether to change or clear it.
  void backgroundViewButtonPressed();
  // Dims the picker, encodes and stores the picture in the background, then shows it and dismisses
  // the picker. If the picture cannot be encoded, the stored one is kept.
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

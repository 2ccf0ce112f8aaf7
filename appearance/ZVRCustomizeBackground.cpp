// The background image of the customize page.

#include <string>
#include <utility>

#include "appearance/BackgroundImage.h"
#include "appearance/CustomizeRows.h"
#include "appearance/ZVRCustomizeListController.h"
#include "platform/foundation/objects/NSLog.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/views/UIActivityIndicatorView.h"
#include "platform/uikit/views/UIImageView.h"

namespace zentrova {

using platform::UIAlertAction;
using platform::UIAlertActionStyle;
using platform::UIAlertController;
using platform::UIImage;
using platform::UIImagePickerController;
using platform::UITableView;
using platform::UITableViewCell;
using platform::UIView;
using platform::UIViewController;
using platform::Value;

namespace {

constexpr double thumbnailMargin = 3.0;
constexpr double thumbnailRadius = 5.0;
constexpr double dimmingSeconds = 0.3;
constexpr double dimmingAlpha = 0.5;

platform::Scheduler& scheduler() {
  return platform::Process::current().service<platform::Scheduler>();
}

void reloadTable(platform::Object& page) {
  if (const auto table = page.valueForKey("_table").as<UITableView>()) table->reloadData();
}

std::shared_ptr<UIAlertAction> choice(const char* title, std::function<void()> run) {
  return UIAlertAction::actionWithTitle(
      title, UIAlertActionStyle::standard,
      [run = std::move(run)](const std::shared_ptr<UIAlertAction>&) { run(); });
}

// Shows that the picture is being processed. The indicator is below the view that dims the picker.
void showBusy(const std::shared_ptr<UIView>& view) {
  const auto dimming = platform::makeWithFrame<UIView>(view->frame());
  dimming->setBackgroundColor(platform::UIColor::blackColor());
  dimming->setAlpha(0.0);
  const auto indicator =
      platform::make(&platform::UIActivityIndicatorView::initWithActivityIndicatorStyle,
                     platform::UIActivityIndicatorViewStyle::large);
  indicator->setCenter(view->center());
  indicator->setAlpha(0.0);
  indicator->startAnimating();
  view->addSubview(indicator);
  view->addSubview(dimming);
  view->setUserInteractionEnabled(false);
  UIView::animateWithDuration(dimmingSeconds, [&] {
    dimming->setAlpha(dimmingAlpha);
    indicator->setAlpha(1.0);
  });
}

}  // namespace

Value ZVRCustomizeListController::storedImage() const {
  const auto store = preferences();
  return store ? store->objectForKey(imageKey) : Value();
}

void ZVRCustomizeListController::setImageRowTitle(const char* title) {
  if (const auto row = specifierForID(std::string(imageButtonRow))) row->setName(title);
}

// --- The thumbnail ---

std::shared_ptr<UITableViewCell> ZVRCustomizeListController::cellForRowAtIndexPath(
    const std::shared_ptr<UITableView>& tableView, platform::IndexPath indexPath) {
  auto cell = HBRootListController::cellForRowAtIndexPath(tableView, indexPath);
  const auto row = specifierAtIndexPath(indexPath);
  if (cell && row && row->identifier() == imageThumbnailRow) showThumbnail(*cell);
  return cell;
}

void ZVRCustomizeListController::showThumbnail(UITableViewCell& cell) const {
  const Value stored = storedImage();
  if (!stored) {
    cell.setAccessoryView(nullptr);
    return;
  }
  const double side = cell.frame().height - thumbnailMargin;
  const auto thumbnail = platform::makeWithFrame<platform::UIImageView>({0, 0, side, side});
  if (const auto* data = stored.asData()) thumbnail->setImage(UIImage::imageWithData(*data));
  thumbnail->layer()->setCornerRadius(thumbnailRadius);
  thumbnail->setClipsToBounds(true);
  cell.setAccessoryView(thumbnail);
}

// --- The button ---

void ZVRCustomizeListController::backgroundViewButtonPressed() {
  if (storedImage()) {
    askAboutImage();
  } else {
    openImagePicker();
  }
}

void ZVRCustomizeListController::askAboutImage() {
  const auto sheet = UIAlertController::alertControllerWithTitle(
      "What would you like to do?", "Clearing the image will return to stock look.",
      platform::UIAlertControllerStyle::actionSheet);
  const auto page = weakSelf<ZVRCustomizeListController>();
  sheet->addAction(choice("Change image", [page] {
    if (const auto controller = page.lock()) controller->openImagePicker();
  }));
  sheet->addAction(choice("Clear image", [page] {
    if (const auto controller = page.lock()) controller->clearImage();
  }));
  sheet->addAction(UIAlertAction::actionWithTitle("Cancel", UIAlertActionStyle::cancel, nullptr));
  presentViewController(sheet, true);
}

void ZVRCustomizeListController::clearImage() {
  if (const auto store = preferences()) store->removeObjectForKey(imageKey);
  setImageRowTitle(setImageTitle);
  reloadTable(*this);
}

void ZVRCustomizeListController::openImagePicker() {
  const auto picker = platform::make<UIImagePickerController>();
  picker->setSourceType(platform::UIImagePickerControllerSourceType::photoLibrary);
  picker->setDelegate(self<ZVRCustomizeListController>());
  presentViewController(picker, true);
}

// --- The chosen picture ---

void ZVRCustomizeListController::didFinishPickingMediaWithInfo(
    const std::shared_ptr<UIImagePickerController>& picker, const platform::Dictionary& info) {
  if (picker) showBusy(picker->view());
  // Page and picker move on to the main queue, so that neither is destroyed in the background.
  scheduler().asyncGlobal([page = self<ZVRCustomizeListController>(),
                           shown = std::shared_ptr<UIViewController>(picker), info]() mutable {
    page->storePicture(info.valueForKey("UIImagePickerControllerOriginalImage"));
    scheduler().asyncMain([page = std::move(page), shown = std::move(shown)] {
      reloadTable(*page);
      if (shown) shown->dismissViewControllerAnimated(true);
    });
  });
}

void ZVRCustomizeListController::storePicture(const Value& picture) {
  const auto data = encodeBackgroundImage(picture.as<UIImage>());
  const std::size_t length = data ? data->size() : 0;
  platform::NSLog("zentrova imagedata: %i", {length});
  if (!data) return;
  if (const auto store = preferences()) store->setObject(*data, imageKey);
  setImageRowTitle(changeImageTitle);
}

}  // namespace zentrova

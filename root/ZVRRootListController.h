#pragma once

#include <memory>

#include "modules/ZVRFavoriteModules.h"
#include "platform/preferences/PSListController.h"
#include "platform/uikit/views/UILabel.h"
#include "prefs/HBRootListController.h"

namespace platform {
class ClassRegistry;
class NSFileHandle;
}  // namespace platform

namespace zentrova {

// The first page of the product's settings, and the bundle's principal class. Its rows come from
// the list "Root". While the presentation style is 1, the page adds two switches below it. On a
// tablet it drops the presentation and gesture rows. While the sibling product Kestrelle handles
// gestures, it locks the gesture row.
//
// A banner is shown above the rows. The title in the navigation bar is hidden at first and while
// the page is pulled down, and fades in when it is scrolled.
// Threads: main.
class ZVRRootListController : public HBRootListController {
  PLATFORM_CLASS(ZVRRootListController)

 public:
  using SubPage = std::shared_ptr<platform::UIViewController>;

  static void registerClass(platform::ClassRegistry& registry);

  // The rows, built on the first call and then kept.
  platform::PSSpecifiers specifiers() override;
  // Stores the value, then shows the two switches if the presentation style is 1, or hides them if
  // it is 0. Setting 1 twice adds a second pair of switches; the style row only reports changes. A
  // style that is neither a number nor a string raises NSInvalidArgumentException.
  void setPreferenceValue(const platform::Value& value,
                          const std::shared_ptr<platform::PSSpecifier>& specifier) override;
  // Reads Kestrelle's settings on every appearance. Once locked, the gesture row stays locked for
  // the life of the page. A "gesturesConfig" that is not a string raises
  // NSInvalidArgumentException.
  void viewDidAppear(bool animated) override;
  // Builds the header, asks the application to load the bundle behind its row "ControlCenter", and
  // hides the title of the outer navigation bar. Exceptions of the application are ignored.
  void viewDidLoad() override;
  // Hides the title of the inner navigation bar, the one of the page's own navigation controller.
  void viewDidLayoutSubviews() override;
  // Fades the outer title in if the offset is 0 or more, and out if it is negative.
  void scrollViewDidScroll(const std::shared_ptr<platform::UIScrollView>& scrollView) override;
  // Sets the picture of the maker's profile, which is a file on the device.
  std::shared_ptr<platform::UITableViewCell> cellForRowAtIndexPath(
      const std::shared_ptr<platform::UITableView>& tableView,
      platform::IndexPath indexPath) override;

  // Restarts the home screen, so that it rereads the settings.
  void respring();

  // Asks the package manager for the product's record and shows it in the version label, with every
  // "Version: " removed. Only the first chunk of the output is shown; a chunk that is not UTF-8
  // clears the label. Blocks until the program has ended; the main queue keeps running. Raises
  // "NoDataException" if nothing can be read from the program.
  void getCurrentVersion();
  // The label that shows the version. The application sets it; empty until then.
  const std::shared_ptr<platform::UILabel>& versionLabel() const noexcept { return _versionLabel; }
  void setVersionLabel(std::shared_ptr<platform::UILabel> label);

  // Open the pages behind the rows. Each page is made when it is first opened and kept as long as
  // this page lives, so that it keeps its state. Opening a page that is already open raises
  // NSInvalidArgumentException. The last two pages are made by class name; if the class is not
  // registered, nothing opens.
  void showFavoriteModulesViewController();
  void showModuleArrangeViewController();
  void showCustomizeViewController();

  // The pages, empty until they are first opened.
  const std::shared_ptr<ZVRFavoriteModules>& favoriteModulesViewController() const noexcept {
    return _favoriteModulesViewController;
  }
  void setFavoriteModulesViewController(std::shared_ptr<ZVRFavoriteModules> page);
  const SubPage& arrangeModulesViewController() const noexcept {
    return _arrangeModulesViewController;
  }
  void setArrangeModulesViewController(SubPage page);
  const SubPage& customizeViewController() const noexcept { return _customizeViewController; }
  void setCustomizeViewController(SubPage page);

 private:
  static bool isTablet();
  void addPresentationRows(platform::PSSpecifierList& rows);
  void showPresentationSwitches(const std::shared_ptr<platform::PSSpecifier>& styleRow);
  void hidePresentationSwitches();
  void lockGesturesSoon();
  void dissolveToLockedGestures();
  void lockGestureCell();
  void addHeader();
  void loadControlCenterBundle();
  void followScrolling();
  void push(const SubPage& page);

  void showVersion(platform::NSFileHandle& output);

  std::shared_ptr<platform::UILabel> _versionLabel;
  std::shared_ptr<ZVRFavoriteModules> _favoriteModulesViewController;
  SubPage _arrangeModulesViewController;
  SubPage _customizeViewController;
};

}  // namespace zentrova

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
// the list "Root"; it adds two switches below the presentation style while that is 1, leaves the
// presentation and gesture rows out on a tablet, and locks the gesture row while the sibling
// product Kestrelle is in charge of gestures.
//
// A banner stands above the rows. The title in the navigation bar is hidden at first and while the
// page is pulled down, and fades in as it is scrolled.
// Threads: main.
class ZVRRootListController : public HBRootListController {
  PLATFORM_CLASS(ZVRRootListController)

 public:
  using SubPage = std::shared_ptr<platform::UIViewController>;

  static void registerClass(platform::ClassRegistry& registry);

  // The rows, built on the first call and then kept.
  platform::PSSpecifiers specifiers() override;
  // Stores the value, then shows or hides the two switches where the presentation style became 1
  // or 0. A style of 1 while the switches are there adds a second pair: the style row reports
  // changes only. A style that is no number and no text raises NSInvalidArgumentException.
  void setPreferenceValue(const platform::Value& value,
                          const std::shared_ptr<platform::PSSpecifier>& specifier) override;
  // Looks at Kestrelle's settings on every appearance; a lock stays for the life of the page.
  // A "gesturesConfig" that is no text raises NSInvalidArgumentException.
  void viewDidAppear(bool animated) override;
  // Builds the header, asks the application to load what is behind its own row "ControlCenter",
  // and hides the title of the outer navigation bar. What the application raises is swallowed.
  void viewDidLoad() override;
  // Hides the title of the inner navigation bar, that of the page's own navigation controller.
  void viewDidLayoutSubviews() override;
  // Fades the outer title in where the offset is 0 or more, and out where it is below.
  void scrollViewDidScroll(const std::shared_ptr<platform::UIScrollView>& scrollView) override;
  // Gives the maker's profile its picture, which lies on the device.
  std::shared_ptr<platform::UITableViewCell> cellForRowAtIndexPath(
      const std::shared_ptr<platform::UITableView>& tableView,
      platform::IndexPath indexPath) override;

  // Restarts the home screen, so that it reads the settings anew.
  void respring();

  // Asks the package manager for the product's record and shows it in the version label, without
  // the words "Version: ". Only the first chunk of the answer is shown, and one that is no UTF-8
  // clears the label. Blocks until the program has ended, while the main queue goes on. Where
  // nothing can be read from the program, "NoDataException" is raised.
  void getCurrentVersion();
  // Where the version is shown; set from outside. Empty: nowhere.
  const std::shared_ptr<platform::UILabel>& versionLabel() const noexcept { return _versionLabel; }
  void setVersionLabel(std::shared_ptr<platform::UILabel> label);

  // The pages behind the rows: each is made on its first opening and kept as long as this page
  // lives, so that it keeps its state. Opening one that is open raises
  // NSInvalidArgumentException. Where the class of a page that is looked up by name is not there,
  // nothing opens.
  void showFavoriteModulesViewController();
  void showModuleArrangeViewController();
  void showCustomizeViewController();

  // The kept pages; empty before their first opening.
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

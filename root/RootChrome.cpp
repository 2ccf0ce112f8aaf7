// Parts of the root page other than its rows: the header, the titles of the navigation bars, and
// the picture of the maker's profile.

#include <memory>
#include <string_view>

#include "platform/foundation/objects/Class.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/values/Exception.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/tables/UITableView.h"
#include "platform/uikit/views/UIImageView.h"
#include "platform/uikit/views/UILabel.h"
#include "root/ZVRRootListController.h"

namespace zentrova {

using platform::NSLayoutConstraint;
using platform::UIImage;
using platform::UIImageView;
using platform::UINavigationController;
using platform::UIView;

namespace {

constexpr std::string_view bannerPath =
    "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle/Banner.png";
constexpr std::string_view avatarPath = "/var/jb/Library/Application Support/Zentrova/twitter.jpg";
constexpr std::string_view profileCellClass = "HBTwitterCell";
constexpr std::string_view makerProfile = "hollowmere";

constexpr double headerHeight = 100;
constexpr double bannerMargin = 50;
constexpr double titleFadeSeconds = 0.3;

void setTitleOpacity(const std::shared_ptr<UINavigationController>& navigation, double opacity) {
  if (navigation) navigation->navigationBar()->setTitleOpacity(opacity);
}

// The navigation controller around the page's own one. Its bar is the visible one.
std::shared_ptr<UINavigationController> outerNavigation(const ZVRRootListController& page) {
  const auto inner = page.navigationController();
  return inner ? inner->navigationController() : nullptr;
}

std::shared_ptr<UIImageView> makeBanner() {
  auto banner = platform::make<UIImageView>();
  banner->setImage(UIImage::imageWithContentsOfFile(bannerPath));
  banner->setContentMode(platform::UIViewContentMode::scaleAspectFit);
  banner->setTranslatesAutoresizingMaskIntoConstraints(false);
  return banner;
}

bool isMakersProfile(const platform::UITableViewCell& cell) {
  if (!cell.objectClass().isSubclassOf(profileCellClass)) return false;
  return cell.textLabel() && cell.textLabel()->text() == makerProfile;
}

}  // namespace

void ZVRRootListController::viewDidLoad() {
  HBRootListController::viewDidLoad();
  addHeader();
  loadControlCenterBundle();
  followScrolling();
  setTitleOpacity(outerNavigation(*this), 0);
}

void ZVRRootListController::addHeader() {
  const auto header = platform::makeWithFrame<UIView>({0, 0, view()->frame().width, headerHeight});
  const auto banner = makeBanner();
  header->addSubview(banner);
  NSLayoutConstraint::activateConstraints({
      banner->heightAnchor().constraintEqualToAnchor(header->heightAnchor()),
      banner->leadingAnchor().constraintEqualToAnchor(header->leadingAnchor(), bannerMargin),
      banner->trailingAnchor().constraintEqualToAnchor(header->trailingAnchor(), -bannerMargin),
  });
  if (const auto list = valueForKey("_table").as<platform::UITableView>()) {
    list->setTableHeaderView(header);
  }
}

// The page is shown even if the application has no such list or row, or cannot load the bundle.
void ZVRRootListController::loadControlCenterBundle() {
  try {
    const auto list = valueForKeyPath("_parentViewController._rootListController").asObject();
    if (!list) return;
    const auto row = list->perform("specifierForID:", {"ControlCenter"});
    list->perform("lazyLoadSpecialBundleForSpecifier:", {row});
  } catch (const platform::Exception&) {  // NOLINT(bugprone-empty-catch): see above
  }
}

void ZVRRootListController::followScrolling() {
  const auto scrolled = valueForKeyPath("_table._scrollView").as<platform::UIScrollView>();
  if (scrolled) scrolled->setDelegate(self<ZVRRootListController>());
}

void ZVRRootListController::viewDidLayoutSubviews() {
  HBRootListController::viewDidLayoutSubviews();
  setTitleOpacity(navigationController(), 0);
}

void ZVRRootListController::scrollViewDidScroll(
    const std::shared_ptr<platform::UIScrollView>& scrollView) {
  const double opacity = scrollView && scrollView->contentOffset().y < 0 ? 0 : 1;
  UIView::animateWithDuration(
      titleFadeSeconds, [this, opacity] { setTitleOpacity(outerNavigation(*this), opacity); });
}

std::shared_ptr<platform::UITableViewCell> ZVRRootListController::cellForRowAtIndexPath(
    const std::shared_ptr<platform::UITableView>& tableView, platform::IndexPath indexPath) {
  auto cell = HBRootListController::cellForRowAtIndexPath(tableView, indexPath);
  if (!cell || !isMakersProfile(*cell)) return cell;
  if (const auto icon = cell->valueForKey("iconImageView").as<UIImageView>()) {
    icon->setImage(UIImage::imageWithContentsOfFile(avatarPath));
    icon->setAlpha(1);
  }
  return cell;
}

}  // namespace zentrova

// How the root page locks its gesture row while the sibling product Kestrelle handles gestures.

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/uikit/controls/UISegmentedControl.h"
#include "platform/uikit/tables/UITableView.h"
#include "root/RootRows.h"
#include "root/ZVRRootListController.h"

namespace zentrova {

using platform::UISegmentedControl;
using platform::UIView;

namespace {

constexpr const char* kestrelleDomain = "com.hollowmere.kestrelleprefs";
constexpr double lockDelaySeconds = 0.1;
constexpr double dissolveSeconds = 0.3;
constexpr double lockedAlpha = 0.6;

// Kestrelle's settings show these values as "Lower" and "Both".
bool kestrelleOwnsGestures() {
  const auto store = HBPreferences::preferencesForIdentifier(kestrelleDomain);
  const auto config = store->objectForKey("gesturesConfig", "0");
  if (!config.isEqualToString("0") && !config.isEqualToString("2")) return false;
  return store->boolForKey("useGestures");
}

void selectFirstSegment(const UIView& view) {
  for (const auto& subview : view.subviews()) {
    if (const auto segments = std::dynamic_pointer_cast<UISegmentedControl>(subview)) {
      segments->setSelectedSegmentIndex(0);
      return;
    }
  }
}

}  // namespace

void ZVRRootListController::viewDidAppear(bool animated) {
  HBRootListController::viewDidAppear(animated);
  if (!kestrelleOwnsGestures() || isTablet()) return;
  if (const auto group = specifierForID(std::string(gestureGroupRow))) {
    group->setProperty(kestrelleFooter, "footerText");
  }
  lockGesturesSoon();
}

// The pending work keeps the page alive until the row is locked.
void ZVRRootListController::lockGesturesSoon() {
  platform::Process::current().service<platform::Scheduler>().mainAfter(
      lockDelaySeconds,
      [page = self<ZVRRootListController>()] { page->dissolveToLockedGestures(); });
}

void ZVRRootListController::dissolveToLockedGestures() {
  const auto table = valueForKey("_table").as<platform::UITableView>();
  UIView::transitionWithView(
      table, dissolveSeconds, platform::UIViewAnimationOptionTransitionCrossDissolve,
      [table] {
        if (table) table->reloadData();
      },
      [page = self<ZVRRootListController>()](bool) { page->lockGestureCell(); });
}

// Changes the segment on the screen only; the stored value stays.
void ZVRRootListController::lockGestureCell() {
  const auto cell = cachedCellForSpecifierID(std::string(gestureSegmentRow));
  if (!cell) return;
  cell->setUserInteractionEnabled(false);
  cell->setAlpha(lockedAlpha);
  for (const auto& subview : cell->subviews()) selectFirstSegment(*subview);
}

}  // namespace zentrova

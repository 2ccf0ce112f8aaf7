#include "appearance/CustomizePages.h"

#include "platform/foundation/objects/Class.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/tables/UITableView.h"

namespace zentrova {

using platform::UIGestureRecognizerState;
using platform::UILongPressGestureRecognizer;
using platform::UITableView;

namespace {

constexpr double pressSeconds = 1.0;

// Compared by name, so that the page works without the class.
bool isColorCell(const platform::Object& cell) {
  return cell.objectClass().isSubclassOf("HBColorPickerTableCell");
}

}  // namespace

void showLargeTitle(platform::UIViewController& page) {
  page.navigationItem()->setLargeTitleDisplayMode(
      platform::UINavigationItemLargeTitleDisplayMode::always);
  if (const auto navigation = page.navigationController()) {
    navigation->navigationBar()->setPrefersLargeTitles(true);
  }
}

void addLongPress(const std::shared_ptr<HBRootListController>& page) {
  const auto table = page->valueForKey("_table").as<UITableView>();
  if (!table) return;
  const auto press = std::make_shared<UILongPressGestureRecognizer>();
  if (!press->initWithTarget(page, "handleLongPress:")) return;
  press->setMinimumPressDuration(pressSeconds);
  press->setCancelsTouchesInView(true);
  table->addGestureRecognizer(press);
}

void resetPressedColor(HBRootListController& page,
                       const std::shared_ptr<UILongPressGestureRecognizer>& press) {
  const auto table = page.valueForKey("_table").as<UITableView>();
  if (!table || !press) return;
  const auto path = table->indexPathForRowAtPoint(press->locationInView(table));
  if (press->state() != UIGestureRecognizerState::began || !path) return;
  const auto cell = page.cellForRowAtIndexPath(table, *path);
  if (!cell || !isColorCell(*cell)) return;
  if (const auto store = page.preferences()) {
    store->_setObject(resetColorValue, cell->perform("_hbcp_key"));
  }
  cell->perform("_updateValue");
}

}  // namespace zentrova

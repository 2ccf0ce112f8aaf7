#pragma once

#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/views/UIImageView.h"
#include "tests/appearance/AppearanceFixture.h"

namespace zentrova::tests {

// The customize page with a test list.
class CustomizeTest : public AppearanceTest {
 protected:
  static std::vector<platform::Value> allRows() {
    return {plainRow("PSGroupCell", "group"),
            plainRow("PSStaticTextCell", "backgroundImageTextCell"),
            button("backgroundImageCell", "backgroundViewButtonPressed"),
            button("globalColors", "showGlobalColors"),
            button("lightColors", "showLightColors"),
            button("darkColors", "showDarkColors"),
            platform::Dictionary{{"cell", "PSSwitchCell"},
                                 {"id", "insetStyle"},
                                 {"key", "insetStyle"},
                                 {"default", false},
                                 {"label", "Inset"}},
            button("restoreToggleSize", "restoreToggleSize"),
            colorRow("accent", "red")};
  }
  std::shared_ptr<ZVRCustomizeListController> makePage() {
    return std::dynamic_pointer_cast<ZVRCustomizeListController>(
        process.classes().find("ZVRCustomizeListController")->makeInstance());
  }
  std::shared_ptr<ZVRCustomizeListController> showPage(
      std::vector<platform::Value> rows = allRows()) {
    writeList("Customize", std::move(rows), "Title of the list");
    page = show(makePage());
    return page;
  }
  std::string buttonTitle() {
    return page->specifierForID("backgroundImageCell")->name().value_or("(null)");
  }
  std::string shownButtonTitle() {
    window->layoutIfNeeded();
    return cellOf(*page, "backgroundImageCell")->textLabel()->text().value_or("(null)");
  }
  std::shared_ptr<platform::UIImageView> thumbnail() {
    window->layoutIfNeeded();
    const auto cell = cellOf(*page, "backgroundImageTextCell");
    return std::dynamic_pointer_cast<platform::UIImageView>(cell->accessoryView());
  }
  template <class T>
  std::shared_ptr<T> presented() {
    return std::dynamic_pointer_cast<T>(page->presentedViewController());
  }
  std::shared_ptr<platform::UIAlertController> sheet() {
    return presented<platform::UIAlertController>();
  }

  std::shared_ptr<ZVRCustomizeListController> page;
};

}  // namespace zentrova::tests

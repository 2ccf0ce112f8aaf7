#pragma once

#include <cstdint>
#include <memory>

#include "platform/uikit/views/UILongPressGestureRecognizer.h"
#include "prefs/HBRootListController.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// A list of colours for both appearances (style 0), the light one (1) or the dark one (2). The
// colour rows write the preference file themselves. A reset goes through the page's store, which
// was loaded with the page, so it loses the colours picked on this page before. Threads: main.
class ZVRCustomizeColorListViewController : public HBRootListController {
  PLATFORM_CLASS(ZVRCustomizeColorListViewController)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  virtual bool initWithStyle(std::int64_t style);

  std::int64_t style() const noexcept { return _style; }
  // Has no effect once the rows are loaded.
  void setStyle(std::int64_t style) { _style = style; }

  // The rows of the style's list; an empty pointer for an unknown style.
  platform::PSSpecifiers specifiers() override;
  void viewDidLoad() override;
  // Resets the pressed colour.
  void handleLongPress(const std::shared_ptr<platform::UILongPressGestureRecognizer>& press);

 private:
  std::int64_t _style = 0;
};

}  // namespace zentrova

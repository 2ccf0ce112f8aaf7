#pragma once

#include <cstdint>
#include <memory>

#include "platform/uikit/views/UILongPressGestureRecognizer.h"
#include "prefs/HBRootListController.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// A list of colours: those for both appearances (style 0), for the light one (1) or for the dark
// one (2). The colour rows write the preference file themselves; a reset goes through the page's
// store, which is as old as the page: a colour picked before it on this page is lost.
// Threads: main.
class ZVRCustomizeColorListViewController : public HBRootListController {
  PLATFORM_CLASS(ZVRCustomizeColorListViewController)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  virtual bool initWithStyle(std::int64_t style);

  std::int64_t style() const noexcept { return _style; }
  // Has an effect as long as the rows have not been asked for.
  void setStyle(std::int64_t style) { _style = style; }

  // The rows of the style's list; an empty pointer for any other style.
  platform::PSSpecifiers specifiers() override;
  void viewDidLoad() override;
  // Resets the colour that is pressed.
  void handleLongPress(const std::shared_ptr<platform::UILongPressGestureRecognizer>& press);

 private:
  std::int64_t _style = 0;
};

}  // namespace zentrova

#pragma once

#include <memory>

#include "platform/foundation/Class.h"
#include "platform/preferences/PSListController.h"
#include "platform/uikit/UINavigationController.h"

namespace settings {

// The navigation of the Settings application that holds the bundle's pages. Pages find the
// application's own first page through its value "_rootListController". Threads: main.
class RootController final : public platform::UINavigationController {
  PLATFORM_CLASS(PSRootController)

 public:
  // The application's own first page, which is never shown; made on the first call. It has a row
  // "ControlCenter", as on a device.
  std::shared_ptr<platform::PSListController> rootListController();

 private:
  std::shared_ptr<platform::PSListController> _rootList;
};

// Needs the classes of UIKit and of the settings lists.
void registerRootController(platform::ClassRegistry& registry);

}  // namespace settings

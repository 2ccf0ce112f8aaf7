#pragma once

#include "platform/preferences/PSListController.h"
#include "prefs/HBRootListController.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// The page behind the row "Vibration". Its rows come from the list "Vibration". Threads: main.
class ZVRVibrationListController : public HBRootListController {
  PLATFORM_CLASS(ZVRVibrationListController)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  // The rows, loaded on the first call and then kept.
  platform::PSSpecifiers specifiers() override;
};

}  // namespace zentrova

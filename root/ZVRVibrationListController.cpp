#include "root/ZVRVibrationListController.h"

#include "platform/foundation/objects/ClassBuilder.h"

namespace zentrova {

platform::PSSpecifiers ZVRVibrationListController::specifiers() {
  if (!keptSpecifiers())
    keepSpecifiers(loadSpecifiersFromPlistName("Vibration", shared_from_this()));
  return keptSpecifiers();
}

void ZVRVibrationListController::registerClass(platform::ClassRegistry& registry) {
  registry.add(platform::ClassBuilder<ZVRVibrationListController>("HBRootListController").build());
}

}  // namespace zentrova

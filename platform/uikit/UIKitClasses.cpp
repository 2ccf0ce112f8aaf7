#include "platform/uikit/UIKitClasses.h"

#include "platform/foundation/objects/Class.h"
#include "platform/uikit/UIKitClassTables.h"

namespace platform {

void registerUIKitClasses(ClassRegistry& registry) {
  registerValueClasses(registry);
  registerViewClasses(registry);
  registerControlClasses(registry);
  registerTableClasses(registry);
  registerControllerClasses(registry);
}

}  // namespace platform

#pragma once

#include "platform/foundation/objects/Class.h"

namespace platform {

// Registers the classes of the settings lists. Those of the views and controllers must be there.
void registerPreferencesClasses(ClassRegistry& registry);

}  // namespace platform

#pragma once

#include "platform/foundation/objects/Class.h"

namespace platform {

// Registers the classes of the settings lists. The classes of UIKit must be registered before.
void registerPreferencesClasses(ClassRegistry& registry);

}  // namespace platform

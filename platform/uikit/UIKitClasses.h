#pragma once

namespace platform {

class ClassRegistry;

// Registers every class of this folder with its base, the operations that are called by name
// ("_setTitleOpacity:", "setText:", "systemRedColor") and the values that are read by key ("text",
// "_scrollView", "_parentViewController").
void registerUIKitClasses(ClassRegistry& registry);

}  // namespace platform

#pragma once

namespace platform {

class ClassRegistry;

// Registers every class of this folder with its base, the operations that are meaningful by name
// ("_setTitleOpacity:", "setText:", "systemRedColor") and the values read by key ("text",
// "_scrollView", "_parentViewController").
void registerUIKitClasses(ClassRegistry& registry);

}  // namespace platform

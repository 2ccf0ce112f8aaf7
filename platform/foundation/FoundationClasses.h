#pragma once

namespace platform {

class ClassRegistry;

// Registers the classes of this folder that are looked up by name (NSMutableDictionary,
// NSNotificationCenter, NSTask, NSPipe, NSFileHandle). Every registry already has NSObject.
void registerFoundationClasses(ClassRegistry& classes);

}  // namespace platform

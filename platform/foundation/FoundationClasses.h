#pragma once

namespace platform {

class ClassRegistry;

// Adds the classes of this folder that are looked up by name (NSMutableDictionary,
// NSNotificationCenter, NSTask, NSPipe, NSFileHandle). NSObject is in every registry.
void registerFoundationClasses(ClassRegistry& classes);

}  // namespace platform

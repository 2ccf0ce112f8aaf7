#pragma once

namespace platform {

class ClassRegistry;

// Parts of registerUIKitClasses. Each registers base classes before the classes derived from them.
void registerValueClasses(ClassRegistry& registry);
void registerViewClasses(ClassRegistry& registry);
void registerControlClasses(ClassRegistry& registry);
void registerTableClasses(ClassRegistry& registry);
void registerControllerClasses(ClassRegistry& registry);

}  // namespace platform

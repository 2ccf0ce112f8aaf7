#pragma once

namespace platform {

class ClassRegistry;

// The parts of registerUIKitClasses, in the order of their bases.
void registerValueClasses(ClassRegistry& registry);
void registerViewClasses(ClassRegistry& registry);
void registerControlClasses(ClassRegistry& registry);
void registerTableClasses(ClassRegistry& registry);
void registerControllerClasses(ClassRegistry& registry);

}  // namespace platform

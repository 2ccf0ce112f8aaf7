#pragma once

namespace platform {

class ClassRegistry;

// The interface between the Settings application and a settings bundle. A bundle is a folder whose
// Info.plist names its executable (CFBundleExecutable, a shared object in the same folder) and its
// principal class (NSPrincipalClass). The application loads the object, calls its C function, and
// makes the principal class by name. It sends everything else by name, too.

// Incremented with every incompatible change: to the layout of the platform's classes, to a virtual
// function, or to an operation sent by name.
inline constexpr unsigned bundleInterfaceVersion = 1;

// The symbol of the function in the loaded object.
inline constexpr const char* bundleRegisterSymbol = "zentrova_bundle_register";

// The results of the function.
enum BundleRegisterResult : int {
  bundleRegistered = 0,
  bundleInterfaceDiffers = 1,  // built for another version; nothing has been registered
  bundleClassRefused = 2,      // a class name is taken or its base class is unknown
  bundleRegistryMissing = 3,   // the registry is null
};

using BundleRegisterFunction = int (*)(ClassRegistry* registry, unsigned interfaceVersion);

}  // namespace platform

// Registers the bundle's classes. `interfaceVersion` is the caller's bundleInterfaceVersion. Throws
// nothing. The classes refer to code of the loaded object, so it must stay loaded as long as the
// registry or any object of these classes lives.
// Threads: only while no other thread uses the registry.
extern "C" __attribute__((visibility("default"))) int zentrova_bundle_register(
    platform::ClassRegistry* registry, unsigned interfaceVersion);

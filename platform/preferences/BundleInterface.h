#pragma once

namespace platform {

class ClassRegistry;

// How the Settings application and a settings bundle meet. A bundle is a folder whose Info.plist
// names its executable (CFBundleExecutable, a shared object beside it) and its principal class
// (NSPrincipalClass). The application loads the object, calls its one C function, and makes the
// principal class by name; whatever else it needs of the bundle it sends by name.

// Counts up with every change that makes an older application or bundle misunderstand the other:
// in the layout of the platform's classes, in a virtual function, in what is sent by name.
inline constexpr unsigned bundleInterfaceVersion = 1;

// The name under which the function is found in the loaded object.
inline constexpr const char* bundleRegisterSymbol = "zentrova_bundle_register";

// What the function answers.
enum BundleRegisterResult : int {
  bundleRegistered = 0,
  bundleInterfaceDiffers = 1,  // built for another version; nothing has been registered
  bundleClassRefused = 2,      // a class name is taken or its base class is unknown
  bundleRegistryMissing = 3,   // the registry is null
};

using BundleRegisterFunction = int (*)(ClassRegistry* registry, unsigned interfaceVersion);

}  // namespace platform

// Registers the bundle's classes. `interfaceVersion` is the caller's bundleInterfaceVersion. No
// exception leaves it. The classes hold code of the loaded object, which must stay loaded for as
// long as the registry or any object of these classes lives.
// Threads: while no other thread uses the registry.
extern "C" __attribute__((visibility("default"))) int zentrova_bundle_register(
    platform::ClassRegistry* registry, unsigned interfaceVersion);

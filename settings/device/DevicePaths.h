#pragma once

#include <string_view>

// Paths that are the same on every device. Paths of the product are in Product.h.
namespace settings {

// A link to the folder that holds everything that is not part of the system.
inline constexpr std::string_view installRoot = "/var/jb";
inline constexpr std::string_view preferencesPath = "/var/jb/var/mobile/Library/Preferences";
inline constexpr std::string_view moduleConfigurationPath =
    "/var/jb/var/mobile/Library/ControlCenter/ModuleConfiguration_CCSupport.plist";
inline constexpr std::string_view systemModulesPath = "/System/Library/ControlCenter/Bundles";
inline constexpr std::string_view addedModulesPath = "/var/jb/Library/ControlCenter/Bundles";
// A property list whose root is an array: the modules that cannot be favourites.
inline constexpr std::string_view forbiddenModulesPath =
    "/var/jb/Library/ControlCenter/ForbiddenModules.plist";
inline constexpr std::string_view photosPath = "/var/mobile/Media/DCIM/100APPLE";
// If PROGRAM has a file next to it with this suffix, the stand-in prints that file instead of its
// own output.
inline constexpr std::string_view programOutputSuffix = ".stdout";

}  // namespace settings

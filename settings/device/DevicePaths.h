#pragma once

#include <string_view>

// Where things lie on every device. What belongs to the product is in Product.h.
namespace settings {

// A link to the folder that everything beside the system is installed in.
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
// A file with this text after a stand-in's path is printed by it in place of its own output.
inline constexpr std::string_view programOutputSuffix = ".stdout";

}  // namespace settings

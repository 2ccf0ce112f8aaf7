#pragma once

#include <string_view>

// What is particular to the product whose settings are shown, and to the program that shows them.
// Nothing else in settings/ knows these names.
namespace settings {

// The program, as people start it, and the variable of the environment that names a device.
inline constexpr std::string_view programName = "zentrova-settings";
inline constexpr std::string_view deviceVariable = "ZENTROVA_DEVICE";
// The first part of the name of the browser's session cookie.
inline constexpr std::string_view cookiePrefix = "zentrova-session-";

// The bundle: its folder, the file in it that holds its code, and where it is installed.
inline constexpr std::string_view bundleFolderName = "ZentrovaPrefs.bundle";
inline constexpr std::string_view bundleCodeName = "ZentrovaPrefs";
inline constexpr std::string_view bundlePath =
    "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle";
// Classes of the bundle that commands ask by name: its store, and the cell that knows colours.
inline constexpr std::string_view storeClassName = "HBPreferences";
inline constexpr std::string_view colourCellClassName = "HBColorPickerTableCell";
// The class of the product's main component that the bundle asks for the forbidden modules.
inline constexpr std::string_view moduleRepositoryClassName = "ZVModuleRepository";

// The product's settings, and its Application Support folder.
inline constexpr std::string_view productDomain = "com.hollowmere.zentrovaprefs";
inline constexpr std::string_view productPreferencesPath =
    "/var/jb/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist";
inline constexpr std::string_view supportPath = "/var/jb/Library/Application Support/Zentrova";

// The package that the product is installed from, and what the device says of it.
inline constexpr std::string_view packageIdentifier = "com.hollowmere.zentrova";
inline constexpr std::string_view packageMaintainer = "Hollowmere";
inline constexpr std::string_view packageDescription = "A replacement for Control Center.";

// A device tree: the folder that "/var/jb" leads to, the file that says that a folder is such a
// tree with its kind, and the files in which the stand-ins of programs note what they did.
inline constexpr std::string_view jailbreakFolder = "/private/preboot/hollowmere/jb";
inline constexpr std::string_view treeMarkPath = "/.zentrova-device.plist";
inline constexpr std::string_view treeKind = "zentrova-device-tree";
// Every start of a stand-in, one line: its path on the device and its arguments, tabs between.
inline constexpr std::string_view programLogPath = "/var/log/zentrova-programs.log";
// One line for every time that the home screen was restarted.
inline constexpr std::string_view homeScreenLogPath = "/var/log/zentrova-home-screen.log";

}  // namespace settings

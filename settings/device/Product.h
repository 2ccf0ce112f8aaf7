#pragma once

#include <string_view>

// The facts that are specific to the product whose settings are shown, and to this program. Nothing
// else in settings/ contains these names.
namespace settings {

// The program's name on the command line, and the environment variable that names a device.
inline constexpr std::string_view programName = "zentrova-settings";
inline constexpr std::string_view deviceVariable = "ZENTROVA_DEVICE";
// The prefix of the browser's session cookie.
inline constexpr std::string_view cookiePrefix = "zentrova-session-";

// The bundle: its folder, the file with its code, and the path where it is installed.
inline constexpr std::string_view bundleFolderName = "ZentrovaPrefs.bundle";
inline constexpr std::string_view bundleCodeName = "ZentrovaPrefs";
inline constexpr std::string_view bundlePath =
    "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle";
// Classes of the bundle that commands look up by name: its store, and the cell that converts
// colours.
inline constexpr std::string_view storeClassName = "HBPreferences";
inline constexpr std::string_view colourCellClassName = "HBColorPickerTableCell";
// The class of the product's main component that the bundle asks for the forbidden modules.
inline constexpr std::string_view moduleRepositoryClassName = "ZVModuleRepository";

// The product's settings, and its Application Support folder.
inline constexpr std::string_view productDomain = "com.hollowmere.zentrovaprefs";
inline constexpr std::string_view productPreferencesPath =
    "/var/jb/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist";
inline constexpr std::string_view supportPath = "/var/jb/Library/Application Support/Zentrova";

// The package that installs the product, and its fields in the device's package database.
inline constexpr std::string_view packageIdentifier = "com.hollowmere.zentrova";
inline constexpr std::string_view packageMaintainer = "Hollowmere";
inline constexpr std::string_view packageDescription = "A replacement for Control Center.";

// A device tree: the target of "/var/jb", the file that marks a folder as a device tree with its
// kind, and the files in which the stand-ins log what they did.
inline constexpr std::string_view jailbreakFolder = "/private/preboot/hollowmere/jb";
inline constexpr std::string_view treeMarkPath = "/.zentrova-device.plist";
inline constexpr std::string_view treeKind = "zentrova-device-tree";
// Each start of a stand-in, one per line: its path on the device and its arguments, separated by
// tabs.
inline constexpr std::string_view programLogPath = "/var/log/zentrova-programs.log";
// One line for each restart of the home screen.
inline constexpr std::string_view homeScreenLogPath = "/var/log/zentrova-home-screen.log";

}  // namespace settings

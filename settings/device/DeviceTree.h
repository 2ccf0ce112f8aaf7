#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace settings {

class DeviceTree;

struct DeviceTreeOptions {
  // The built bundle to install. Empty: the one that lies beside the running program (see
  // findBuiltBundle).
  std::filesystem::path bundle;
};

// A device tree, or why there is none.
struct DeviceTreeResult;

// What a device tree holds, for people and scripts. Paths are the device's.
struct DeviceDescription {
  std::string folder;                        // on this machine, absolute
  std::int64_t format = 0;                   // of the tree's layout
  std::string jailbreakFolder;               // what "/var/jb" leads to, as the link has it
  std::string bundlePath;                    // empty where the bundle is not installed
  std::string bundleVersion;                 // from its Info.plist; empty where there is none
  std::vector<std::string> preferenceFiles;  // names
  std::vector<std::string> modules;          // identifiers of the installed modules
  std::vector<std::string> photos;           // names
  std::vector<std::string> programs;         // paths of the stand-ins
};

// A folder of this machine that stands for "/" of a device: preferences, the installed bundle,
// modules, photos, and stand-ins for the programs that the bundle starts.
//
// The object only remembers where the folder is. Nothing here guards against another program that
// changes the folder at the same time.
class DeviceTree {
 public:
  // Makes a tree at `directory`, which must be missing or empty; folders above it are made. The
  // tree is built beside it and renamed into place: after a failure there is none.
  static DeviceTreeResult create(const std::filesystem::path& directory,
                                 const DeviceTreeOptions& options = {});
  // An existing tree. Refuses a folder that is no device tree, or one of another format.
  static DeviceTreeResult open(const std::filesystem::path& directory);

  // The absolute path on this machine.
  const std::filesystem::path& root() const noexcept { return _root; }

  DeviceDescription describe() const;
  // Makes the tree as new; everything that was changed or put there is gone. No text where that
  // was done, else what went wrong, and the tree is as it was.
  std::optional<std::string> reset(const DeviceTreeOptions& options = {}) const;
  // Installs the bundle anew, as after a build; nothing else changes. Answers as reset.
  std::optional<std::string> installBundle(const DeviceTreeOptions& options = {}) const;

 private:
  explicit DeviceTree(std::filesystem::path root) : _root(std::move(root)) {}

  std::filesystem::path _root;
};

struct DeviceTreeResult {
  std::optional<DeviceTree> tree;
  std::string problem;  // for people: what is wrong and what to do; empty where there is a tree
  explicit operator bool() const noexcept { return tree.has_value(); }
};

// The bundle that was built together with the running program: "ZentrovaPrefs.bundle" in the
// folder above the program's, or in "lib/zentrova-settings" there. Empty where there is none.
std::filesystem::path findBuiltBundle();

// Where things lie in a device tree.
inline constexpr std::string_view bundlePath =
    "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle";
inline constexpr std::string_view supportPath = "/var/jb/Library/Application Support/Zentrova";
inline constexpr std::string_view preferencesPath = "/var/jb/var/mobile/Library/Preferences";
// The product's settings.
inline constexpr std::string_view productPreferencesPath =
    "/var/jb/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist";
inline constexpr std::string_view moduleConfigurationPath =
    "/var/jb/var/mobile/Library/ControlCenter/ModuleConfiguration_CCSupport.plist";
inline constexpr std::string_view systemModulesPath = "/System/Library/ControlCenter/Bundles";
inline constexpr std::string_view addedModulesPath = "/var/jb/Library/ControlCenter/Bundles";
// A property list whose root is an array: the modules that cannot be favourites.
inline constexpr std::string_view forbiddenModulesPath =
    "/var/jb/Library/ControlCenter/ForbiddenModules.plist";
inline constexpr std::string_view photosPath = "/var/mobile/Media/DCIM/100APPLE";
// Every start of a stand-in, one line: its path on the device and its arguments, tabs between.
inline constexpr std::string_view programLogPath = "/var/log/zentrova-programs.log";
// One line for every time that the home screen was restarted.
inline constexpr std::string_view homeScreenLogPath = "/var/log/zentrova-home-screen.log";
// A file with this text after a stand-in's path is printed by it in place of its own output.
inline constexpr std::string_view programOutputSuffix = ".stdout";

}  // namespace settings

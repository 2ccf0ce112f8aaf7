#pragma once

#include <string_view>
#include <vector>

#include "settings/device/Glyphs.h"

namespace settings {

class TreeWriter;

// A Control Center module of a new device tree.
struct InstalledModule {
  std::string_view identifier;
  std::string_view name;  // as the system shows it
  Paint colour;
  Glyph glyph;
  bool system;   // comes with the system; else it was added by a package
  bool enabled;  // listed in the module configuration of a new tree
};

const std::vector<InstalledModule>& installedModules();

// Adds a folder for each module, with Info.plist and icon.png, the module configuration, the list
// of those that cannot be favourites, and the settings with four favourites. (Without a stored list
// of favourites the page that chooses them takes none.)
void addInstalledModules(TreeWriter& writer);

}  // namespace settings

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

// Adds a folder for each module, with Info.plist and icon.png, and the module configuration.
void addInstalledModules(TreeWriter& writer);

}  // namespace settings

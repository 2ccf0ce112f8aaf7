#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace settings {

class TreeWriter;

// The version of a device tree's layout, which is stored in its mark.
inline constexpr std::int64_t treeFormat = 1;

// Fills an empty folder with the content of a new device tree. Returns an error for the user; empty
// on success.
std::string fillTree(const std::filesystem::path& root, const std::filesystem::path& bundle);

// Adds the content of the sample device (settings/device/sample): its modules with the lists of
// enabled and forbidden modules, its photos, and the settings and Application Support folder of the
// product on a device in use.
void addSample(TreeWriter& writer);

}  // namespace settings

#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace settings {

class TreeWriter;

// The layout of a device tree, which its mark says.
inline constexpr std::int64_t treeFormat = 1;

// Fills an empty folder with everything that a new device tree holds. For people: what went
// wrong; empty where nothing did.
std::string fillTree(const std::filesystem::path& root, const std::filesystem::path& bundle);

// Adds the content of the sample device (settings/device/sample): its modules with the lists of
// those that are enabled and of those that cannot be favourites, its photos, and the product's
// settings and Application Support folder as they are on a device in use.
void addSample(TreeWriter& writer);

}  // namespace settings

#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace settings {

// Says that a folder is a device tree, and which layout it has.
inline constexpr std::string_view treeMarkPath = "/.zentrova-device.plist";
inline constexpr std::int64_t treeFormat = 1;

// Fills an empty folder with everything that a new device tree holds. For people: what went
// wrong; empty where nothing did.
std::string fillTree(const std::filesystem::path& root, const std::filesystem::path& bundle);

}  // namespace settings

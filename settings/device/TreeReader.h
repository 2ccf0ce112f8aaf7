#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/values/Collections.h"
#include "settings/device/DeviceDescription.h"

namespace settings {

// Reads a folder that may be a device tree. A file that cannot be read counts as missing.
class TreeReader {
 public:
  explicit TreeReader(std::filesystem::path root) : _root(std::move(root)) {}

  // The version of the tree's layout; empty if the folder is not a device tree.
  std::optional<std::int64_t> format() const;
  DeviceDescription describe() const;

 private:
  std::filesystem::path hostPath(std::string_view path) const;
  // File names in a folder of the device, sorted.
  std::vector<std::string> names(std::string_view path) const;
  platform::Dictionary propertyList(std::string_view path) const;
  std::vector<std::string> moduleIdentifiers(std::string_view folder) const;

  std::filesystem::path _root;
};

}  // namespace settings

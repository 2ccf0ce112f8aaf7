#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "settings/device/DeviceDescription.h"

namespace settings {

class DeviceTree;

struct DeviceTreeOptions {
  // The built bundle to install. If empty, findBuiltBundle is used.
  std::filesystem::path bundle;
};

// A device tree, or the reason why it could not be made or opened.
struct DeviceTreeResult;

// A folder of this machine that acts as "/" of a device. It holds preferences, the installed
// bundle, modules, photos, and stand-ins for the programs that the bundle starts.
//
// The object stores only the path. It does not guard against other programs that change the folder
// at the same time.
class DeviceTree {
 public:
  // Creates a tree at `directory`, which must be missing or empty. Creates missing parent folders.
  // Builds the tree in a temporary folder and renames it, so a failure leaves no partial tree.
  static DeviceTreeResult create(const std::filesystem::path& directory,
                                 const DeviceTreeOptions& options = {});
  // Opens an existing tree. Fails if the folder is not a device tree or has another format.
  static DeviceTreeResult open(const std::filesystem::path& directory);

  // The absolute path on this machine.
  const std::filesystem::path& root() const noexcept { return _root; }

  DeviceDescription describe() const;
  // Restores the tree to its initial content; all changes are lost. Returns an empty string on
  // success. Otherwise returns the error and leaves the tree unchanged.
  std::optional<std::string> reset(const DeviceTreeOptions& options = {}) const;
  // Reinstalls the bundle, for example after a build; changes nothing else. Returns the same as
  // reset.
  std::optional<std::string> installBundle(const DeviceTreeOptions& options = {}) const;

 private:
  explicit DeviceTree(std::filesystem::path root) : _root(std::move(root)) {}

  std::filesystem::path _root;
};

struct DeviceTreeResult {
  std::optional<DeviceTree> tree;
  std::string problem;  // what is wrong and what to do, for the user; empty on success
  explicit operator bool() const noexcept { return tree.has_value(); }
};

}  // namespace settings

#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "settings/device/DeviceDescription.h"

namespace settings {

class DeviceTree;

struct DeviceTreeOptions {
  // The built bundle to install. Empty: the one that lies beside the running program (see
  // findBuiltBundle).
  std::filesystem::path bundle;
};

// A device tree, or why there is none.
struct DeviceTreeResult;

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

}  // namespace settings

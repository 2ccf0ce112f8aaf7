#include "settings/device/DeviceTree.h"

#include <system_error>
#include <utility>

#include "settings/device/BundleInstallation.h"
#include "settings/device/Product.h"
#include "settings/device/TreeContents.h"
#include "settings/device/TreeFolders.h"
#include "settings/device/TreeReader.h"

namespace settings {

namespace fs = std::filesystem;

namespace {

DeviceTreeResult refused(std::string problem) {
  return {std::nullopt, std::move(problem)};
}

// Returns the absolute path without a trailing slash. Does not resolve links.
fs::path absolutePath(const fs::path& directory) {
  std::error_code error;
  fs::path path = fs::absolute(directory, error).lexically_normal();
  return path.has_filename() ? path : path.parent_path();
}

// Returns why a new tree cannot be made there; empty if it can.
std::string obstacleAt(const fs::path& path) {
  std::error_code error;
  const auto status = fs::symlink_status(path, error);
  if (status.type() == fs::file_type::not_found) return {};
  if (status.type() != fs::file_type::directory) {
    return path.string() + " exists and is not a folder. Choose another path.";
  }
  const bool empty = fs::is_empty(path, error);
  if (error) return path.string() + " cannot be read: " + error.message() + ".";
  if (empty) return {};
  if (TreeReader(path).format()) {
    return path.string() + " is already a device tree. Choose another path, or reset this one.";
  }
  return path.string() + " is not empty. Choose a folder that is missing or empty.";
}

std::string howToMake(const char* what) {
  return std::string(". Make ") + what + " with: " + std::string(programName) +
         " device create DIR";
}

// Returns why the path cannot be opened as a folder; empty if it can.
std::string whyNoFolder(const fs::path& path) {
  std::error_code error;
  const fs::file_type type = fs::status(path, error).type();
  if (type == fs::file_type::directory) return {};
  if (type == fs::file_type::not_found) return "there is no folder " + path.string();
  if (error) return path.string() + " cannot be read: " + error.message();
  return path.string() + " is not a folder";
}

}  // namespace

DeviceTreeResult DeviceTree::create(const fs::path& directory, const DeviceTreeOptions& options) {
  if (directory.empty()) return refused("no folder was given for the device tree.");
  const fs::path path = absolutePath(directory);
  const std::string obstacle = obstacleAt(path);
  if (!obstacle.empty()) return refused(obstacle);
  const BundleSource bundle = bundleSource(options.bundle);
  if (!bundle.problem.empty()) return refused(bundle.problem);

  FoldersAbove above(path);
  if (!above.problem().empty()) return refused(above.problem());
  FolderBeside built(path);
  if (!built.problem().empty()) return refused(built.problem());
  std::string problem = fillTree(built.path(), bundle.folder);
  if (problem.empty()) problem = built.moveIntoPlace();
  if (!problem.empty()) return refused(problem);
  above.keep();
  return {DeviceTree(path), {}};
}

DeviceTreeResult DeviceTree::open(const fs::path& directory) {
  const fs::path path = absolutePath(directory);
  const std::string problem = directory.empty() ? "no folder was given" : whyNoFolder(path);
  if (!problem.empty()) return refused(problem + howToMake("a device tree"));
  const auto format = TreeReader(path).format();
  if (!format) {
    return refused(path.string() + " is not a device tree (it has no readable file " +
                   std::string(treeMarkPath.substr(1)) + ")" + howToMake("a device tree"));
  }
  if (*format != treeFormat) {
    return refused(path.string() + " is a device tree of format " + std::to_string(*format) +
                   "; this program supports format " + std::to_string(treeFormat) +
                   howToMake("a new one"));
  }
  return {DeviceTree(path), {}};
}

DeviceDescription DeviceTree::describe() const {
  return TreeReader(_root).describe();
}

std::optional<std::string> DeviceTree::reset(const DeviceTreeOptions& options) const {
  const DeviceTreeResult opened = open(_root);
  if (!opened) return opened.problem;
  const BundleSource bundle = bundleSource(options.bundle);
  if (!bundle.problem.empty()) return bundle.problem;
  FolderBeside built(_root);
  if (!built.problem().empty()) return built.problem();
  std::string problem = fillTree(built.path(), bundle.folder);
  if (problem.empty()) problem = built.exchange();
  if (!problem.empty()) return problem;
  return std::nullopt;
}

std::optional<std::string> DeviceTree::installBundle(const DeviceTreeOptions& options) const {
  const BundleSource bundle = bundleSource(options.bundle);
  if (!bundle.problem.empty()) return bundle.problem;
  const fs::path installed = _root / fs::path(bundlePath).relative_path();
  FoldersAbove above(installed);
  if (!above.problem().empty()) return above.problem();
  FolderBeside built(installed);
  if (!built.problem().empty()) return built.problem();
  std::error_code error;
  fs::copy(bundle.folder, built.path(), fs::copy_options::recursive, error);
  if (error) return "cannot copy " + bundle.folder.string() + ": " + error.message();
  const bool replaces = fs::exists(fs::symlink_status(installed, error));
  std::string problem = replaces ? built.exchange() : built.moveIntoPlace();
  if (!problem.empty()) return problem;
  above.keep();
  return std::nullopt;
}

}  // namespace settings

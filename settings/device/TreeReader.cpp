#include "settings/device/TreeReader.h"

#include <algorithm>
#include <system_error>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/Product.h"
#include "settings/device/ProgramStandIns.h"

namespace settings {

namespace fs = std::filesystem;

fs::path TreeReader::hostPath(std::string_view path) const {
  return _root / fs::path(path).relative_path();
}

std::vector<std::string> TreeReader::names(std::string_view path) const {
  std::vector<std::string> result;
  std::error_code error;
  for (fs::directory_iterator at(hostPath(path), error), end; !error && at != end;
       at.increment(error)) {
    result.push_back(at->path().filename().string());
  }
  std::sort(result.begin(), result.end());
  return result;
}

platform::Dictionary TreeReader::propertyList(std::string_view path) const {
  const auto file = platform::DeviceFileSystem(_root.string()).read(path);
  if (file.error) return {};
  const auto result = platform::readPropertyList(file.bytes);
  const auto* dictionary = result.value.asDictionary();
  return dictionary ? *dictionary : platform::Dictionary();
}

std::optional<std::int64_t> TreeReader::format() const {
  const auto mark = propertyList(treeMarkPath);
  const platform::Value format = mark.valueForKey("format");
  if (mark.valueForKey("kind").text() != treeKind) return std::nullopt;
  return format.isNumber() ? std::optional(format.integerValue()) : std::nullopt;
}

std::vector<std::string> TreeReader::moduleIdentifiers(std::string_view folder) const {
  std::vector<std::string> result;
  for (const auto& name : names(folder)) {
    const auto info = propertyList(std::string(folder) + "/" + name + "/Info.plist");
    if (auto identifier = info.valueForKey("CFBundleIdentifier").text()) {
      result.push_back(*std::move(identifier));
    }
  }
  return result;
}

DeviceDescription TreeReader::describe() const {
  DeviceDescription result;
  std::error_code error;
  result.folder = _root.string();
  result.format = format().value_or(0);
  result.jailbreakFolder = fs::read_symlink(hostPath(installRoot), error).string();
  const auto info = propertyList(std::string(bundlePath) + "/Info.plist");
  if (fs::is_directory(hostPath(bundlePath), error)) result.bundlePath = bundlePath;
  result.bundleVersion = info.valueForKey("CFBundleShortVersionString").text().value_or("");
  result.preferenceFiles = names(preferencesPath);
  result.modules = moduleIdentifiers(systemModulesPath);
  std::ranges::move(moduleIdentifiers(addedModulesPath), std::back_inserter(result.modules));
  result.photos = names(photosPath);
  for (const auto path : programStandInPaths()) {
    if (fs::exists(hostPath(path), error)) result.programs.emplace_back(path);
  }
  return result;
}

}  // namespace settings

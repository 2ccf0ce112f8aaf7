#include "settings/neighbours/ModuleIndex.h"

#include <cstdint>
#include <unordered_set>
#include <utility>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/device/DevicePaths.h"

namespace settings {

namespace {

// A larger Info.plist is ignored.
constexpr std::uint64_t largestInfo = 1024ULL * 1024;

std::string nameOf(const platform::Dictionary& info, const std::string& folder) {
  for (const char* key : {"CFBundleDisplayName", "CFBundleName"}) {
    if (auto name = info.valueForKey(key).text()) return *std::move(name);
  }
  return folder;
}

std::optional<ModuleFolder> readFolder(platform::FileSystem& files, std::string_view parent,
                                       const std::string& name) {
  std::string path = std::string(parent) + "/" + name;
  const auto file = files.read(path + "/Info.plist", largestInfo);
  if (file.error) return std::nullopt;
  const auto list = platform::readPropertyList(file.bytes);
  const auto* const info = list.value.asDictionary();
  auto identifier = info ? info->valueForKey("CFBundleIdentifier").text() : std::nullopt;
  if (!identifier || identifier->empty()) return std::nullopt;
  return ModuleFolder{std::move(path), *std::move(identifier), nameOf(*info, name)};
}

std::vector<ModuleFolder> readFolders() {
  auto& files = platform::Process::current().service<platform::FileSystem>();
  std::vector<ModuleFolder> modules;
  std::unordered_set<std::string> known;
  for (const auto parent : {systemModulesPath, addedModulesPath}) {
    const auto names = files.contentsOfDirectory(parent);
    if (!names) continue;
    for (const auto& name : *names) {
      auto module = readFolder(files, parent, name);
      if (module && known.insert(module->identifier).second) modules.push_back(*std::move(module));
    }
  }
  return modules;
}

platform::Array identifiersOf(const std::vector<ModuleFolder>& modules) {
  std::vector<platform::Value> identifiers;
  identifiers.reserve(modules.size());
  for (const auto& module : modules) identifiers.emplace_back(module.identifier);
  return platform::Array(std::move(identifiers));
}

}  // namespace

const ModuleIndex::Contents& ModuleIndex::contents() {
  if (!_read) {
    auto modules = readFolders();
    auto identifiers = identifiersOf(modules);
    _read = Contents{std::move(modules), std::move(identifiers)};
  }
  return *_read;
}

const std::vector<ModuleFolder>& ModuleIndex::modules() {
  return contents().modules;
}

const platform::Array& ModuleIndex::identifiers() {
  return contents().identifiers;
}

}  // namespace settings

#include "settings/device/BundleInstallation.h"

#include <system_error>
#include <vector>

#include "settings/device/DeviceTree.h"

namespace settings {

namespace fs = std::filesystem;

namespace {

// A bundle without these could not be opened by the application.
constexpr std::string_view requiredFiles[] = {"Info.plist", "ZentrovaPrefs"};

std::string missingFile(const fs::path& folder) {
  std::error_code error;
  for (const auto name : requiredFiles) {
    if (!fs::is_regular_file(folder / name, error)) return std::string(name);
  }
  return {};
}

fs::path folderAboveProgram() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  return error ? fs::path() : program.parent_path().parent_path();
}

}  // namespace

fs::path findBuiltBundle() {
  const fs::path above = folderAboveProgram();
  if (above.empty()) return {};
  for (const fs::path& folder : std::vector<fs::path>{above, above / "lib/zentrova-settings"}) {
    fs::path bundle = folder / "ZentrovaPrefs.bundle";
    if (missingFile(bundle).empty()) return bundle;
  }
  return {};
}

BundleSource bundleSource(const fs::path& given) {
  if (given.empty()) {
    fs::path built = findBuiltBundle();
    if (!built.empty()) return {std::move(built), {}};
    return {{},
            "there is no complete ZentrovaPrefs.bundle beside the program (looked in " +
                folderAboveProgram().string() + "). Build the project, or name the bundle."};
  }
  const std::string missing = missingFile(given);
  if (missing.empty()) return {given, {}};
  return {{}, given.string() + " is no complete bundle: it has no file " + missing + "."};
}

}  // namespace settings

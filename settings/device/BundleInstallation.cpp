#include "settings/device/BundleInstallation.h"

#include <system_error>
#include <vector>

#include "settings/device/Product.h"
#include "settings/device/ProgramFolder.h"

namespace settings {

namespace fs = std::filesystem;

namespace {

// The application cannot open a bundle without these files.
constexpr std::string_view requiredFiles[] = {"Info.plist", bundleCodeName};

std::string missingFile(const fs::path& folder) {
  std::error_code error;
  for (const auto name : requiredFiles) {
    if (!fs::is_regular_file(folder / name, error)) return std::string(name);
  }
  return {};
}

}  // namespace

fs::path findBuiltBundle() {
  const fs::path above = programFolder();
  if (above.empty()) return {};
  for (const fs::path& folder : std::vector<fs::path>{above, above / "lib" / programName}) {
    fs::path bundle = folder / bundleFolderName;
    if (missingFile(bundle).empty()) return bundle;
  }
  return {};
}

BundleSource bundleSource(const fs::path& given) {
  if (given.empty()) {
    fs::path built = findBuiltBundle();
    if (!built.empty()) return {std::move(built), {}};
    return {{},
            "no complete " + std::string(bundleFolderName) + " next to the program (looked in " +
                programFolder().string() + "). Build the project, or name the bundle."};
  }
  const std::string missing = missingFile(given);
  if (missing.empty()) return {given, {}};
  return {{}, given.string() + " is not a complete bundle: the file " + missing + " is missing."};
}

}  // namespace settings

#pragma once

#include <filesystem>
#include <string>

namespace settings {

// The folder of the bundle to install: the given one, or the one that was built with the program.
struct BundleSource {
  std::filesystem::path folder;
  std::string problem;  // why no bundle was found, for the user; empty on success
};

BundleSource bundleSource(const std::filesystem::path& given);

// Returns the folder (bundleFolderName) of the bundle that was built with the running program.
// Looks in the folder above the program's folder, then in "lib/NAME" there, where NAME is the
// program's name. Empty if neither holds it.
std::filesystem::path findBuiltBundle();

}  // namespace settings

#pragma once

#include <filesystem>
#include <string>

namespace settings {

// The folder of the bundle to install: the given one, or the one that was built with the program.
struct BundleSource {
  std::filesystem::path folder;
  std::string problem;  // for people: why there is none; empty where there is one
};

BundleSource bundleSource(const std::filesystem::path& given);

// The bundle that was built together with the running program: its folder (bundleFolderName) in
// the folder above the program's, or in "lib/NAME" there, where NAME is the program's. Empty where
// there is none.
std::filesystem::path findBuiltBundle();

}  // namespace settings

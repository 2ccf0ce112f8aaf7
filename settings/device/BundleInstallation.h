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

}  // namespace settings

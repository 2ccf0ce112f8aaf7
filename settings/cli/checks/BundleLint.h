#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace settings {

struct LintFinding {
  std::string file;  // of the bundle
  std::string row;   // "row 5 (#id)"; empty where it is no matter of one row
  std::string what;
};

// Looks through the resources of a bundle: Info.plist, and every specifier list with what its rows
// name (kinds, actions, pages, cells, pictures, values with their titles). Loads the bundle's code,
// since that alone knows which classes and actions there are, and opens every page, since that
// alone shows which lists the pages load; without the code neither is checked.
std::vector<LintFinding> lintBundle(const std::filesystem::path& bundle);

}  // namespace settings

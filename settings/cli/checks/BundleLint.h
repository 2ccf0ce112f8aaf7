#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace settings {

struct LintFinding {
  std::string file;  // in the bundle
  std::string row;   // "row 5 (#id)"; empty if it does not concern a single row
  std::string what;
};

// Checks the resources of a bundle: Info.plist, and every specifier list with everything that its
// rows name (kinds, actions, pages, cells, pictures, values with their titles). Loads the bundle's
// code, because only the code knows which classes and actions exist. Opens every page, because only
// this shows which lists the pages load. If the code cannot be loaded, neither is checked.
std::vector<LintFinding> lintBundle(const std::filesystem::path& bundle);

}  // namespace settings

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/preferences/PSSpecifierRows.h"

namespace platform {

// The content of a specifier list of a bundle.
struct PSSpecifierFile {
  std::optional<std::string> title;    // of the page
  PSSpecifierList specifiers;          // including the rows that show a problem
  std::optional<std::string> problem;  // set if the list could not be loaded; there are no rows
};

// Reads "<bundlePath>/<name>.plist" and makes its specifiers. `target` is the rows' target, held
// weakly. Does not raise exceptions for a bad file.
PSSpecifierFile readSpecifierFile(const std::optional<std::string>& name,
                                  const std::optional<std::string>& bundlePath,
                                  const std::shared_ptr<Object>& target);

}  // namespace platform

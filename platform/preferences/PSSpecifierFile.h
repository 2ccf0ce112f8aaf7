#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/preferences/PSSpecifierRows.h"

namespace platform {

// What a specifier list of a bundle holds.
struct PSSpecifierFile {
  std::optional<std::string> title;    // of the page
  PSSpecifierList specifiers;          // rows that say what is wrong with them among them
  std::optional<std::string> problem;  // set: the list could not be loaded, there are no rows
};

// Reads "<bundlePath>/<name>.plist" and makes its specifiers. `target` is the rows' target, held
// weakly. Never raises for what is wrong with the file.
PSSpecifierFile readSpecifierFile(const std::optional<std::string>& name,
                                  const std::optional<std::string>& bundlePath,
                                  const std::shared_ptr<Object>& target);

}  // namespace platform

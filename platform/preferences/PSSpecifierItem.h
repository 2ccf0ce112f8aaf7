#pragma once

#include <memory>
#include <string>

#include "platform/foundation/values/Collections.h"
#include "platform/preferences/PSSpecifierRows.h"

namespace platform {

// Where an item of a specifier list stands, for messages and for what it refers to.
struct PSItemContext {
  std::string file;                // "Root.plist"
  std::size_t row = 0;             // from 1
  std::string bundlePath;          // where its icon is looked for
  std::shared_ptr<Object> target;  // of the row; may be empty
};

// The specifiers that one item of a list stands for: the row or group itself; and where something
// is wrong with it, a row that says so in its place (below it, for a group).
PSSpecifierList specifiersFromItem(const Value& item, const PSItemContext& context);

// A row that shows nothing but what is wrong.
std::shared_ptr<PSSpecifier> problemSpecifier(const std::optional<std::string>& name,
                                              const std::string& problem);

}  // namespace platform

#pragma once

#include <memory>
#include <string>

#include "platform/foundation/values/Collections.h"
#include "platform/preferences/PSSpecifierRows.h"

namespace platform {

// The context of an item in a specifier list.
struct PSItemContext {
  std::string file;                // "Root.plist"
  std::size_t row = 0;             // from 1
  std::string bundlePath;          // the folder of its icon
  std::shared_ptr<Object> target;  // of the row; may be empty
};

// The specifiers of one item of a list: the row or the group. A row with a problem is replaced by
// one that shows it; a group with a problem is followed by such a row.
PSSpecifierList specifiersFromItem(const Value& item, const PSItemContext& context);

// A row that shows only a problem.
std::shared_ptr<PSSpecifier> problemSpecifier(const std::optional<std::string>& name,
                                              const std::string& problem);

}  // namespace platform

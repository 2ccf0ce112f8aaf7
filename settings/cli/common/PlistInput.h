#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/values/Value.h"
#include "settings/cli/common/CommandContext.h"

namespace settings {

// A property list, or the error.
struct PlistInput {
  platform::Value value;
  std::optional<platform::PropertyListError> error;
  explicit operator bool() const noexcept { return !error; }
};

// Parses a property list in XML or binary form, or as JSON (detected by its first character).
PlistInput parsePlistOrJson(std::string_view bytes);

// One line about a refused file: "name: line 3, column 7: reason; accepted: ...".
std::string refusalLine(const std::string& name, const platform::PropertyListError& error);

// Reads a file of this machine, or standard input for "-". On failure returns nothing, prints a
// message and sets the context's status.
std::optional<platform::Value> readPlistFile(const std::string& name, CommandContext& context);

// Prints a value as an outline, one line for each value that is not a container:
//   presentationStyle: 1 (integer)
void printOutline(std::ostream& output, const platform::Value& value);
// A value on one line: "1 (integer)", "array of 3".
std::string outlineText(const platform::Value& value);

}  // namespace settings

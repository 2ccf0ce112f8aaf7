#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/values/Value.h"
#include "settings/cli/common/CommandContext.h"

namespace settings {

// A property list that was read, or what is wrong with it.
struct PlistInput {
  platform::Value value;
  std::optional<platform::PropertyListError> error;
  explicit operator bool() const noexcept { return !error; }
};

// Reads a property list in its XML or binary form, or as JSON (recognised by its first character).
PlistInput parsePlistOrJson(std::string_view bytes);

// One line about a file that was refused: "name: line 3, column 7: reason; accepted: ...".
std::string refusalLine(const std::string& name, const platform::PropertyListError& error);

// Reads the file of this machine, or standard input for "-". Empty where that fails, with a
// message and the context's status set.
std::optional<platform::Value> readPlistFile(const std::string& name, CommandContext& context);

// Prints a value as an outline for people, one line for each value that is no container:
//   presentationStyle: 1 (integer)
void printOutline(std::ostream& output, const platform::Value& value);
// One value on one line: "1 (integer)", "array of 3".
std::string outlineText(const platform::Value& value);

}  // namespace settings

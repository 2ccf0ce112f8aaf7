#pragma once

#include <string>
#include <vector>

#include "platform/foundation/values/Value.h"

namespace settings {

struct ParsedValue {
  platform::Value value;
  std::string problem;  // for the user: what is wrong and what is accepted; empty on success
};

// The type names that `parseValueText` accepts.
const std::vector<std::string>& valueTypeNames();

// Parses a value from the command line. Without a type: JSON (1, 1.5, true, "text", [...], {...}),
// or else a string. With a type: only that type. Data is base64, a date is 2026-01-02T03:04:05Z,
// arrays and dictionaries are JSON.
ParsedValue parseValueText(const std::string& text, const std::string& type);

}  // namespace settings

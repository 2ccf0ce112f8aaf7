#pragma once

#include <string>
#include <vector>

#include "platform/foundation/values/Value.h"

namespace settings {

struct ParsedValue {
  platform::Value value;
  std::string problem;  // for people: what is wrong and what is accepted; empty where there is none
};

// The names of types that `parseValueText` takes.
const std::vector<std::string>& valueTypeNames();

// A value as people write it on the command line. Without a type: what it reads as in JSON (1,
// 1.5, true, "text", [...], {...}), else the text itself. With one: that type and no other. Data
// is base64, a date is 2026-01-02T03:04:05Z, arrays and dictionaries are JSON.
ParsedValue parseValueText(const std::string& text, const std::string& type);

}  // namespace settings

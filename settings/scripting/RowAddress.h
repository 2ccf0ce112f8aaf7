#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace settings {

// How a script names a row: "#identifier", a label in quotes, or section and row as two numbers.
// A second one of the same name is "#identifier~2".
struct RowAddress {
  enum class By { identifier, label, position };
  By by = By::identifier;
  std::string name;            // identifier or label
  std::size_t occurrence = 1;  // from 1, in the order of the rows
  std::size_t section = 0;     // by position
  std::size_t row = 0;

  // As it is written in a script.
  std::string text() const;
};

}  // namespace settings

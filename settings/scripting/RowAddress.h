#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace settings {

// How a script names a row: "#identifier", a label in quotes, or section and row as two numbers.
// "#identifier~2" is the second row with that identifier.
struct RowAddress {
  enum class By { identifier, label, position };
  By by = By::identifier;
  std::string name;            // identifier or label
  std::size_t occurrence = 1;  // from 1, in row order
  std::size_t section = 0;     // by position
  std::size_t row = 0;

  // The address as it is written in a script.
  std::string text() const;
};

}  // namespace settings

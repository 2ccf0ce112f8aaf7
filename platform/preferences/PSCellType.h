#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// The kinds of rows of a settings list, with the platform's numbers.
enum PSCellType : std::int64_t {
  PSGroupCell = 0,
  PSLinkCell = 1,
  PSLinkListCell = 2,
  PSListItemCell = 3,
  PSTitleValueCell = 4,
  PSSliderCell = 5,
  PSSwitchCell = 6,
  PSStaticTextCell = 7,
  PSEditTextCell = 8,
  PSSegmentCell = 9,
  PSGiantIconCell = 10,
  PSGiantCell = 11,
  PSSecureEditTextCell = 12,
  PSButtonCell = 13,
  PSEditTextViewCell = 14,
};

// The kind of that platform name, such as "PSSwitchCell". Empty for an unknown name.
std::optional<PSCellType> cellTypeNamed(std::string_view name) noexcept;

// The platform's name of a kind. Empty for an unknown number.
std::string_view nameOfCellType(PSCellType type) noexcept;

// All names, comma-separated, for messages.
std::string cellTypeNames();

// Whether rows of the kind show the value of their specifier's getter.
bool cellTypeShowsValue(PSCellType type) noexcept;

// The name of the platform's cell class for rows of the kind.
std::string_view cellClassNameForCellType(PSCellType type) noexcept;

}  // namespace platform

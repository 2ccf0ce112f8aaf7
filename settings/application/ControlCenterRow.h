#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace settings {

// What becomes of the row "ControlCenter" of the application's own list, which pages ask for.
enum class ControlCenterRow : std::uint8_t {
  present,
  missing,
  raises,  // to load what is behind it raises
};

// The one that people call so; none for any other text.
constexpr std::optional<ControlCenterRow> controlCenterRowNamed(std::string_view name) {
  if (name == "present") return ControlCenterRow::present;
  if (name == "missing") return ControlCenterRow::missing;
  if (name == "raises") return ControlCenterRow::raises;
  return std::nullopt;
}

// The trait that people choose it with.
inline constexpr std::string_view controlCenterRowTrait = "controlCenterRow";
// Why a text is none of them, for people.
std::string controlCenterRowProblem(std::string_view name);

}  // namespace settings

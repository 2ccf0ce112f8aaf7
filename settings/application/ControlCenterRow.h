#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace settings {

// The state of the row "ControlCenter" in the application's own list, which pages look up.
enum class ControlCenterRow : std::uint8_t {
  present,
  missing,
  raises,  // loading the bundle behind the row raises
};

// The state with this name; empty for any other text.
constexpr std::optional<ControlCenterRow> controlCenterRowNamed(std::string_view name) {
  if (name == "present") return ControlCenterRow::present;
  if (name == "missing") return ControlCenterRow::missing;
  if (name == "raises") return ControlCenterRow::raises;
  return std::nullopt;
}

// The name of the trait that selects the state.
inline constexpr std::string_view controlCenterRowTrait = "controlCenterRow";
// The error for any other text, for the user.
std::string controlCenterRowProblem(std::string_view name);

}  // namespace settings

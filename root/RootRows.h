#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

// The rows of the list "Root" that the page changes, and the texts that it sets.
namespace zentrova {

inline constexpr std::string_view presentationGroupRow = "presentationGroup";
inline constexpr std::string_view presentationStyleRow = "presentationStyle";
inline constexpr std::string_view gestureGroupRow = "gestureGroupCell";
inline constexpr std::string_view gestureSegmentRow = "gestureSegmentCell";

// A tablet has one presentation style and no gestures of the product.
inline constexpr std::array<std::string_view, 7> phoneOnlyRows{
    presentationGroupRow, "presentationText", presentationStyleRow, "presentFullyExpanded",
    gestureGroupRow,      "gestureText",      gestureSegmentRow,
};

inline bool isPhoneOnlyRow(const std::optional<std::string>& identifier) {
  return identifier && std::ranges::find(phoneOnlyRows, *identifier) != phoneOnlyRows.end();
}

// A switch that the page makes itself. The key is also the identifier.
struct SwitchRow {
  std::string_view label;
  std::string_view key;
};

inline constexpr SwitchRow reverseOrderRow{"Reverse module order", "reverseWhenTopPresented"};
inline constexpr SwitchRow alwaysFromTopRow{"Always present from top", "alwaysPresentFromTop"};

inline constexpr std::string_view presentationFooter =
    "Reverse module order: When presented from the top, reverse the module order configuration.";
inline constexpr std::string_view kestrelleFooter =
    "Using gesture settings from Kestrelle as they are set to either \"Lower\" or \"Both\".";

}  // namespace zentrova

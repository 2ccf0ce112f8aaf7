#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace zentrova {

// One of the product's own modules: its stored identifier and how it is shown.
struct CatalogueEntry {
  std::string_view identifier;
  std::string_view displayName;
  bool hasSettings;
};

// The pinned entry: connectivity and grouped toggles. They are placed, ordered and stored together,
// as one string that joins the two with a comma.
inline constexpr std::string_view connectivityEntry =
    "com.hollowmere.ZentrovaModule.ConnectivityModule,"
    "com.hollowmere.ZentrovaModule.GroupedTogglesModule";
inline constexpr std::string_view displaySliderEntry =
    "com.hollowmere.ZentrovaModule.DisplaySliderModule";
inline constexpr std::string_view audioSliderEntry =
    "com.hollowmere.ZentrovaModule.AudioSliderModule";
inline constexpr std::string_view mediaEntry = "com.hollowmere.ZentrovaModule.MediaModule";
inline constexpr std::string_view powerEntry = "com.hollowmere.ZentrovaModule.PowerModule";

// The five entries in their fixed order, the order of the disabled list. Has static lifetime.
std::span<const CatalogueEntry> moduleCatalogue() noexcept;

// The entry whose whole identifier is this value. Null if there is none or the value is not a
// string.
const CatalogueEntry* catalogueEntry(const platform::Value& identifier) noexcept;

// Whether the entry can never be disabled. True for identifiers joined with a comma.
bool isPinnedEntry(const platform::Value& identifier) noexcept;

}  // namespace zentrova

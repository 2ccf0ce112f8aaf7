#pragma once

#include <string_view>

// The rows of the list "Customize" that the page changes, and the texts that it sets.
namespace zentrova {

inline constexpr std::string_view imageButtonRow = "backgroundImageCell";
inline constexpr std::string_view imageThumbnailRow = "backgroundImageTextCell";

inline constexpr std::string_view imageKey = "backgroundImage";
inline constexpr const char* setImageTitle = "Set background image";
inline constexpr const char* changeImageTitle = "Change background image";

}  // namespace zentrova

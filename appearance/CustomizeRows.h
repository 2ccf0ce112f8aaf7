#pragma once

#include <string_view>

// The rows of the list "Customize" that the page works with, and the texts that it puts there.
namespace zentrova {

inline constexpr std::string_view imageButtonRow = "backgroundImageCell";
inline constexpr std::string_view imageThumbnailRow = "backgroundImageTextCell";

inline constexpr std::string_view imageKey = "backgroundImage";
inline constexpr const char* setImageTitle = "Set background image";
inline constexpr const char* changeImageTitle = "Change background image";

}  // namespace zentrova

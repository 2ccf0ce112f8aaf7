#pragma once

#include <string_view>

namespace platform::property_list {

// The text before and after the root in every file that the platform writes.
inline constexpr std::string_view xmlHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
inline constexpr std::string_view xmlTail = "</plist>\n";

}  // namespace platform::property_list

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace settings {

// Returns 256 random bits of the operating system as 64 hexadecimal digits. Empty if the system
// provides none; there is no weaker fallback. Threads: any.
std::optional<std::string> randomToken();

// Compares two secrets in constant time.
bool sameSecret(std::string_view given, std::string_view secret) noexcept;

}  // namespace settings

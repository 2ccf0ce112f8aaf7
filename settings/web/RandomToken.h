#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace settings {

// 256 random bits of the operating system as 64 hexadecimal digits. Empty where the system gives
// none; there is no weaker substitute.
// Threads: any.
std::optional<std::string> randomToken();

// Whether two secrets are equal, in a time that does not tell where they differ.
bool sameSecret(std::string_view given, std::string_view secret) noexcept;

}  // namespace settings

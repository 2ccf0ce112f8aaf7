#pragma once

#include <array>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace settings {

// The members of an action that came from outside: nothing where a member is missing or of another
// kind. Numbers are finite.
std::optional<std::string> stringMember(const nlohmann::json& action, const char* name);
std::optional<bool> booleanMember(const nlohmann::json& action, const char* name);
std::optional<std::int64_t> integerMember(const nlohmann::json& action, const char* name);
std::optional<double> numberMember(const nlohmann::json& action, const char* name);
// A list of red, green, blue and alpha, each from 0 to 1.
std::optional<std::array<double, 4>> colorMember(const nlohmann::json& action, const char* name);

}  // namespace settings

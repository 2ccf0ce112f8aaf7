#include "settings/application/ActionMembers.h"

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace settings {

using nlohmann::json;

namespace {

const json* member(const json& action, const char* name) {
  if (!action.is_object()) return nullptr;
  const auto found = action.find(name);
  return found == action.end() ? nullptr : &*found;
}

}  // namespace

std::optional<std::string> stringMember(const json& action, const char* name) {
  const json* found = member(action, name);
  if (!found || !found->is_string()) return std::nullopt;
  return found->get<std::string>();
}

std::optional<bool> booleanMember(const json& action, const char* name) {
  const json* found = member(action, name);
  if (!found || !found->is_boolean()) return std::nullopt;
  return found->get<bool>();
}

std::optional<std::int64_t> integerMember(const json& action, const char* name) {
  const json* found = member(action, name);
  if (!found || !found->is_number_integer()) return std::nullopt;
  if (found->is_number_unsigned() &&
      found->get<std::uint64_t>() > std::numeric_limits<std::int64_t>::max()) {
    return std::nullopt;
  }
  return found->get<std::int64_t>();
}

std::optional<double> numberMember(const json& action, const char* name) {
  const json* found = member(action, name);
  if (!found || !found->is_number()) return std::nullopt;
  const double value = found->get<double>();
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace settings

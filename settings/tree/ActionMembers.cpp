#include "settings/tree/ActionMembers.h"

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

std::optional<std::array<double, 4>> colorMember(const json& action, const char* name) {
  const json* found = member(action, name);
  std::array<double, 4> components{};
  if (!found || !found->is_array() || found->size() != components.size()) return std::nullopt;
  for (std::size_t i = 0; i < components.size(); ++i) {
    const json& part = (*found)[i];
    if (!part.is_number()) return std::nullopt;
    components[i] = part.get<double>();
    if (!(components[i] >= 0 && components[i] <= 1)) return std::nullopt;
  }
  return components;
}

}  // namespace settings

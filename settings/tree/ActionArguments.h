#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "settings/tree/ActionMembers.h"
#include "settings/tree/NodeKind.h"

namespace settings {

// The name that a value of an enumeration has in the tree.
template <class E>
struct Named {
  E value;
  std::string_view name;
};

// The first name where the value has none.
template <class E, std::size_t N>
std::string_view nameOf(const std::array<Named<E>, N>& names, E value) {
  for (const auto& each : names) {
    if (each.value == value) return each.name;
  }
  return names.front().name;
}

// The names, each once.
template <class E, std::size_t N>
std::vector<std::string_view> choicesOf(const std::array<Named<E>, N>& names) {
  std::vector<std::string_view> choices;
  for (const auto& each : names) {
    if (choices.empty() || choices.back() != each.name) choices.push_back(each.name);
  }
  return choices;
}

using Rgba = std::array<double, 4>;

// A member of an action that must be there: a bool, std::int64_t, double, std::string or Rgba.
template <class V>
struct Argument {
  const char* name;

  NodeMember member() const {
    if constexpr (std::is_same_v<V, bool>) return {name, MemberForm::flag};
    if constexpr (std::is_same_v<V, std::int64_t>) return {name, MemberForm::whole};
    if constexpr (std::is_same_v<V, double>) return {name, MemberForm::number};
    if constexpr (std::is_same_v<V, Rgba>) return {name, MemberForm::list};
    return {name, MemberForm::text};
  }
  // Nothing where the action does not have it, or has something else in its place.
  std::optional<V> read(const nlohmann::json& action) const {
    if constexpr (std::is_same_v<V, bool>) return booleanMember(action, name);
    if constexpr (std::is_same_v<V, std::int64_t>) return integerMember(action, name);
    if constexpr (std::is_same_v<V, double>) return numberMember(action, name);
    if constexpr (std::is_same_v<V, std::string>) return stringMember(action, name);
    if constexpr (std::is_same_v<V, Rgba>) return colorMember(action, name);
  }
  // Why an action without it is refused.
  std::string problem() const { return "\"" + std::string(name) + "\" must be " + wanted(); }

 private:
  static std::string wanted() {
    if constexpr (std::is_same_v<V, bool>) return "true or false";
    if constexpr (std::is_same_v<V, std::int64_t>) return "a whole number";
    if constexpr (std::is_same_v<V, double>) return "a number";
    if constexpr (std::is_same_v<V, Rgba>) return "a list of four numbers from 0 to 1";
    return "a text";
  }
};

// One that the action's work looks at itself: it gets nothing where the argument is left out or is
// no V.
template <class V>
struct UncheckedArgument {
  const char* name;
  bool optional = false;

  NodeMember member() const {
    NodeMember member = Argument<V>{name}.member();
    member.optional = optional;
    return member;
  }
  std::optional<std::optional<V>> read(const nlohmann::json& action) const {
    return std::make_optional(Argument<V>{name}.read(action));
  }
  static std::string problem() { return {}; }
};

// One that is the name of a value.
template <class E, std::size_t N>
struct ChoiceArgument {
  const char* name;
  std::array<Named<E>, N> names;

  NodeMember member() const { return {name, MemberForm::text, false, choicesOf(names)}; }
  std::optional<E> read(const nlohmann::json& action) const {
    const auto given = stringMember(action, name);
    for (const auto& each : names) {
      if (given && each.name == *given) return each.value;
    }
    return std::nullopt;
  }
  std::string problem() const {
    return "\"" + std::string(name) + "\" must be " + alternatives(choicesOf(names));
  }
};
template <class E, std::size_t N>
ChoiceArgument(const char*, std::array<Named<E>, N>) -> ChoiceArgument<E, N>;

}  // namespace settings

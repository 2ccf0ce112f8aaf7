#include "modules/Membership.h"

#include <algorithm>

namespace zentrova {

Membership::Membership(std::span<const platform::Value> members) {
  for (const auto& member : members) add(member);
}

void Membership::add(const platform::Value& member) {
  if (const auto text = member.asString()) {
    _texts.emplace(*text);
  } else {
    _others.push_back(member);
  }
}

bool Membership::contains(const platform::Value& value) const {
  if (const auto text = value.asString()) return _texts.contains(*text);
  return std::ranges::find(_others, value) != _others.end();
}

}  // namespace zentrova

#include "settings/neighbours/NeighbourRegistry.h"

#include <algorithm>
#include <utility>

namespace settings {

NeighbourRegistry::NeighbourRegistry(std::vector<Neighbour> neighbours)
    : _neighbours(std::move(neighbours)) {}

std::vector<std::string> NeighbourRegistry::names() const {
  std::vector<std::string> result;
  for (const Neighbour& neighbour : _neighbours) result.push_back(neighbour.className);
  return result;
}

bool NeighbourRegistry::switchOff(std::string_view className) {
  const bool known = std::ranges::any_of(
      _neighbours, [&](const Neighbour& neighbour) { return neighbour.className == className; });
  if (known) _off.emplace(className);
  return known;
}

void NeighbourRegistry::registerClasses(platform::ClassRegistry& registry) const {
  for (const Neighbour& neighbour : _neighbours) {
    if (!_off.contains(neighbour.className)) neighbour.registerClass(registry);
  }
}

}  // namespace settings

#include "settings/neighbours/NeighbourRegistry.h"

#include <algorithm>

namespace settings {

std::vector<std::string> NeighbourRegistry::names() const {
  std::vector<std::string> result;
  for (const Neighbour& neighbour : _neighbours) result.emplace_back(neighbour.className);
  return result;
}

bool NeighbourRegistry::isKnown(std::string_view className) const {
  return std::ranges::any_of(
      _neighbours, [&](const Neighbour& neighbour) { return neighbour.className == className; });
}

bool NeighbourRegistry::switchOff(std::string_view className) {
  if (!isKnown(className)) return false;
  _off.emplace(className);
  return true;
}

bool NeighbourRegistry::switchOn(std::string_view className) {
  if (!isKnown(className)) return false;
  std::erase_if(_off, [&](const std::string& each) { return each == className; });
  return true;
}

bool NeighbourRegistry::isOn(std::string_view className) const {
  return isKnown(className) && !_off.contains(className);
}

void NeighbourRegistry::registerClasses(platform::ClassRegistry& registry) const {
  for (const Neighbour& neighbour : _neighbours) {
    if (isOn(neighbour.className)) neighbour.registerClass(registry, neighbour.className);
  }
}

}  // namespace settings

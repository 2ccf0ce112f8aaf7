#pragma once

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
class ClassRegistry;
}

namespace settings {

// Registers a stand-in under the name of its row.
using RegisterNeighbour = void(platform::ClassRegistry& registry, std::string_view className);

// A class that the bundle finds by name, and its stand-in.
struct Neighbour {
  std::string_view className;
  RegisterNeighbour* registerClass;
};

// The stand-ins for classes that the bundle finds by name and that belong to other products. Each
// can be switched off, as on a device where its product is not installed.
class NeighbourRegistry {
 public:
  // The table must outlive the registry.
  explicit NeighbourRegistry(std::span<const Neighbour> neighbours) : _neighbours(neighbours) {}

  std::vector<std::string> names() const;
  // Both count for processes that start from now on. False where there is no neighbour of that
  // name.
  bool switchOff(std::string_view className);
  bool switchOn(std::string_view className);
  bool isOn(std::string_view className) const;
  // Registers those that are not switched off.
  void registerClasses(platform::ClassRegistry& registry) const;

 private:
  bool isKnown(std::string_view className) const;

  std::span<const Neighbour> _neighbours;
  std::set<std::string, std::less<>> _off;
};

}  // namespace settings

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

// Registers a stand-in under the name in its row.
using RegisterNeighbour = void(platform::ClassRegistry& registry, std::string_view className);

// A class that the bundle looks up by name, and its stand-in.
struct Neighbour {
  std::string_view className;
  RegisterNeighbour* registerClass;
};

// The stand-ins for classes of other products that the bundle looks up by name. Each can be
// switched off, to simulate a device where its product is not installed.
class NeighbourRegistry {
 public:
  // The table must outlive the registry.
  explicit NeighbourRegistry(std::span<const Neighbour> neighbours) : _neighbours(neighbours) {}

  std::vector<std::string> names() const;
  // Both affect only processes that start later. They return false if no neighbour has this name.
  bool switchOff(std::string_view className);
  bool switchOn(std::string_view className);
  bool isOn(std::string_view className) const;
  // Registers the neighbours that are switched on.
  void registerClasses(platform::ClassRegistry& registry) const;

 private:
  bool isKnown(std::string_view className) const;

  std::span<const Neighbour> _neighbours;
  std::set<std::string, std::less<>> _off;
};

}  // namespace settings

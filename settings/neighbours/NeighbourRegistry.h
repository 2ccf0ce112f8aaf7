#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
class ClassRegistry;
}

namespace settings {

// The stand-ins for classes that the bundle finds by name and that belong to other products. Each
// can be switched off, as on a device where its product is not installed.
class NeighbourRegistry {
 public:
  struct Neighbour {
    std::string className;
    void (*registerClass)(platform::ClassRegistry&);
  };
  explicit NeighbourRegistry(std::vector<Neighbour> neighbours = {});

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

  std::vector<Neighbour> _neighbours;
  std::set<std::string, std::less<>> _off;
};

}  // namespace settings

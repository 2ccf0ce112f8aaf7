#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "platform/foundation/objects/DeviceTraits.h"
#include "settings/tree/NodeTarget.h"

namespace platform {
class UINavigationController;
class UIWindow;
}  // namespace platform

namespace settings {

class NeighbourRegistry;
class PhotoLibrary;
struct CrashReport;

// One tree (docs/tree.md, without its revision) and what its nodes stand for.
struct TreeSnapshot {
  nlohmann::json tree;
  NodeTargets targets;
  std::uint64_t largestIdentity = 0;
};

struct SnapshotRequest {
  std::shared_ptr<platform::UIWindow> window;               // empty: there is an empty window
  std::shared_ptr<platform::UINavigationController> outer;  // not empty where there is a window
  PhotoLibrary* photos = nullptr;                           // not null where there is a window
  std::string bundleTitle;                                  // empty before a bundle is loaded
  const CrashReport* crash = nullptr;                       // shown over everything
  std::uint64_t crashToken = 0;
  bool withPages = true;  // false where asking the pages raises
  std::uint64_t identityBase = 0;
  const NeighbourRegistry* neighbours = nullptr;  // not null
};

// Turns what the application shows into a tree of nodes. Asks the tables' data sources, so that it
// may raise what the bundle raises. The window's process must be the current one.
TreeSnapshot makeTreeSnapshot(const SnapshotRequest& request, const platform::DeviceTraits& traits);

// The node that is shown while a page waits for that program.
nlohmann::json waitingNode(const std::string& program);

}  // namespace settings

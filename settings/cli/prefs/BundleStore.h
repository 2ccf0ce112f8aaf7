#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace settings {

class DeviceTree;

// The bundle's own preferences store, in a process that shows no page. All access goes through the
// store by name, so changes are written exactly as the pages write them.
//
// Threads: one.
class BundleStore {
 public:
  // Opens the store of a domain with the current content of its file. Returns nothing if the bundle
  // cannot be loaded or has no store; `problem` says why.
  static std::unique_ptr<BundleStore> open(const DeviceTree& tree, std::string_view domain,
                                           std::string& problem);
  ~BundleStore();
  BundleStore(const BundleStore&) = delete;
  BundleStore& operator=(const BundleStore&) = delete;

  // Both write the file at once. The store does not report whether the write succeeded.
  void setObject(const platform::Value& value, std::string_view key);
  void removeObject(std::string_view key);

 private:
  struct State;
  explicit BundleStore(std::unique_ptr<State> state);
  std::unique_ptr<State> _state;
};

}  // namespace settings

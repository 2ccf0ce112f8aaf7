#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace settings {

class DeviceTree;

// The bundle's own store of preferences, in a process of its own that shows no page. Everything
// goes through the store by name, so a change is written exactly as the pages write it.
//
// Threads: belongs to one.
class BundleStore {
 public:
  // The store of a domain as its file is now. Empty where the bundle cannot be loaded or has no
  // store; `problem` says why.
  static std::unique_ptr<BundleStore> open(const DeviceTree& tree, std::string_view domain,
                                           std::string& problem);
  ~BundleStore();
  BundleStore(const BundleStore&) = delete;
  BundleStore& operator=(const BundleStore&) = delete;

  // Both write the file at once. The store does not say whether that went well.
  void setObject(const platform::Value& value, std::string_view key);
  void removeObject(std::string_view key);

 private:
  struct State;
  explicit BundleStore(std::unique_ptr<State> state);
  std::unique_ptr<State> _state;
};

}  // namespace settings

#include "settings/cli/prefs/BundleStore.h"

#include <utility>

#include "settings/cli/common/BundleProcess.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/Product.h"

namespace settings {

struct BundleStore::State {
  std::unique_ptr<BundleProcess> process;
  std::shared_ptr<platform::Object> store;  // destroyed before the process
};

std::unique_ptr<BundleStore> BundleStore::open(const DeviceTree& tree, std::string_view domain,
                                               std::string& problem) {
  auto state = std::make_unique<State>();
  state->process = BundleProcess::openInstalled(tree, problem);
  if (!state->process) return nullptr;
  const platform::Class* storeClass = state->process->find(storeClassName);
  if (storeClass == nullptr || !storeClass->respondsToSelector("preferencesForIdentifier:")) {
    problem = "the bundle on the device has no class " + std::string(storeClassName);
    return nullptr;
  }
  state->store = storeClass->perform("preferencesForIdentifier:", {domain}).asObject();
  if (!state->store) {
    problem = std::string(storeClassName) + " refused the domain " + std::string(domain);
    return nullptr;
  }
  return std::unique_ptr<BundleStore>(new BundleStore(std::move(state)));
}

BundleStore::BundleStore(std::unique_ptr<State> state) : _state(std::move(state)) {}
BundleStore::~BundleStore() = default;

void BundleStore::setObject(const platform::Value& value, std::string_view key) {
  _state->store->perform("setObject:forKey:", {value, platform::Value(key)});
}

void BundleStore::removeObject(std::string_view key) {
  _state->store->perform("removeObjectForKey:", {platform::Value(key)});
}

}  // namespace settings

#include "settings/cli/BundleStore.h"

#include <utility>

#include "platform/foundation/DeviceFileSystem.h"
#include "platform/foundation/DevicePrograms.h"
#include "platform/foundation/MemoryLog.h"
#include "platform/foundation/Process.h"
#include "settings/application/BundleLoader.h"
#include "settings/application/SettingsProcess.h"
#include "settings/device/DeviceTree.h"

namespace settings {
namespace {

DeviceServices servicesOf(const DeviceTree& tree) {
  DeviceServices services;
  services.files = std::make_shared<platform::DeviceFileSystem>(tree.root().string());
  services.programs = std::make_shared<platform::DevicePrograms>(services.files);
  services.log = std::make_shared<platform::MemoryLog>();
  services.traits = std::make_shared<platform::DeviceTraits>();
  return services;
}

}  // namespace

struct BundleStore::State {
  explicit State(const DeviceTree& tree)
      : process(servicesOf(tree), Time::virtualClock, [] {}), scope(process.process()) {}

  // The bundle's code goes last: it made the store.
  LoadedBundle bundle;
  SettingsProcess process;
  platform::ProcessScope scope;
  std::shared_ptr<platform::Object> store;
};

std::unique_ptr<BundleStore> BundleStore::open(const DeviceTree& tree, std::string_view domain,
                                               std::string& problem) {
  auto state = std::make_unique<State>(tree);
  state->bundle = loadBundle(state->process.process(), bundlePath);
  if (state->bundle.problem) {
    problem = *state->bundle.problem;
    return nullptr;
  }
  const platform::Class* storeClass = state->process.process().classes().find("HBPreferences");
  if (storeClass == nullptr || !storeClass->respondsToSelector("preferencesForIdentifier:")) {
    problem = "the bundle on the device has no class HBPreferences";
    return nullptr;
  }
  state->store = storeClass->perform("preferencesForIdentifier:", {domain}).asObject();
  if (!state->store) {
    problem = "HBPreferences refused the domain " + std::string(domain);
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

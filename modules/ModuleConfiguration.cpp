#include "modules/ModuleConfiguration.h"

#include <utility>

#include "modules/Membership.h"
#include "platform/foundation/propertylist/PropertyList.h"

namespace zentrova {

using platform::Dictionary;

namespace {

constexpr std::string_view configurationPath =
    "/var/jb/var/mobile/Library/ControlCenter/ModuleConfiguration_CCSupport.plist";
constexpr std::string_view identifiersKey = "module-identifiers";

platform::Array withAdded(MutableList loaded, const MutableList& identifiers) {
  Membership known(loaded);
  for (const auto& each : identifiers) {
    if (known.contains(each)) continue;
    loaded.push_back(each);
    known.add(each);
  }
  return platform::Array(std::move(loaded));
}

}  // namespace

std::optional<MutableList> loadedModuleIdentifiers() {
  const auto configuration = platform::dictionaryWithContentsOfFile(configurationPath);
  if (!configuration) return std::nullopt;
  return mutableListOf(configuration->valueForKey(identifiersKey));
}

void addLoadedModules(const MutableList& identifiers) {
  auto configuration = platform::dictionaryWithContentsOfFile(configurationPath);
  if (!configuration) return;
  if (auto loaded = mutableListOf(configuration->valueForKey(identifiersKey))) {
    *configuration =
        std::move(*configuration).with(identifiersKey, withAdded(*std::move(loaded), identifiers));
  }
  // The result is ignored: the favourites are stored either way.
  platform::writeToFileAtomically(*configuration, configurationPath);
}

}  // namespace zentrova

#include "modules/ZVRManageModuleViewController.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "modules/ModuleCatalogue.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/controllers/UINavigationController.h"

namespace zentrova {

namespace {

struct ModulePage {
  std::string_view identifier;
  std::string_view plistName;
  std::string_view title;
};

constexpr std::array modulePages{
    ModulePage{powerEntry, "PowerModule", "Power"},
    ModulePage{mediaEntry, "MediaModule", "Media"},
    ModulePage{connectivityEntry, "ConnectivityFavoritesModule", "Connectivity & Favorites"},
};

// One column of the table, for the entry of that identifier. Nothing if there is no such entry.
std::optional<std::string> textOfPage(std::optional<std::string_view> identifier,
                                      std::string_view ModulePage::*column) {
  if (!identifier) return std::nullopt;
  const auto* const page = std::ranges::find(modulePages, *identifier, &ModulePage::identifier);
  if (page == modulePages.end()) return std::nullopt;
  return std::string(page->*column);
}

}  // namespace

bool ZVRManageModuleViewController::initWithIdentifier(const platform::Value& identifier) {
  if (!init()) return false;
  _plistName = textOfPage(identifier.asString(), &ModulePage::plistName);
  return true;
}

platform::PSSpecifiers ZVRManageModuleViewController::specifiers() {
  if (!keptSpecifiers())
    keepSpecifiers(loadSpecifiersFromPlistName(_plistName, shared_from_this()));
  return keptSpecifiers();
}

void ZVRManageModuleViewController::viewDidLoad() {
  HBRootListController::viewDidLoad();
  const auto navigation = navigationController();
  if (!navigation) return;
  navigation->setTitle(textOfPage(_identifier, &ModulePage::title));
  if (const auto outer = navigation->navigationController()) {
    outer->navigationBar()->setTitleOpacity(1.0);
  }
}

void ZVRManageModuleViewController::registerClass(platform::ClassRegistry& registry) {
  registry.add(
      platform::ClassBuilder<ZVRManageModuleViewController>("HBRootListController")
          .operation("initWithIdentifier:", &ZVRManageModuleViewController::initWithIdentifier)
          .property("identifier", &ZVRManageModuleViewController::identifier,
                    &ZVRManageModuleViewController::setIdentifier)
          .property("plistName", &ZVRManageModuleViewController::plistName,
                    &ZVRManageModuleViewController::setPlistName)
          .build());
}

}  // namespace zentrova

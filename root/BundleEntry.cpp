// The C function that the application calls to register the bundle's classes.

#include <array>
#include <cstddef>
#include <exception>
#include <string_view>

#include "appearance/HBColorPickerTableCell.h"
#include "appearance/ZVRCustomizeColorListViewController.h"
#include "appearance/ZVRCustomizeListController.h"
#include "cells/HBLinkTableCell.h"
#include "cells/HBTintedTableCell.h"
#include "cells/HBTwitterCell.h"
#include "modules/ZVRArrangeModulesViewController.h"
#include "modules/ZVRFavoriteModules.h"
#include "modules/ZVRManageModuleViewController.h"
#include "platform/foundation/objects/Class.h"
#include "platform/preferences/BundleInterface.h"
#include "prefs/HBPreferences.h"
#include "prefs/HBRootListController.h"
#include "root/ZVRRootListController.h"
#include "root/ZVRVibrationListController.h"

namespace {

struct BundleClass {
  std::string_view name;
  void (*add)(platform::ClassRegistry&);
};

// Base classes come before their subclasses.
constexpr std::array bundleClasses{
    BundleClass{zentrova::HBPreferences::staticClassName, &zentrova::HBPreferences::registerClass},
    BundleClass{zentrova::HBRootListController::staticClassName,
                &zentrova::HBRootListController::registerClass},
    BundleClass{zentrova::ZVRRootListController::staticClassName,
                &zentrova::ZVRRootListController::registerClass},
    BundleClass{zentrova::ZVRVibrationListController::staticClassName,
                &zentrova::ZVRVibrationListController::registerClass},
    BundleClass{zentrova::ZVRArrangeModulesViewController::staticClassName,
                &zentrova::ZVRArrangeModulesViewController::registerClass},
    BundleClass{zentrova::ZVRFavoriteModules::staticClassName,
                &zentrova::ZVRFavoriteModules::registerClass},
    BundleClass{zentrova::ZVRManageModuleViewController::staticClassName,
                &zentrova::ZVRManageModuleViewController::registerClass},
    BundleClass{zentrova::HBColorPickerTableCell::staticClassName,
                &zentrova::HBColorPickerTableCell::registerClass},
    BundleClass{zentrova::ZVRCustomizeListController::staticClassName,
                &zentrova::ZVRCustomizeListController::registerClass},
    BundleClass{zentrova::ZVRCustomizeColorListViewController::staticClassName,
                &zentrova::ZVRCustomizeColorListViewController::registerClass},
    BundleClass{zentrova::HBTintedTableCell::staticClassName,
                &zentrova::HBTintedTableCell::registerClass},
    BundleClass{zentrova::HBLinkTableCell::staticClassName,
                &zentrova::HBLinkTableCell::registerClass},
    BundleClass{zentrova::HBTwitterCell::staticClassName, &zentrova::HBTwitterCell::registerClass},
};

// Adds all classes or none: if the registry rejects one, those before it are removed.
bool addClasses(platform::ClassRegistry& registry) {
  std::size_t added = 0;
  try {
    for (const auto& entry : bundleClasses) {
      entry.add(registry);
      ++added;
    }
  } catch (const std::exception&) {
    while (added > 0) registry.remove(bundleClasses[--added].name);
    return false;
  }
  return true;
}

}  // namespace

int zentrova_bundle_register(platform::ClassRegistry* registry, unsigned interfaceVersion) {
  if (!registry) return platform::bundleRegistryMissing;
  if (interfaceVersion != platform::bundleInterfaceVersion) {
    return platform::bundleInterfaceDiffers;
  }
  return addClasses(*registry) ? platform::bundleRegistered : platform::bundleClassRefused;
}

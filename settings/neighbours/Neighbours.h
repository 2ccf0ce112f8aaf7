#pragma once

#include <array>

#include "settings/device/Product.h"
#include "settings/neighbours/NeighbourRegistry.h"

// Every stand-in there is. A new one is a file with the function that registers it, and here that
// function and a row.
namespace settings {

// The set of the installed modules' identifiers, `loadableModuleIdentifiers` of its
// `repositoryWithDefaults`, in the Control Center support library.
RegisterNeighbour registerModuleRepository;
// `forbiddenCCIdentifiers` of the product's main component: the array of texts at
// forbiddenModulesPath; nothing is forbidden where there is no such file.
RegisterNeighbour registerForbiddenModules;
// `_identifiersToDescriptions` of the system's settings leads from the identifier of each installed
// module to an object that answers `displayName` and `iconImage`.
RegisterNeighbour registerModuleSettings;

inline constexpr auto allNeighbours = std::to_array<Neighbour>({
    {"CCSModuleRepository", registerModuleRepository},
    {moduleRepositoryClassName, registerForbiddenModules},
    {"CCUISettingsListController", registerModuleSettings},
    {"CCUISettingsModulesController", registerModuleSettings},  // before system version 14.0
});

}  // namespace settings

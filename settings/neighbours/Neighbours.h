#pragma once

#include <array>

#include "settings/device/Product.h"
#include "settings/neighbours/NeighbourRegistry.h"

// All stand-ins. To add one, write a file with the function that registers it, and declare the
// function and add a row here.
namespace settings {

// CCSModuleRepository of the Control Center support library: `loadableModuleIdentifiers` of
// `repositoryWithDefaults` is the set of the installed modules' identifiers.
RegisterNeighbour registerModuleRepository;
// The product's main component: `forbiddenCCIdentifiers` is the array of strings at
// forbiddenModulesPath; it is empty if the file is missing.
RegisterNeighbour registerForbiddenModules;
// The system's settings: `_identifiersToDescriptions` maps the identifier of each installed module
// to an object with `displayName` and `iconImage`.
RegisterNeighbour registerModuleSettings;

inline constexpr auto allNeighbours = std::to_array<Neighbour>({
    {"CCSModuleRepository", registerModuleRepository},
    {moduleRepositoryClassName, registerForbiddenModules},
    {"CCUISettingsListController", registerModuleSettings},
    {"CCUISettingsModulesController", registerModuleSettings},  // before system version 14.0
});

}  // namespace settings

#pragma once

#include "modules/MutableList.h"

namespace zentrova {

// The configuration file of the Control Center support library. Only its key "module-identifiers"
// is used. Every call rereads the file.

// The modules that Control Center loads. Nothing if the file or the key is missing or damaged.
std::optional<MutableList> loadedModuleIdentifiers();

// Appends the identifiers that the file does not list yet, in order, and writes the file back with
// everything else unchanged. Never removes an identifier. Does not create a missing file, and does
// not change a key that is missing or not an array.
void addLoadedModules(const MutableList& identifiers);

}  // namespace zentrova

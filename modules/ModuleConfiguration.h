#pragma once

#include "modules/MutableList.h"

namespace zentrova {

// The configuration file of the Control Center support library, of which only the key
// "module-identifiers" is of concern here. It is read anew at every call.

// The modules that Control Center loads; nothing where the file or the key is missing or damaged.
std::optional<MutableList> loadedModuleIdentifiers();

// Appends those of the identifiers that the file does not list yet, in order, and writes the file
// back with all else as it was. Never removes one. A file that is missing is not made, and a key
// that is missing or no list stays as it is.
void addLoadedModules(const MutableList& identifiers);

}  // namespace zentrova

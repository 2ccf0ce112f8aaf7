#pragma once

#include <vector>

#include "settings/tree/NodeKind.h"

namespace settings {

// The window, its navigation and the pages.
std::vector<NodeKind> pageKinds();

}  // namespace settings

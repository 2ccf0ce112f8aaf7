#pragma once

#include <vector>

#include "settings/tree/NodeKind.h"

namespace settings {

// Controls and other views.
std::vector<NodeKind> controlKinds();

}  // namespace settings

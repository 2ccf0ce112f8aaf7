#pragma once

#include "settings/tree/NodeKind.h"

namespace settings {

// The members that a node of any kind may have; those of its look are written from a view.
NodeKind everyNode();

}  // namespace settings

#pragma once

#include "settings/tree/NodeKind.h"

namespace settings {

// Every kind of node that the tree has (docs/tree.md): its name, the platform's class that it
// stands for, its members and the actions that it takes. Threads: any.
const KindTable& nodeKinds();

}  // namespace settings

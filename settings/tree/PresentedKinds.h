#pragma once

#include <vector>

#include "settings/tree/NodeKind.h"

namespace settings {

struct PhotoResult;

// What lies over the pages: sheets, pickers, a crash report, a wait.
std::vector<NodeKind> presentedKinds();

// What the kind `waiting` is written from.
struct Wait {
  std::string program;
};

// Chooses the picture in the photo picker of the node. Refused if the node is not a photo picker.
ActionResult choosePhoto(const NodeTarget& target, const PhotoResult& photo);

}  // namespace settings

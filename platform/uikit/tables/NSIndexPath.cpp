#include "platform/uikit/tables/NSIndexPath.h"

namespace platform {

bool NSIndexPath::isEqual(const Object& other) const {
  const auto* path = dynamic_cast<const NSIndexPath*>(&other);
  return path != nullptr && path->_path == _path;
}

std::string NSIndexPath::description() const {
  return "<NSIndexPath: {" + std::to_string(_path.section) + ", " + std::to_string(_path.row) +
         "}>";
}

}  // namespace platform

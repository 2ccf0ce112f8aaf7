#include "platform/foundation/text/SourceFile.h"

namespace platform {

std::string sourceFileName(std::string_view path) {
  const std::string_view name = path.substr(path.find_last_of('/') + 1);
  return name.empty() ? "<Unknown File>" : std::string(name);
}

}  // namespace platform

#include "platform/foundation/SourceFile.h"

#include <string_view>

namespace platform {

std::string sourceFileName(const std::source_location& location) {
  const std::string_view path = location.file_name();
  const std::string_view name = path.substr(path.find_last_of('/') + 1);
  return name.empty() ? "<Unknown File>" : std::string(name);
}

}  // namespace platform

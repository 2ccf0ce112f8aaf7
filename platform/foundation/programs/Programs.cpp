#include "platform/foundation/programs/Programs.h"

#include <cerrno>

#include "platform/foundation/objects/Process.h"

namespace platform {

int posix_spawn(int* pid, std::string_view path, const std::vector<std::string>& arguments,
                const std::optional<std::vector<std::string>>& environment) {
  const ProgramRequest request{std::string(path), arguments, environment, false, -1};
  Programs& programs = Process::current().service<Programs>();
  if (const auto program = programs.start(request)) {
    if (pid != nullptr) *pid = program->processIdentifier();
    return 0;
  }
  const std::vector<ProgramRecord> records = programs.records();
  for (auto record = records.rbegin(); record != records.rend(); ++record) {
    if (record->startError != 0 && record->request.path == path) return record->startError;
  }
  return EAGAIN;
}

}  // namespace platform

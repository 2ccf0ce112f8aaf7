#include "platform/foundation/objects/NSLog.h"

#include <utility>

#include "platform/foundation/log/LogFormat.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/objects/RunLoop.h"

namespace platform {

namespace {

void writeEntry(LogSource source, LogLevel level, std::string message) {
  const Process& process = Process::current();
  if (const auto log = process.serviceOrNull<Log>()) {
    const auto runLoop = process.runLoopOrNull();
    log->write({runLoop ? runLoop->now() : 0.0, source, level, std::move(message)});
  }
}

}  // namespace

void NSLog(std::string_view format, std::initializer_list<Value> arguments) {
  writeEntry(LogSource::nslog, LogLevel::standard, formatString(format, arguments));
}

bool os_log_type_enabled(LogLevel level) {
  const auto log = Process::current().serviceOrNull<Log>();
  return log && log->isEnabled(level);
}

void os_log(LogLevel level, std::string message) {
  if (os_log_type_enabled(level)) writeEntry(LogSource::unified, level, std::move(message));
}

}  // namespace platform

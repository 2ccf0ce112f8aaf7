#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace platform {

enum class LogSource : std::uint8_t { nslog, unified };
enum class LogLevel : std::uint8_t { debug, info, standard, error, fault };

struct LogEntry {
  double time = 0.0;  // seconds of the scheduler's clock
  LogSource source = LogSource::nslog;
  LogLevel level = LogLevel::standard;
  std::string message;
};

// Where log lines go. A service of the process. Threads: any.
class Log {
 public:
  virtual ~Log() = default;
  virtual void write(LogEntry entry) = 0;
  virtual bool isEnabled(LogLevel level) const = 0;
};

// Replaces each "%@" by the description of the next value ("(null)" for none), "%i", "%d", "%li"
// and "%lu" by its integer, "%x" by its integer in hexadecimal, "%s" by its text, "%f" and "%.2f"
// by its real and "%%" by "%". The unified log's "%{public}s" reads as "%s". A value that is
// missing counts as none; what is no directive stays as it stands. A value that is no
// number and no text gives its description everywhere.
std::string formatString(std::string_view format, std::initializer_list<Value> arguments);

// The platform's NSLog: formats as formatString and writes one line to the process's log.
void NSLog(std::string_view format, std::initializer_list<Value> arguments = {});

// The platform's unified log at the default level; the message is finished text.
bool os_log_type_enabled(LogLevel level);
void os_log(LogLevel level, std::string message);

}  // namespace platform

#pragma once

#include <cstdint>
#include <string>

namespace platform {

enum class LogSource : std::uint8_t { nslog, unified };
enum class LogLevel : std::uint8_t { debug, info, standard, error, fault };

struct LogEntry {
  double time = 0.0;  // in seconds, by the scheduler's clock
  LogSource source = LogSource::nslog;
  LogLevel level = LogLevel::standard;
  std::string message;
};

// Receives log lines. A service of the process. Threads: any.
class Log {
 public:
  virtual ~Log() = default;
  virtual void write(LogEntry entry) = 0;
  virtual bool isEnabled(LogLevel level) const = 0;
};

}  // namespace platform

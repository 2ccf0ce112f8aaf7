#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string_view>
#include <vector>

#include "platform/foundation/log/Log.h"

namespace platform {

// Keeps the last `capacity` log entries and reports each to the observers. Debug lines are
// disabled, as on a device. Threads: any.
class MemoryLog final : public Log {
 public:
  using Observer = std::function<void(const LogEntry&)>;

  explicit MemoryLog(std::size_t capacity = 10000) : _capacity(capacity) {}

  void write(LogEntry entry) override;
  bool isEnabled(LogLevel level) const override;

  // Returns the kept entries, oldest first.
  std::vector<LogEntry> entries() const;
  // Returns whether a kept entry has exactly this message.
  bool contains(std::string_view message) const;
  // Calls the observer after each entry, on the logging thread. Returns an id for removeObserver.
  std::uint64_t addObserver(Observer observer);
  void removeObserver(std::uint64_t observer);

 private:
  const std::size_t _capacity;
  mutable std::mutex _mutex;
  std::deque<LogEntry> _entries;
  std::map<std::uint64_t, Observer> _observers;
  std::uint64_t _lastObserver = 0;
};

}  // namespace platform

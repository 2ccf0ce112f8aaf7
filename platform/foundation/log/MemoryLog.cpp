#include "platform/foundation/log/MemoryLog.h"

#include <algorithm>
#include <utility>

namespace platform {

void MemoryLog::write(LogEntry entry) {
  std::vector<Observer> observers;
  {
    const std::lock_guard lock(_mutex);
    for (const auto& [number, observer] : _observers) observers.push_back(observer);
    _entries.push_back(entry);
    if (_entries.size() > _capacity) _entries.pop_front();
  }
  for (const Observer& observer : observers) observer(entry);
}

bool MemoryLog::isEnabled(LogLevel level) const {
  return level != LogLevel::debug;
}

std::vector<LogEntry> MemoryLog::entries() const {
  const std::lock_guard lock(_mutex);
  return {_entries.begin(), _entries.end()};
}

bool MemoryLog::contains(std::string_view message) const {
  const std::lock_guard lock(_mutex);
  return std::any_of(_entries.begin(), _entries.end(),
                     [&](const LogEntry& entry) { return entry.message == message; });
}

std::uint64_t MemoryLog::addObserver(Observer observer) {
  const std::lock_guard lock(_mutex);
  _observers.emplace(++_lastObserver, std::move(observer));
  return _lastObserver;
}

void MemoryLog::removeObserver(std::uint64_t observer) {
  const std::lock_guard lock(_mutex);
  _observers.erase(observer);
}

}  // namespace platform

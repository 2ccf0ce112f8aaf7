#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

namespace settings {

// The most recent records, numbered from 0. Each reader has its own cursor. Threads: any.
template <class T>
class RecordLog {
 public:
  explicit RecordLog(std::size_t capacity) : _capacity(capacity) {}

  void add(T record) {
    const std::lock_guard lock(_mutex);
    _records.push_back(std::move(record));
    if (_records.size() <= _capacity) return;
    _records.pop_front();
    ++_first;
  }

  // Returns the kept records from the cursor on, and moves the cursor past the last one.
  std::vector<T> since(std::uint64_t& cursor) const {
    const std::lock_guard lock(_mutex);
    const std::uint64_t end = _first + _records.size();
    const std::uint64_t start = std::clamp(cursor, _first, end);
    cursor = end;
    return {_records.begin() + static_cast<std::ptrdiff_t>(start - _first), _records.end()};
  }

 private:
  const std::size_t _capacity;
  mutable std::mutex _mutex;
  std::deque<T> _records;
  std::uint64_t _first = 0;  // number of the oldest kept record
};

}  // namespace settings

#pragma once

#include <atomic>
#include <cstdint>

namespace platform::detail {

// The head of shared storage: its number of owners, initially one.
//
// Threads: `retain` and `release` from any thread.
struct Counted {
  std::atomic<std::uint32_t> owners{1};

  void retain() noexcept { owners.fetch_add(1, std::memory_order_relaxed); }
  // Returns true if the caller was the last owner and must destroy the storage.
  bool release() noexcept {
    if (owners.load(std::memory_order_acquire) == 1) return true;
    return owners.fetch_sub(1, std::memory_order_acq_rel) == 1;
  }
  // Returns true if only the caller can reach the storage.
  bool unique() const noexcept { return owners.load(std::memory_order_acquire) == 1; }
};

// Owns one share of a `Store`, which derives from Counted and is destroyed by `static void
// Store::destroy(Store*)`. As large as a pointer; null owns nothing.
template <class Store>
class Share {
 public:
  Share() noexcept = default;
  // Takes over one share of the caller.
  explicit Share(Store* owned) noexcept : _store(owned) {}
  Share(const Share& other) noexcept : _store(other._store) {
    if (_store != nullptr) _store->retain();
  }
  Share(Share&& other) noexcept : _store(other._store) { other._store = nullptr; }
  Share& operator=(Share other) noexcept {
    Store* const previous = _store;
    _store = other._store;
    other._store = previous;
    return *this;
  }
  ~Share() {
    if (_store != nullptr && _store->release()) Store::destroy(_store);
  }

  Store* get() const noexcept { return _store; }
  Store* operator->() const noexcept { return _store; }
  explicit operator bool() const noexcept { return _store != nullptr; }
  // Transfers the share to the caller.
  Store* detach() noexcept {
    Store* const store = _store;
    _store = nullptr;
    return store;
  }

 private:
  Store* _store = nullptr;
};

}  // namespace platform::detail

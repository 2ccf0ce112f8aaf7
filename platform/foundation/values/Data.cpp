#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/foundation/text/Base64.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/DataStore.h"

namespace platform {
namespace detail {
namespace {

// Encoding shorter text again is as fast as a lookup, so caching it would waste memory.
constexpr std::size_t smallestKeptText = 256;

}  // namespace

DataStore::DataStore(std::shared_ptr<const std::uint8_t[]> bytes, std::size_t size)
    : _size(size), _begin(bytes.get()), _bytes(std::move(bytes)) {}

DataStore::DataStore(Base64Text text, std::size_t size) : _size(size), _text(std::move(text)) {}

std::span<const std::uint8_t> DataStore::bytes() {
  if (const std::uint8_t* begin = _begin.load(std::memory_order_acquire)) return {begin, _size};
  std::call_once(_decoding, [this] {
    std::shared_ptr<std::uint8_t[]> bytes(new std::uint8_t[_size + base64::decodeSlack]);
    const Base64Text kept = keptText();
    if (kept.indent) {
      base64::decodeLines(kept.text, *kept.indent, bytes.get());
    } else {
      base64::decode(kept.text, bytes.get());
    }
    _bytes = bytes;
    _begin.store(bytes.get(), std::memory_order_release);
  });
  return {_bytes.get(), _size};
}

Base64Text DataStore::keptText() const {
  const std::lock_guard lock(_mutex);
  return _text;
}

Base64Text DataStore::lines(std::size_t indent) {
  if (Base64Text kept = keptText(); kept.indent == indent) return kept;
  const std::span<const std::uint8_t> content = bytes();
  const std::size_t length = base64::encodedLinesSize(content.size(), indent);
  std::shared_ptr<char[]> lines(new char[length]);
  base64::encodeLines(content, indent, lines.get());
  Base64Text made{lines, {lines.get(), length}, indent};
  if (length < smallestKeptText) return made;
  Base64Text previous = made;  // destroyed outside of the lock
  const std::lock_guard lock(_mutex);
  std::swap(_text, previous);
  return made;
}

}  // namespace detail

namespace {

detail::DataStore* storeOf(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return nullptr;
  std::shared_ptr<std::uint8_t[]> copy(new std::uint8_t[bytes.size()]);
  std::memcpy(copy.get(), bytes.data(), bytes.size());
  return new detail::DataStore(std::move(copy), bytes.size());
}

detail::DataStore* storeOf(std::vector<std::uint8_t>&& bytes) {
  if (bytes.empty()) return nullptr;
  auto owner = std::make_shared<std::vector<std::uint8_t>>(std::move(bytes));
  const std::size_t size = owner->size();
  const std::uint8_t* begin = owner->data();
  return new detail::DataStore(std::shared_ptr<const std::uint8_t[]>(std::move(owner), begin),
                               size);
}

}  // namespace

Data::Data() noexcept = default;
Data::Data(const Data& other) noexcept = default;
Data::Data(Data&& other) noexcept = default;
Data& Data::operator=(const Data& other) noexcept = default;
Data& Data::operator=(Data&& other) noexcept = default;
Data::~Data() = default;

Data::Data(detail::DataStore* owned) noexcept : _store(owned) {}

Data::Data(std::vector<std::uint8_t> bytes) : _store(storeOf(std::move(bytes))) {}

Data::Data(std::string_view bytes)
    : _store(
          storeOf(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()))) {}

std::size_t Data::size() const {
  return _store ? _store->size() : 0;
}

std::span<const std::uint8_t> Data::bytes() const {
  if (!_store) return {};
  return _store->bytes();
}

bool operator==(const Data& a, const Data& b) {
  if (a._store.get() == b._store.get()) return true;
  if (a.size() != b.size()) return false;
  const auto left = a.bytes();
  const auto right = b.bytes();
  return std::equal(left.begin(), left.end(), right.begin());
}

Data Data::sharing(std::shared_ptr<const void> keeper, std::string_view bytes) {
  if (bytes.empty()) return {};
  const auto* begin = reinterpret_cast<const std::uint8_t*>(bytes.data());
  return Data(new detail::DataStore({std::move(keeper), begin}, bytes.size()));
}

Data Data::fromBase64(detail::Base64Text text, std::size_t size) {
  if (size == 0) return {};
  return Data(new detail::DataStore(std::move(text), size));
}

std::string_view Data::base64Lines(std::size_t indent, std::shared_ptr<const void>& keeper) const {
  if (!_store) {
    auto empty = std::make_shared<std::string>("\n" + std::string(indent, '\t'));
    const std::string_view text = *empty;
    keeper = std::move(empty);
    return text;
  }
  detail::Base64Text lines = _store->lines(indent);
  keeper = std::move(lines.keeper);
  return lines.text;
}

}  // namespace platform

#pragma once

#include <cstddef>
#include <string_view>

#include "platform/foundation/propertylist/ValueBuilder.h"
#include "platform/foundation/text/NumberText.h"
#include "platform/foundation/text/TextWords.h"

namespace platform {

// A fast path for common dictionary entries: a short key and a short scalar without references, in
// tags without attributes. It stops before the first other entry, which is left to the general
// reader, and never consumes a partial entry.
//
// It is fast because the position stays in a register.
class PropertyListXmlEntries {
 public:
  PropertyListXmlEntries(std::string_view text, ValueBuilder& builder) noexcept
      : _end(text.data() + text.size()), _builder(builder) {}

  // Reads up to `most` entries from `at`, which must point into the text. Returns the position
  // after the last entry.
  const char* read(const char* at, std::size_t most) {
    while (_count < most) {
      const char* const next = readEntry(at);
      if (next == nullptr) break;
      at = next;
      ++_count;
    }
    return at;
  }
  // Returns the number of entries read.
  std::size_t count() const noexcept { return _count; }

 private:
  // This many bytes can be read without a check for the end: a tag and a text.
  static constexpr std::ptrdiff_t margin = 64;

  bool isNear(const char* at) const noexcept { return _end - at < margin; }

  // Returns null if the entry is not a common one.
  const char* readEntry(const char* at) {
    constexpr words::Pattern start("<key>");
    constexpr words::Pattern end("</key>");
    at = words::skipSpace(at, _end);
    if (isNear(at) || !start.matches(words::load(at))) return nullptr;
    const char* const key = at + 5;
    const std::size_t size = words::plainRun(key, '<', '&');
    if (size == words::runLimit || !end.matches(words::load(key + size))) return nullptr;
    at = words::skipSpace(key + size + 6, _end);
    if (isNear(at) || *at != '<') return nullptr;
    return readValue(at, {key, size});
  }

  const char* readValue(const char* at, std::string_view key) {
    const std::uint64_t word = words::load(at);
    switch (at[1]) {
      case 's':
        return words::Pattern("<string>").matches(word) ? readString(at + 8, key) : nullptr;
      case 't':
        return words::Pattern("<true/>").matches(word) ? push(at + 7, key, true) : nullptr;
      case 'f':
        return words::Pattern("<false/>").matches(word) ? push(at + 8, key, false) : nullptr;
      case 'i':
        return words::Pattern("<integer").matches(word) ? readInteger(at + 8, key) : nullptr;
      case 'r':
        return words::Pattern("<real>").matches(word) ? readReal(at + 6, key) : nullptr;
      default:
        return nullptr;
    }
  }

  const char* readString(const char* text, std::string_view key) {
    const std::size_t size = words::plainRun(text, '<', '&');
    const char* const end = text + size;
    if (size == words::runLimit || !words::Pattern("</string").matches(words::load(end)) ||
        end[8] != '>') {
      return nullptr;
    }
    pushKey(key);
    _builder.pushText({text, size}, words::runLimit);
    return end + 9;
  }

  const char* readInteger(const char* at, std::string_view key) {
    constexpr int mostDigits = 18;
    if (*at != '>') return nullptr;
    const char* digit = at + 1;
    std::uint64_t value = 0;
    while (*digit >= '0' && *digit <= '9' && digit - at <= mostDigits) {
      value = value * 10 + static_cast<std::uint64_t>(*digit++ - '0');
    }
    if (digit == at + 1 || !words::Pattern("</intege").matches(words::load(digit)) ||
        digit[8] != 'r' || digit[9] != '>') {
      return nullptr;
    }
    return push(digit + 10, key, static_cast<std::int64_t>(value));
  }

  const char* readReal(const char* text, std::string_view key) {
    const std::size_t size = words::plainRun(text, '<', '&');
    if (size == words::runLimit || !words::Pattern("</real>").matches(words::load(text + size))) {
      return nullptr;
    }
    const auto value = number_text::parseReal({text, size});
    return value ? push(text + size + 7, key, *value) : nullptr;
  }

  void pushKey(std::string_view key) { _builder.pushKeyText(key, words::runLimit); }

  template <class Content>
  const char* push(const char* next, std::string_view key, Content content) {
    pushKey(key);
    _builder.push(content);
    return next;
  }

  const char* _end;
  ValueBuilder& _builder;
  std::size_t _count = 0;
};

}  // namespace platform

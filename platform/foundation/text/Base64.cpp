#include "platform/foundation/text/Base64.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "platform/foundation/text/Base64Blocks.h"

namespace platform::base64 {
namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t foreign = 0xFF;

constexpr std::array<std::uint8_t, 256> sextets = [] {
  std::array<std::uint8_t, 256> table{};
  table.fill(foreign);
  for (std::uint8_t i = 0; i < 64; ++i) table[static_cast<unsigned char>(alphabet[i])] = i;
  return table;
}();

std::uint8_t sextet(char c) noexcept {
  return sextets[static_cast<unsigned char>(c)];
}

bool isSpace(char c) noexcept {
  return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

// Decodes four characters of the alphabet into three bytes.
void decodeQuantum(const char* text, std::uint8_t* out) noexcept {
  const unsigned group = static_cast<unsigned>(sextet(text[0]) << 18U) |
                         static_cast<unsigned>(sextet(text[1]) << 12U) |
                         static_cast<unsigned>(sextet(text[2]) << 6U) | sextet(text[3]);
  out[0] = static_cast<std::uint8_t>(group >> 16U);
  out[1] = static_cast<std::uint8_t>(group >> 8U);
  out[2] = static_cast<std::uint8_t>(group);
}

// `size` is a multiple of four.
void decodeQuanta(const char* text, std::size_t size, std::uint8_t* out, Path path) noexcept {
  std::size_t offset = path == Path::vector ? avx2::decode(text, size, out) : 0;
  for (; offset < size; offset += 4) decodeQuantum(text + offset, out + offset / 4 * 3);
}

// Encodes one to three bytes, with padding.
void encodeQuantum(const std::uint8_t* bytes, std::size_t count, char* out) noexcept {
  const unsigned second = count > 1 ? bytes[1] : 0U;
  const unsigned third = count > 2 ? bytes[2] : 0U;
  const unsigned group = static_cast<unsigned>(bytes[0] << 16U) | (second << 8U) | third;
  out[0] = alphabet[group >> 18U];
  out[1] = alphabet[(group >> 12U) & 63U];
  out[2] = count > 1 ? alphabet[(group >> 6U) & 63U] : '=';
  out[3] = count > 2 ? alphabet[group & 63U] : '=';
}

// Encodes the start of `readable` bytes.
char* encodeRun(const std::uint8_t* bytes, std::size_t size, std::size_t readable, char* out,
                Path path) noexcept {
  std::size_t offset = path == Path::vector ? avx2::encode(bytes, size, readable, out) : 0;
  out += offset / 3 * 4;
  for (; offset < size; offset += 3, out += 4) {
    encodeQuantum(bytes + offset, std::min<std::size_t>(size - offset, 3), out);
  }
  return out;
}

// The white space between two lines at some indent. If it is short, it is compared with a single
// load.
class Gap {
 public:
  Gap(const char* text, std::size_t size) noexcept : _text(text), _size(size) {
    if (size <= sizeof _word) std::memcpy(&_word, text, size);
    if (size < sizeof _word) _mask = (std::uint64_t{1} << (8 * size)) - 1;
  }
  bool matches(std::string_view text, std::size_t offset) const noexcept {
    if (_size <= sizeof _word && offset + sizeof _word <= text.size()) {
      std::uint64_t word = 0;
      std::memcpy(&word, text.data() + offset, sizeof word);
      return (word & _mask) == _word;
    }
    return offset + _size <= text.size() && std::memcmp(text.data() + offset, _text, _size) == 0;
  }
  std::size_t size() const noexcept { return _size; }
  // Returns the lines around this gap for the block functions; width 0 if those do not support
  // them.
  avx2::Lines lines(std::size_t width) const noexcept {
    constexpr std::size_t narrowest = 32;
    if (_size > sizeof _word || width < narrowest) return {};
    return {width, _size, _word, _mask};
  }

 private:
  const char* _text;
  std::size_t _size;
  std::uint64_t _word = 0;
  std::uint64_t _mask = ~std::uint64_t{0};
};

// Scans the text between two tags in one pass. Lines are regular as long as each full one has the
// width for the indent and is followed by the same gap as the first.
class Scanner {
 public:
  Scanner(std::string_view text, Path path) noexcept
      : _text(text), _path(path), _gap(text.data(), firstGap(text)) {}

  Scan run() noexcept {
    passFullLines();
    while (_offset < _text.size() && _text[_offset] != '<' && step()) {
    }
    return finish();
  }

 private:
  // Returns the size of a leading line end and its tabs; 0 if there is none.
  static std::size_t firstGap(std::string_view text) noexcept {
    if (text.empty() || text.front() != '\n') return 0;
    return std::min(text.find_first_not_of('\t', 1), text.size());
  }

  void passFullLines() noexcept {
    if (_gap.size() == 0) return;
    _offset = _gap.size();
    const std::size_t width = lineWidth(_gap.size() - 1);
    if (_path == Path::vector) passBlocks(_gap.lines(width));
    for (;;) {
      const std::size_t length = alphabetRun(_text.substr(_offset), _path);
      if (length != width || !_gap.matches(_text, _offset + length)) return;
      const std::size_t next = _offset + length + _gap.size();
      if (next >= _text.size() || sextet(_text[next]) == foreign) return;
      _offset = next;
      _characters += length;
    }
  }

  void passBlocks(const avx2::Lines& lines) noexcept {
    if (lines.width == 0) return;
    const std::string_view rest = _text.substr(_offset);
    std::size_t count = avx2::regularLines(rest.data(), rest.size(), lines);
    const std::size_t stride = lines.width + lines.gapSize;
    // The gap after the last line may be the one before the end tag, which must not be skipped
    // here.
    if (count > 0 && sextet(rest[count * stride]) == foreign) --count;
    _offset += count * stride;
    _characters += count * lines.width;
  }

  // Skips one run, one padding character or the white space at _offset. Returns false if there is
  // none of them.
  bool step() noexcept {
    const std::size_t length = alphabetRun(_text.substr(_offset), _path);
    if (length > 0) return passRun(length);
    if (_text[_offset] == '=') return passPad();
    if (!isSpace(_text[_offset])) return refuse("only base64 text is allowed in <data>");
    if (_gap.size() != 0 && _gap.matches(_text, _offset) && _lastGap == 0) {
      _lastGap = _offset;
      _offset += _gap.size();
      return true;
    }
    _regular = false;
    while (_offset < _text.size() && isSpace(_text[_offset])) ++_offset;
    return true;
  }

  bool passRun(std::size_t length) noexcept {
    if (_padding > 0) return refuse("base64 text continues after its padding");
    _regular = _regular && _lastRun == 0 && _lastGap == 0;
    _lastRun = length;
    _last = _text[_offset + length - 1];
    _characters += length;
    _offset += length;
    return true;
  }

  bool passPad() noexcept {
    if (_padding == 2 || (_characters + _padding) % 4 < 2) {
      return refuse("'=' is allowed only as padding at the end of base64 text");
    }
    _regular = _regular && _lastGap == 0;
    ++_padding;
    ++_offset;
    return true;
  }

  bool refuse(const char* problem) noexcept {
    _problem = problem;
    return false;
  }

  // encodeLines writes 0 for the unused bits of the last character.
  bool spareBitsAreZero() const noexcept {
    return _padding == 0 || (sextet(_last) & (_padding == 1 ? 3U : 15U)) == 0;
  }

  Scan finish() noexcept {
    Scan scan;
    scan.length = _offset;
    if (_problem == nullptr && (_characters + _padding) % 4 != 0) {
      _problem = "base64 text must have a multiple of four characters, padding included";
    }
    scan.problem = _problem;
    scan.size = _characters / 4 * 3 + (_padding == 0 ? 0 : 3 - _padding);
    const bool ended = _lastGap == 0 ? _characters == 0 && _gap.size() == _offset
                                     : _lastRun > 0 && _lastGap + _gap.size() == _offset;
    const bool fits = _lastRun + _padding <= lineWidth(_gap.size() - 1);
    if (_regular && _gap.size() != 0 && ended && fits && spareBitsAreZero()) {
      scan.indent = _gap.size() - 1;
    }
    return scan;
  }

  std::string_view _text;
  Path _path;
  Gap _gap;
  std::size_t _offset = 0;
  std::size_t _characters = 0;
  std::size_t _padding = 0;
  std::size_t _lastRun = 0;  // length of the run after the full lines
  std::size_t _lastGap = 0;  // position of the gap before the end tag
  char _last = 'A';
  bool _regular = true;
  const char* _problem = nullptr;
};

// Decodes text with white space at any position.
void decodeAnywhere(std::string_view text, std::uint8_t* out, Path path) noexcept {
  std::array<char, 4> pending{};  // characters of a group split by a line end
  std::size_t waiting = 0;
  std::size_t offset = 0;
  while (offset < text.size()) {
    if (waiting == 0) {
      const std::size_t whole = alphabetRun(text.substr(offset), path) & ~std::size_t{3};
      decodeQuanta(text.data() + offset, whole, out, path);
      out += whole / 4 * 3;
      offset += whole;
    }
    if (offset == text.size()) break;
    const char c = text[offset++];
    if (sextet(c) == foreign) continue;
    pending[waiting++] = c;
    if (waiting == 4) {
      decodeQuantum(pending.data(), out);
      out += 3;
      waiting = 0;
    }
  }
  if (waiting < 2) return;
  std::array<std::uint8_t, 3> rest{};
  std::fill(pending.begin() + static_cast<std::ptrdiff_t>(waiting), pending.end(), 'A');
  decodeQuantum(pending.data(), rest.data());
  std::memcpy(out, rest.data(), waiting - 1);
}

}  // namespace

Path defaultPath() noexcept {
  static const Path path =
      avx2::available() && std::getenv("ZENTROVA_SCALAR") == nullptr ? Path::vector : Path::scalar;
  return path;
}

std::size_t alphabetRun(std::string_view text, Path path) noexcept {
  std::size_t length = 0;
  if (path == Path::vector) {
    const avx2::Run run = avx2::alphabetRun(text.data(), text.size());
    if (run.ended) return run.length;
    length = run.length;
  }
  while (length < text.size() && sextet(text[length]) != foreign) ++length;
  return length;
}

Scan scan(std::string_view text, Path path) noexcept {
  return Scanner(text, path).run();
}

void decode(std::string_view text, std::uint8_t* out, Path path) noexcept {
  decodeAnywhere(text, out, path);
}

void decodeLines(std::string_view text, std::size_t indent, std::uint8_t* out, Path path) noexcept {
  const std::size_t width = lineWidth(indent);
  const Gap gap(text.data(), indent + 1);
  const avx2::Lines lines = gap.lines(width);
  if (path == Path::vector && lines.width != 0 && text.size() > gap.size()) {
    text.remove_prefix(gap.size());
    const std::size_t stride = width + gap.size();
    // The last line may be short, and the gap before its end tag is shorter than a block.
    const std::size_t count = (text.size() - 1) / stride;
    avx2::decodeLines(text.data(), count, lines, out);
    text.remove_prefix(count * stride);
    out += count * (width / 4 * 3);
  }
  decodeAnywhere(text, out, path);
}

std::string encode(std::span<const std::uint8_t> bytes, Path path) {
  std::string text((bytes.size() + 2) / 3 * 4, '\0');
  encodeRun(bytes.data(), bytes.size(), bytes.size(), text.data(), path);
  return text;
}

std::size_t encodedLinesSize(std::size_t size, std::size_t indent) noexcept {
  const std::size_t characters = (size + 2) / 3 * 4;
  const std::size_t width = lineWidth(indent);
  const std::size_t lines = (characters + width - 1) / width;
  return characters + (lines + 1) * (1 + indent);
}

void encodeLines(std::span<const std::uint8_t> bytes, std::size_t indent, char* out,
                 Path path) noexcept {
  const std::size_t lineBytes = lineWidth(indent) / 4 * 3;
  const auto gap = [&] {
    *out++ = '\n';
    std::memset(out, '\t', indent);
    out += indent;
  };
  gap();
  for (std::size_t offset = 0; offset < bytes.size(); offset += lineBytes) {
    const std::size_t readable = bytes.size() - offset;
    out = encodeRun(bytes.data() + offset, std::min(lineBytes, readable), readable, out, path);
    gap();
  }
}

}  // namespace platform::base64

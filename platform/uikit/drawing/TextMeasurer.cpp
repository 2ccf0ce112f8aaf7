#include "platform/uikit/drawing/TextMeasurer.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "platform/foundation/objects/Process.h"
#include "platform/uikit/drawing/UIFont.h"

namespace platform {
namespace {

constexpr std::string_view narrowCharacters = "iljtfrI.,:;'|!()[] ";
constexpr std::string_view wideCharacters = "mwMW@%";

// Returns the width of a character relative to the font size.
double relativeWidth(char32_t character) {
  constexpr char32_t firstWide = 0x1100;  // scripts with square characters start here
  if (character >= firstWide) return 1.0;
  if (character >= 0x80) return 0.56;
  const char ascii = static_cast<char>(character);
  if (narrowCharacters.find(ascii) != std::string_view::npos) return 0.29;
  if (wideCharacters.find(ascii) != std::string_view::npos) return 0.87;
  if (ascii >= 'A' && ascii <= 'Z') return 0.67;
  return 0.55;
}

// Removes the first character and returns it. Each invalid byte counts as a character.
char32_t nextCharacter(std::string_view& utf8) {
  const auto first = static_cast<unsigned char>(utf8.front());
  std::size_t length = 1;
  if (first >= 0xF0) {
    length = 4;
  } else if (first >= 0xE0) {
    length = 3;
  } else if (first >= 0xC0) {
    length = 2;
  }
  length = std::min(length, utf8.size());
  char32_t character = length == 1 ? first : first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    character = character << 6U | (static_cast<unsigned char>(utf8[i]) & 0x3FU);
  }
  utf8.remove_prefix(length);
  return character;
}

// Distributes words over lines no wider than the maximum.
class LineBreaker {
 public:
  explicit LineBreaker(double maximumWidth) : _maximumWidth(maximumWidth) {}

  void add(char32_t character, double width) {
    if (character == '\n') {
      endWord();
      endLine();
    } else if (character == ' ') {
      endWord();
      _blanks += width;
    } else {
      if (_word > 0 && _word + width > _maximumWidth) endWord();  // longer than a line
      _word += width;
    }
  }
  void finish() {
    endWord();
    endLine();
  }
  double width() const noexcept { return _widest; }
  std::int64_t lines() const noexcept { return _lines; }

 private:
  void endWord() {
    if (_word <= 0) return;
    if (_line > 0 && _line + _blanks + _word > _maximumWidth) endLine();
    _line += (_line > 0 ? _blanks : 0) + _word;
    _blanks = 0;
    _word = 0;
  }
  void endLine() {
    _widest = std::max(_widest, _line);
    _line = 0;
    _blanks = 0;
    ++_lines;
  }

  double _maximumWidth;
  double _word = 0;
  double _blanks = 0;
  double _line = 0;
  double _widest = 0;
  std::int64_t _lines = 0;
};

double weightFactor(UIFontWeight weight) {
  return weight == UIFontWeight::bold || weight == UIFontWeight::semibold ? 1.06 : 1.0;
}

}  // namespace

Size EstimatingTextMeasurer::sizeOfText(std::string_view utf8, const UIFont& font,
                                        double maximumWidth, std::int64_t maximumLines) {
  if (utf8.empty()) return {};
  const double unit = font.pointSize() * weightFactor(font.weight());
  LineBreaker lines(maximumLines == 1 ? unlimitedWidth : maximumWidth);
  while (!utf8.empty()) {
    const char32_t character = nextCharacter(utf8);
    lines.add(character, relativeWidth(character) * unit);
  }
  lines.finish();
  const std::int64_t count =
      maximumLines > 0 ? std::min(lines.lines(), maximumLines) : lines.lines();
  return {std::min(std::ceil(lines.width()), maximumWidth),
          std::ceil(static_cast<double>(count) * font.lineHeight())};
}

TextMeasurer& textMeasurer() {
  Process& process = Process::current();
  if (const auto provided = process.serviceOrNull<TextMeasurer>()) return *provided;
  return process.once<EstimatingTextMeasurer>();
}

}  // namespace platform

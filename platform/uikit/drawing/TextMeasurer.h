#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

#include "platform/uikit/drawing/Geometry.h"

namespace platform {

class UIFont;

// Measures text. A service of the process: a presenter that knows its fonts brings its own.
// Threads: main.
class TextMeasurer {
 public:
  virtual ~TextMeasurer() = default;
  // The size in points of the text, broken into lines no wider than maximumWidth. maximumLines 0
  // is any number. An empty text has no size.
  virtual Size sizeOfText(std::string_view utf8, const UIFont& font, double maximumWidth,
                          std::int64_t maximumLines) = 0;

  static constexpr double unlimitedWidth = std::numeric_limits<double>::infinity();
};

// Estimates widths by classes of characters and breaks lines at blanks. No font is consulted: a
// real rendering may differ by about a tenth.
class EstimatingTextMeasurer final : public TextMeasurer {
 public:
  Size sizeOfText(std::string_view utf8, const UIFont& font, double maximumWidth,
                  std::int64_t maximumLines) override;
};

// The process's measurer, or the estimating one where none was provided.
TextMeasurer& textMeasurer();

}  // namespace platform

#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

#include "platform/uikit/drawing/Geometry.h"

namespace platform {

class UIFont;

// Measures text. A service of the process; a presenter with known fonts provides its own. Threads:
// main.
class TextMeasurer {
 public:
  virtual ~TextMeasurer() = default;
  // Returns the size in points of the text, broken into lines no wider than maximumWidth. If
  // maximumLines is 0, the number of lines is not limited. Empty text has size zero.
  virtual Size sizeOfText(std::string_view utf8, const UIFont& font, double maximumWidth,
                          std::int64_t maximumLines) = 0;

  static constexpr double unlimitedWidth = std::numeric_limits<double>::infinity();
};

// Estimates widths by character classes and breaks lines at spaces. Does not use a font: a real
// rendering may differ by about 10 percent.
class EstimatingTextMeasurer final : public TextMeasurer {
 public:
  Size sizeOfText(std::string_view utf8, const UIFont& font, double maximumWidth,
                  std::int64_t maximumLines) override;
};

// Returns the process's measurer, or the estimating one if none was provided.
TextMeasurer& textMeasurer();

}  // namespace platform

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/uikit/drawing/UIFont.h"
#include "platform/uikit/views/UIView.h"

namespace platform {

enum class NSTextAlignment : std::uint8_t { left = 0, center = 1, right = 2, natural = 4 };

// Shows a text. Threads: main.
class UILabel : public UIView {
  PLATFORM_CLASS(UILabel)

 public:
  UILabel();

  // None and empty text differ but look the same.
  const std::optional<std::string>& text() const noexcept { return _text; }
  void setText(std::optional<std::string> text);
  const std::shared_ptr<UIFont>& font() const noexcept { return _font; }
  void setFont(std::shared_ptr<UIFont> font);  // empty for the standard font
  const std::shared_ptr<UIColor>& textColor() const noexcept { return _textColor; }
  void setTextColor(std::shared_ptr<UIColor> color);  // empty for labelColor
  // If empty, the text colour is used while highlighted.
  const std::shared_ptr<UIColor>& highlightedTextColor() const noexcept {
    return _highlightedTextColor;
  }
  void setHighlightedTextColor(std::shared_ptr<UIColor> color);
  bool isHighlighted() const noexcept { return _highlighted; }
  void setHighlighted(bool highlighted);
  bool isEnabled() const noexcept { return _enabled; }
  void setEnabled(bool enabled);
  NSTextAlignment textAlignment() const noexcept { return _textAlignment; }
  void setTextAlignment(NSTextAlignment alignment);
  std::int64_t numberOfLines() const noexcept { return _numberOfLines; }  // 0 for no limit
  void setNumberOfLines(std::int64_t lines);

  // For the current width if the text may wrap, otherwise for one line.
  Size intrinsicContentSize() const override;
  // Returns the size in points that the text needs in the given width.
  Size sizeThatFitsWidth(double width) const;

 private:
  std::optional<std::string> _text;
  std::shared_ptr<UIFont> _font;
  std::shared_ptr<UIColor> _textColor;
  std::shared_ptr<UIColor> _highlightedTextColor;
  NSTextAlignment _textAlignment = NSTextAlignment::natural;
  std::int64_t _numberOfLines = 1;
  bool _highlighted = false;
  bool _enabled = true;
};

}  // namespace platform

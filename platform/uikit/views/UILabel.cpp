#include "platform/uikit/views/UILabel.h"

#include <algorithm>

#include "platform/uikit/drawing/TextMeasurer.h"

namespace platform {

UILabel::UILabel()
    : _font(UIFont::systemFontOfSize(UIFont::standardPointSize)),
      _textColor(UIColor::labelColor()) {
  setUserInteractionEnabled(false);
}

void UILabel::setText(std::optional<std::string> text) {
  if (assign(_text, std::move(text))) invalidateIntrinsicContentSize();
}

void UILabel::setFont(std::shared_ptr<UIFont> font) {
  if (!font) font = UIFont::systemFontOfSize(UIFont::standardPointSize);
  if (assign(_font, std::move(font))) invalidateIntrinsicContentSize();
}

void UILabel::setTextColor(std::shared_ptr<UIColor> color) {
  assign(_textColor, color ? std::move(color) : UIColor::labelColor());
}

void UILabel::setHighlightedTextColor(std::shared_ptr<UIColor> color) {
  assign(_highlightedTextColor, std::move(color));
}

void UILabel::setHighlighted(bool highlighted) {
  assign(_highlighted, highlighted);
}

void UILabel::setEnabled(bool enabled) {
  assign(_enabled, enabled);
}

void UILabel::setTextAlignment(NSTextAlignment alignment) {
  assign(_textAlignment, alignment);
}

void UILabel::setNumberOfLines(std::int64_t lines) {
  const std::int64_t least = 0;
  if (assign(_numberOfLines, std::max(lines, least))) invalidateIntrinsicContentSize();
}

Size UILabel::intrinsicContentSize() const {
  const bool wraps = _numberOfLines != 1 && frame().width > 0;
  return sizeThatFitsWidth(wraps ? frame().width : TextMeasurer::unlimitedWidth);
}

Size UILabel::sizeThatFitsWidth(double width) const {
  return textMeasurer().sizeOfText(_text.value_or(""), *_font, width, _numberOfLines);
}

}  // namespace platform

#include "platform/uikit/views/CALayer.h"

#include <algorithm>

#include "platform/uikit/views/UIView.h"

namespace platform {

void CALayer::noteChange() {
  if (_owner != nullptr) _owner->noteChange();
}

void CALayer::setCornerRadius(double radius) {
  _cornerRadius = radius;
  noteChange();
}

void CALayer::setBorderWidth(double width) {
  _borderWidth = std::max(width, 0.0);
  noteChange();
}

void CALayer::setBorderColor(std::shared_ptr<UIColor> color) {
  _borderColor = std::move(color);
  noteChange();
}

void CALayer::setMask(std::shared_ptr<CALayer> mask) {
  if (mask.get() == this) return;
  _mask = std::move(mask);
  noteChange();
}

void CALayer::setContents(std::shared_ptr<UIImage> contents) {
  _contents = std::move(contents);
  noteChange();
}

void CALayer::setFrame(Rect frame) {
  _frame = frame;
  noteChange();
}

void CALayer::setMinificationFilter(std::string filter) {
  _minificationFilter = std::move(filter);
  noteChange();
}

}  // namespace platform

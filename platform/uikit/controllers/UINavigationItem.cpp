#include "platform/uikit/controllers/UINavigationItem.h"

#include "platform/uikit/drawing/UIKitState.h"

namespace platform {

void UINavigationItem::setTitle(std::optional<std::string> title) {
  _title = std::move(title);
  UIKitState::current().countChange();
}

void UINavigationItem::setLargeTitleDisplayMode(UINavigationItemLargeTitleDisplayMode mode) {
  _mode = mode;
  UIKitState::current().countChange();
}

}  // namespace platform

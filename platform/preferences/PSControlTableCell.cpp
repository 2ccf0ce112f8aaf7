#include "platform/preferences/PSControlTableCell.h"

#include <algorithm>

namespace platform {

bool PSControlTableCell::initWithStyle(UITableViewCellStyle style,
                                       const std::optional<std::string>& reuseIdentifier,
                                       const std::shared_ptr<PSSpecifier>& specifier) {
  if (!PSTableCell::initWithStyle(style, reuseIdentifier, specifier)) return false;
  setSelectionStyle(UITableViewCellSelectionStyle::none);
  _control = makeControl();
  return true;
}

void PSControlTableCell::setCellEnabled(bool enabled) {
  PSTableCell::setCellEnabled(enabled);
  if (_control) _control->setEnabled(enabled);
}

// A control in the content view fills the space beside the row's title.
void PSControlTableCell::layoutSubviews() {
  PSTableCell::layoutSubviews();
  if (!_control || _control->superview() != contentView()) return;
  const Rect bounds = contentView()->bounds();
  const bool hasTitle = textLabel()->text() && !textLabel()->text()->empty();
  const double left = hasTitle ? bounds.width * 0.4 : margin;
  const double height = std::min(_control->intrinsicContentSize().height, bounds.height);
  _control->setFrame(
      {left, (bounds.height - height) / 2, std::max(0.0, bounds.width - left - margin), height});
}

}  // namespace platform

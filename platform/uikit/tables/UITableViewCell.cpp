#include "platform/uikit/tables/UITableViewCell.h"

#include <algorithm>

#include "platform/uikit/drawing/TextMeasurer.h"

namespace platform {
namespace {

constexpr double newCellWidth = 320;   // in points, until the table places the cell
constexpr double accessoryWidth = 20;  // in points, for the standard accessories
constexpr double editingControlWidth = 40;
constexpr double gap = 8;
constexpr double subtitleSize = 12;

}  // namespace

UITableViewCell::UITableViewCell()
    : _contentView(make<UIView>()), _textLabel(make<UILabel>()), _imageView(make<UIImageView>()) {}

bool UITableViewCell::init() {
  return initWithStyle(UITableViewCellStyle::standard, std::nullopt);
}

bool UITableViewCell::initWithFrame(Rect frame) {
  setFrame(frame);
  return init();
}

bool UITableViewCell::initWithStyle(UITableViewCellStyle style,
                                    std::optional<std::string> reuseIdentifier) {
  _style = style;
  _reuseIdentifier = std::move(reuseIdentifier);
  if (frame() == Rect{}) setFrame({0, 0, newCellWidth, standardHeight});
  if (style != UITableViewCellStyle::standard && !_detailTextLabel) {
    _detailTextLabel = make<UILabel>();
    _detailTextLabel->setTextColor(UIColor::secondaryLabelColor());
  }
  if (style == UITableViewCellStyle::subtitle) {
    _detailTextLabel->setFont(UIFont::systemFontOfSize(subtitleSize));
  }
  insertSubview(_contentView, 0);
  _contentView->addSubview(_imageView);
  _contentView->addSubview(_textLabel);
  _contentView->addSubview(_detailTextLabel);
  return true;
}

void UITableViewCell::prepareForReuse() {
  setHighlighted(false);
  setSelected(false);
}

void UITableViewCell::setAccessoryType(UITableViewCellAccessoryType type) {
  if (assign(_accessoryType, type)) setNeedsLayout();
}

void UITableViewCell::setEditingAccessoryType(UITableViewCellAccessoryType type) {
  if (assign(_editingAccessoryType, type)) setNeedsLayout();
}

void UITableViewCell::setAccessoryView(std::shared_ptr<UIView> view) {
  replaceAccessory(_accessoryView, std::move(view));
}

void UITableViewCell::setEditingAccessoryView(std::shared_ptr<UIView> view) {
  replaceAccessory(_editingAccessoryView, std::move(view));
}

void UITableViewCell::replaceAccessory(std::shared_ptr<UIView>& field,
                                       std::shared_ptr<UIView> view) {
  const auto previous = field;
  if (!assign(field, std::move(view))) return;
  if (previous && previous->superview().get() == this) previous->removeFromSuperview();
  addSubview(field);
  setNeedsLayout();
}

std::shared_ptr<UIImage> UITableViewCell::disclosureChevronImage() const {
  return UIImage::systemImageNamed("chevron.right");
}

void UITableViewCell::setSelectionStyle(UITableViewCellSelectionStyle style) {
  assign(_selectionStyle, style);
}

void UITableViewCell::setSelected(bool selected, bool /*animated*/) {
  if (assign(_selected, selected)) updateHighlightedText();
}

void UITableViewCell::setHighlighted(bool highlighted, bool /*animated*/) {
  if (assign(_highlighted, highlighted)) updateHighlightedText();
}

void UITableViewCell::updateHighlightedText() {
  const bool highlighted =
      (_selected || _highlighted) && _selectionStyle != UITableViewCellSelectionStyle::none;
  _textLabel->setHighlighted(highlighted);
  if (_detailTextLabel) _detailTextLabel->setHighlighted(highlighted);
}

void UITableViewCell::setEditing(bool editing, bool /*animated*/) {
  if (assign(_editing, editing)) setNeedsLayout();
}

double UITableViewCell::trailingWidth() const {
  const auto& view = _editing ? _editingAccessoryView : _accessoryView;
  if (view) return view->frame().width + margin;
  const auto type = _editing ? _editingAccessoryType : _accessoryType;
  return type == UITableViewCellAccessoryType::none ? 0 : accessoryWidth + margin;
}

double UITableViewCell::heightThatFitsWidth(double width) const {
  const double image = _imageView->image() ? _imageView->image()->size().width + gap : 0;
  const double available = std::max(width - 2 * margin - trailingWidth() - image, 1.0);
  double height = _textLabel->sizeThatFitsWidth(available).height;
  if (_detailTextLabel) {
    const double detail = _detailTextLabel->sizeThatFitsWidth(available).height;
    height = _style == UITableViewCellStyle::subtitle ? height + detail : std::max(height, detail);
  }
  constexpr double verticalMargins = 22;
  return std::max(standardHeight, height + verticalMargins);
}

void UITableViewCell::layoutSubviews() {
  layoutAccessories();
  const double left = _editing ? editingControlWidth : 0;
  _contentView->setFrame({left, 0, frame().width - left - trailingWidth(), frame().height});
  layoutContents();
}

void UITableViewCell::layoutAccessories() {
  for (const auto& view : {_accessoryView, _editingAccessoryView}) {
    if (!view || !view->translatesAutoresizingMaskIntoConstraints()) continue;
    const Size size = view->frame().size();
    view->setFrame({frame().width - margin - size.width, (frame().height - size.height) / 2,
                    size.width, size.height});
  }
}

void UITableViewCell::layoutContents() {
  const Size content = _contentView->frame().size();
  double left = margin;
  Rect image{margin, content.height / 2, 0, 0};
  if (_imageView->image()) {
    const Size size = _imageView->image()->size();
    image = {margin, (content.height - size.height) / 2, size.width, size.height};
    left = image.maxX() + gap;
  }
  _imageView->setFrame(image);
  layoutTexts(left, std::max(content.width - margin, left));
}

void UITableViewCell::layoutTexts(double left, double right) {
  const double height = _contentView->frame().height;
  const double width = right - left;
  const Size text = _textLabel->sizeThatFitsWidth(width);
  if (!_detailTextLabel) {
    _textLabel->setFrame({left, 0, width, height});
    return;
  }
  const Size detail = _detailTextLabel->sizeThatFitsWidth(width);
  if (_style == UITableViewCellStyle::subtitle) {
    const double top = (height - text.height - detail.height) / 2;
    _textLabel->setFrame({left, top, width, text.height});
    _detailTextLabel->setFrame({left, top + text.height, width, detail.height});
    return;
  }
  const double split = std::min(left + text.width + gap, right);
  _textLabel->setFrame({left, 0, split - left, height});
  _detailTextLabel->setFrame({split, 0, right - split, height});
}

}  // namespace platform

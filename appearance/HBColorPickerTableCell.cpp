#include "appearance/HBColorPickerTableCell.h"

#include <utility>

#include "appearance/ColorCodec.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/MutableDictionary.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "prefs/HBPreferences.h"

namespace zentrova {

using platform::PSSpecifier;
using platform::UIColor;
using platform::UIColorPickerViewController;
using platform::UILabel;
using platform::UIView;
using platform::Value;

namespace {

constexpr const char* tapAction = "openColorPicker";
constexpr double titleSize = 17.0;
constexpr double titleMargin = 10.0;
constexpr double swatchSide = 29.0;
constexpr double ringWidth = 1.2;

std::string preferenceFile() {
  return HBPreferences::filePathForIdentifier(preferencesDomain);
}

std::shared_ptr<UIColorPickerViewController> makePicker() {
  const auto& process = platform::Process::current();
  if (!process.service<platform::DeviceTraits>().systemVersion.isAtLeast(14)) return nullptr;
  return platform::makeNamed<UIColorPickerViewController>("UIColorPickerViewController");
}

}  // namespace

bool HBColorPickerTableCell::initWithStyle(platform::UITableViewCellStyle style,
                                           const std::optional<std::string>& reuseIdentifier,
                                           const std::shared_ptr<PSSpecifier>& specifier) {
  if (!PSTableCell::initWithStyle(style, reuseIdentifier, specifier)) return false;
  _tintColour = UIColor::systemBlueColor();
  makeHeaderLabel();
  return true;
}

void HBColorPickerTableCell::makeHeaderLabel() {
  _headerLabel = platform::make<UILabel>();
  _headerLabel->setTextColor(_tintColour);
  _headerLabel->setText(property("title").text());
  _headerLabel->setFont(platform::UIFont::systemFontOfSize(titleSize));
  _headerLabel->setTranslatesAutoresizingMaskIntoConstraints(false);
  addSubview(_headerLabel);
  platform::NSLayoutConstraint::activateConstraints(
      {_headerLabel->centerYAnchor().constraintEqualToAnchor(centerYAnchor(), 0.0),
       _headerLabel->leadingAnchor().constraintEqualToAnchor(leadingAnchor(), titleMargin),
       _headerLabel->trailingAnchor().constraintEqualToAnchor(contentView()->trailingAnchor(),
                                                              -titleMargin)});
}

void HBColorPickerTableCell::setHeaderLabel(std::shared_ptr<UILabel> label) {
  _headerLabel = std::move(label);
}

void HBColorPickerTableCell::setColorPreview(std::shared_ptr<UIView> view) {
  _colorPreview = std::move(view);
}

void HBColorPickerTableCell::setTintColour(std::shared_ptr<UIColor> color) {
  _tintColour = std::move(color);
}

// --- Showing ---

Value HBColorPickerTableCell::property(const std::string& key) const {
  return specifier() ? specifier()->propertyForKey(key) : Value();
}

Value HBColorPickerTableCell::_hbcp_key() const {
  return property("key");
}

Value HBColorPickerTableCell::storedValue() const {
  const auto content = platform::dictionaryWithContentsOfFile(preferenceFile());
  const auto key = _hbcp_key().text();
  return content && key ? content->valueForKey(*key) : Value();
}

void HBColorPickerTableCell::_updateValue() {
  updatePreview();
}

void HBColorPickerTableCell::updatePreview() {
  _colorPreview = platform::makeWithFrame<UIView>({0, 0, swatchSide, swatchSide});
  const auto& layer = _colorPreview->layer();
  layer->setBorderWidth(ringWidth);
  layer->setBorderColor(_tintColour);
  layer->setCornerRadius(swatchSide / 2);
  const Value stored = storedValue();
  const Value shown = stored ? stored : property("default");
  _colorPreview->setBackgroundColor(colorWithHexString(shown.text()));
  setAccessoryView(_colorPreview);
}

void HBColorPickerTableCell::didMoveToSuperview() {
  PSTableCell::didMoveToSuperview();
  updatePreview();
  const auto& row = specifier();
  if (!row) return;
  row->setTarget(shared_from_this());
  row->setButtonAction(tapAction);
}

// --- Taps ---

std::shared_ptr<platform::Object> HBColorPickerTableCell::target() {
  return shared_from_this();
}

std::optional<std::string> HBColorPickerTableCell::action() {
  return tapAction;
}

std::shared_ptr<platform::Object> HBColorPickerTableCell::cellTarget() {
  return target();
}

std::optional<std::string> HBColorPickerTableCell::cellAction() {
  return action();
}

void HBColorPickerTableCell::openColorPicker() {
  const auto page = viewControllerForAncestor();
  const auto picker = makePicker();
  if (!page || !picker) return;
  picker->view()->setTintColor(_tintColour);
  picker->setDelegate(self<HBColorPickerTableCell>());
  picker->setSelectedColor(startColor());
  picker->setSupportsAlpha(false);
  page->presentViewController(picker, true);
}

// A value with a suffix is ignored.
std::shared_ptr<UIColor> HBColorPickerTableCell::startColor() const {
  const Value stored = storedValue();
  const auto text = stored.text();
  if (!stored || (text && text->find(':') != std::string::npos)) return UIColor::blackColor();
  return colorWithHexString(text);
}

void HBColorPickerTableCell::colorPickerViewControllerDidSelectColor(
    const std::shared_ptr<UIColorPickerViewController>& picker) {
  storeColor(picker->selectedColor());
}

void HBColorPickerTableCell::colorPickerViewControllerDidFinish(
    const std::shared_ptr<UIColorPickerViewController>& picker) {
  storeColor(picker->selectedColor());
}

void HBColorPickerTableCell::storeColor(const std::shared_ptr<UIColor>& color) {
  auto content = platform::dictionaryWithContentsOfFile(preferenceFile());
  platform::MutableDictionary file(std::move(content).value_or(platform::Dictionary()));
  file.setValueForKey(hexStringFromColor(color), _hbcp_key());
  // A failed write is not reported: the swatch shows the colour that is in the file.
  platform::writeToFileAtomically(file, preferenceFile());
  updatePreview();
}

// --- Colour value strings ---

std::shared_ptr<UIColor> HBColorPickerTableCell::colorWithHexString(
    const std::optional<std::string>& text) const {
  return colorFromValueString(text.value_or(std::string()));
}

std::string HBColorPickerTableCell::hexStringFromColor(
    const std::shared_ptr<UIColor>& color) const {
  return valueStringFromColor(color ? color->components() : platform::ColorComponents{0, 0, 0, 0});
}

void HBColorPickerTableCell::registerClass(platform::ClassRegistry& registry) {
  using Cell = HBColorPickerTableCell;
  platform::ClassBuilder<Cell> builder("PSTableCell");
  builder.operation("target", &Cell::target)
      .operation("cellTarget", &Cell::cellTarget)
      .operation("action", &Cell::action)
      .operation("cellAction", &Cell::cellAction)
      .operation("openColorPicker", &Cell::openColorPicker)
      .operation("_updateValue", &Cell::_updateValue)
      .operation("_hbcp_key", &Cell::_hbcp_key)
      .operation("updatePreview", &Cell::updatePreview)
      .operation("didMoveToSuperview", &Cell::didMoveToSuperview)
      .operation("colorPickerViewControllerDidSelectColor:",
                 &Cell::colorPickerViewControllerDidSelectColor)
      .operation("colorPickerViewControllerDidFinish:", &Cell::colorPickerViewControllerDidFinish)
      .operation("colorWithHexString:", &Cell::colorWithHexString)
      .operation("hexStringFromColor:", &Cell::hexStringFromColor);
  builder.property("headerLabel", &Cell::headerLabel, &Cell::setHeaderLabel)
      .property("colorPreview", &Cell::colorPreview, &Cell::setColorPreview)
      .property("tintColour", &Cell::tintColour, &Cell::setTintColour);
  registry.add(builder.build());
}

}  // namespace zentrova

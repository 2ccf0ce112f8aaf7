#include "platform/preferences/PSSliderTableCell.h"

#include <cmath>

namespace platform {

namespace {

bool isSet(const PSSpecifier& specifier, const char* key) {
  const Value value = specifier.propertyForKey(key);
  return value.isNumber() && value.boolValue();
}

float numberOr(const PSSpecifier& specifier, const char* key, float standard) {
  const Value value = specifier.propertyForKey(key);
  return value.isNumber() ? value.floatValue() : standard;
}

}  // namespace

float PSSegmentableSlider::snapped(float value) const noexcept {
  const float span = maximumValue() - minimumValue();
  if (_segmentCount < 1 || !(span > 0)) return value;
  const float part = span / static_cast<float>(_segmentCount);
  return minimumValue() + std::round((value - minimumValue()) / part) * part;
}

std::shared_ptr<UIControl> PSSliderTableCell::makeControl() {
  auto control = make<PSSegmentableSlider>();
  control->addTarget(self<PSSliderTableCell>(), "controlChanged:", UIControlEventValueChanged);
  contentView()->addSubview(control);
  return control;
}

void PSSliderTableCell::refreshCellContentsWithSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier) {
  const bool isShown = specifier && control() && !isEditingValue();
  const bool hasOtherLimits = isShown && showLimits(*specifier);
  if (isShown) {
    const auto slider = controlAs<PSSegmentableSlider>();
    slider->setContinuous(isSet(*specifier, "isContinuous"));
    slider->setShowsValue(isSet(*specifier, "showValue"));
    const Value count = specifier->propertyForKey("segmentCount");
    const bool isSegmented = isSet(*specifier, "isSegmented") && count.isNumber();
    slider->setSegmentCount(isSegmented ? count.integerValue() : 0);
  }
  PSControlTableCell::refreshCellContentsWithSpecifier(specifier);
  if (hasOtherLimits) showValue(value());
}

// True if the limits have changed: the old ones may have moved the knob.
bool PSSliderTableCell::showLimits(const PSSpecifier& shown) {
  const auto slider = controlAs<PSSegmentableSlider>();
  const float minimum = numberOr(shown, "min", 0);
  const float maximum = numberOr(shown, "max", 1);
  if (slider->minimumValue() == minimum && slider->maximumValue() == maximum) return false;
  slider->setMinimumValue(minimum);
  slider->setMaximumValue(maximum);
  return true;
}

void PSSliderTableCell::showValue(const Value& value) {
  const auto slider = controlAs<PSSegmentableSlider>();
  const bool hasNumber = value.isNumber() || value.isString();
  slider->setValue(hasNumber ? value.floatValue() : slider->minimumValue());
}

bool PSSliderTableCell::isEditingValue() const {
  return control() && controlAs<UISlider>()->isTracking();
}

void PSSliderTableCell::controlChanged(const std::shared_ptr<UIControl>&) {
  const auto slider = controlAs<PSSegmentableSlider>();
  slider->setValue(slider->snapped(slider->value()));
  writeValue(slider->value());
}

}  // namespace platform

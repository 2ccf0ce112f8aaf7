#include "platform/uikit/controls/UISlider.h"

#include <algorithm>
#include <cmath>

namespace platform {

float UISlider::clamped(float value) const noexcept {
  return std::isnan(value) ? _minimum : std::clamp(value, _minimum, _maximum);
}

void UISlider::setValue(float value, bool /*animated*/) {
  assign(_value, clamped(value));
}

void UISlider::setMinimumValue(float minimum) {
  if (std::isnan(minimum)) return;
  assign(_minimum, minimum);
  assign(_maximum, std::max(_maximum, minimum));
  setValue(_value);
}

void UISlider::setMaximumValue(float maximum) {
  if (std::isnan(maximum)) return;
  assign(_maximum, maximum);
  assign(_minimum, std::min(_minimum, maximum));
  setValue(_value);
}

void UISlider::setContinuous(bool continuous) {
  assign(_continuous, continuous);
}

bool UISlider::userSlide(float value, SlidePhase phase) {
  if (!acceptsTouches()) return false;
  const bool moved = assign(_value, clamped(value));
  _tracking = phase == SlidePhase::move;
  if (phase == SlidePhase::end || (_continuous && moved)) {
    sendActionsForControlEvents(UIControlEventValueChanged);
  }
  return true;
}

}  // namespace platform

#pragma once

#include "platform/uikit/controls/UIControl.h"

namespace platform {

enum class SlidePhase : std::uint8_t { move, end };

// Values are single-precision, as the platform's. Threads: main.
class UISlider : public UIControl {
  PLATFORM_CLASS(UISlider)

 public:
  float value() const noexcept { return _value; }
  // Kept between minimum and maximum; NaN counts as the minimum.
  void setValue(float value, bool animated = false);
  float minimumValue() const noexcept { return _minimum; }
  // Raises the maximum, and moves the value, where they would be below.
  void setMinimumValue(float minimum);
  float maximumValue() const noexcept { return _maximum; }
  // Lowers the minimum, and moves the value, where they would be above.
  void setMaximumValue(float maximum);
  bool isContinuous() const noexcept { return _continuous; }
  void setContinuous(bool continuous);
  // Whether the finger is on the knob.
  bool isTracking() const noexcept { return _tracking; }
  Size intrinsicContentSize() const override { return {noIntrinsicMetric, 34}; }

  // The user's hand. Sends valueChanged while it moves where the slider is continuous, and at the
  // end in any case. False where no touch reaches the slider.
  bool userSlide(float value, SlidePhase phase);

 private:
  float clamped(float value) const noexcept;

  float _value = 0;
  float _minimum = 0;
  float _maximum = 1;
  bool _continuous = true;
  bool _tracking = false;
};

}  // namespace platform

#pragma once

#include "platform/uikit/controls/UIControl.h"

namespace platform {

enum class SlidePhase : std::uint8_t { move, end };

// Values have single precision, as on the platform. Threads: main.
class UISlider : public UIControl {
  PLATFORM_CLASS(UISlider)

 public:
  float value() const noexcept { return _value; }
  // Clamped to minimum and maximum. NaN becomes the minimum.
  void setValue(float value, bool animated = false);
  float minimumValue() const noexcept { return _minimum; }
  // If necessary, also raises the maximum and the value.
  void setMinimumValue(float minimum);
  float maximumValue() const noexcept { return _maximum; }
  // If necessary, also lowers the minimum and the value.
  void setMaximumValue(float maximum);
  bool isContinuous() const noexcept { return _continuous; }
  void setContinuous(bool continuous);
  // Returns whether a finger is on the knob.
  bool isTracking() const noexcept { return _tracking; }
  Size intrinsicContentSize() const override { return {noIntrinsicMetric, 34}; }

  // User input: a continuous slider sends valueChanged on each move, others only at the end.
  // Returns false if the slider cannot be touched.
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

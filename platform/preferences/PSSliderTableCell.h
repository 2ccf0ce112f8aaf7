#pragma once

#include "platform/preferences/PSControlTableCell.h"
#include "platform/uikit/controls/UISlider.h"

namespace platform {

// A slider that may be divided into equal parts and may show its value. Threads: main.
class PSSegmentableSlider : public UISlider {
  PLATFORM_CLASS(PSSegmentableSlider)

 public:
  // The number of parts; 0 for a smooth slider.
  std::int64_t segmentCount() const noexcept { return _segmentCount; }
  void setSegmentCount(std::int64_t count) { assign(_segmentCount, count); }
  bool showsValue() const noexcept { return _showsValue; }
  void setShowsValue(bool shows) { assign(_showsValue, shows); }
  // The nearest boundary of a part; the value itself for a smooth slider.
  float snapped(float value) const noexcept;

 private:
  std::int64_t _segmentCount = 0;
  bool _showsValue = false;
};

// A slider in the content view, configured by "min", "max" (default: 0 and 1), "showValue",
// "isSegmented", "segmentCount" and "isContinuous". Writes single-precision reals when the knob is
// released; a continuous one also while it moves. Shows numbers and strings by their real value.
// Threads: main.
class PSSliderTableCell : public PSControlTableCell {
  PLATFORM_CLASS(PSSliderTableCell)

 public:
  void controlChanged(const std::shared_ptr<UIControl>& sender) override;
  void refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier) override;

 protected:
  std::shared_ptr<UIControl> makeControl() override;
  void showValue(const Value& value) override;
  bool isEditingValue() const override;

 private:
  bool showLimits(const PSSpecifier& shown);
};

}  // namespace platform

#pragma once

#include "platform/preferences/PSControlTableCell.h"
#include "platform/uikit/controls/UISlider.h"

namespace platform {

// A slider that may be divided into equal parts and may show its value. Threads: main.
class PSSegmentableSlider : public UISlider {
  PLATFORM_CLASS(PSSegmentableSlider)

 public:
  // The number of parts; 0: smooth.
  std::int64_t segmentCount() const noexcept { return _segmentCount; }
  void setSegmentCount(std::int64_t count) { assign(_segmentCount, count); }
  bool showsValue() const noexcept { return _showsValue; }
  void setShowsValue(bool shows) { assign(_showsValue, shows); }
  // The nearest border of two parts, or an end; the value itself where the slider is smooth.
  float snapped(float value) const noexcept;

 private:
  std::int64_t _segmentCount = 0;
  bool _showsValue = false;
};

// A slider, in the content view, set up by "min", "max" (0 and 1 where they are absent),
// "showValue", "isSegmented", "segmentCount" and "isContinuous". Writes single-precision reals when
// the knob is let go, and while it moves where it is continuous; shows numbers and texts by their
// real value. Threads: main.
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

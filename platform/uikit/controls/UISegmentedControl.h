#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/uikit/controls/UIControl.h"

namespace platform {

// Threads: main.
class UISegmentedControl : public UIControl {
  PLATFORM_CLASS(UISegmentedControl)

 public:
  static constexpr std::int64_t noSegment = -1;

  bool initWithItems(std::vector<std::string> titles);

  const std::vector<std::string>& titles() const noexcept { return _titles; }
  void setTitles(std::vector<std::string> titles);
  std::int64_t numberOfSegments() const noexcept {
    return static_cast<std::int64_t>(_titles.size());
  }
  std::int64_t selectedSegmentIndex() const noexcept { return _selected; }
  // An index out of range selects no segment.
  void setSelectedSegmentIndex(std::int64_t index);
  Size intrinsicContentSize() const override { return {noIntrinsicMetric, 32}; }

  // User input: sends valueChanged if the selection changes. Returns false if there is no such
  // segment or the control cannot be touched.
  bool userSelectSegment(std::int64_t index);

 private:
  std::vector<std::string> _titles;
  std::int64_t _selected = noSegment;
};

}  // namespace platform

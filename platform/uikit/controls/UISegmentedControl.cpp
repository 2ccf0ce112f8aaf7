#include "platform/uikit/controls/UISegmentedControl.h"

namespace platform {

bool UISegmentedControl::initWithItems(std::vector<std::string> titles) {
  if (!init()) return false;
  setTitles(std::move(titles));
  return true;
}

void UISegmentedControl::setTitles(std::vector<std::string> titles) {
  assign(_titles, std::move(titles));
  setSelectedSegmentIndex(_selected);
}

void UISegmentedControl::setSelectedSegmentIndex(std::int64_t index) {
  assign(_selected, index >= 0 && index < numberOfSegments() ? index : noSegment);
}

bool UISegmentedControl::userSelectSegment(std::int64_t index) {
  if (!acceptsTouches() || index < 0 || index >= numberOfSegments()) return false;
  if (assign(_selected, index)) sendActionsForControlEvents(UIControlEventValueChanged);
  return true;
}

}  // namespace platform

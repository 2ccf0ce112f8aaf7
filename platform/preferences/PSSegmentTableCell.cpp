#include "platform/preferences/PSSegmentTableCell.h"

#include <utility>
#include <vector>

namespace platform {

std::shared_ptr<UIControl> PSSegmentTableCell::makeControl() {
  auto control = make<UISegmentedControl>();
  control->addTarget(self<PSSegmentTableCell>(), "controlChanged:", UIControlEventValueChanged);
  contentView()->addSubview(control);
  return control;
}

void PSSegmentTableCell::refreshCellContentsWithSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier) {
  const bool hasOtherTitles = specifier && control() && showTitles(*specifier);
  PSControlTableCell::refreshCellContentsWithSpecifier(specifier);
  if (hasOtherTitles) showValue(value());
}

// True if the titles have changed.
bool PSSegmentTableCell::showTitles(const PSSpecifier& shown) {
  std::vector<std::string> titles;
  for (const Value& each : shown.validValues()) {
    titles.push_back(shown.titleForValue(each).value_or(std::string()));
  }
  const auto segments = controlAs<UISegmentedControl>();
  if (segments->titles() == titles) return false;
  segments->setTitles(std::move(titles));
  return true;
}

void PSSegmentTableCell::showValue(const Value& value) {
  const auto index = value ? specifier()->indexOfValue(value) : std::nullopt;
  controlAs<UISegmentedControl>()->setSelectedSegmentIndex(index ? static_cast<std::int64_t>(*index)
                                                                 : UISegmentedControl::noSegment);
}

void PSSegmentTableCell::controlChanged(const std::shared_ptr<UIControl>&) {
  const Array values = specifier()->validValues();
  const auto index = controlAs<UISegmentedControl>()->selectedSegmentIndex();
  if (index < 0 || static_cast<std::size_t>(index) >= values.size()) return;
  writeValue(values[static_cast<std::size_t>(index)]);
}

}  // namespace platform

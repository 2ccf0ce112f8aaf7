#pragma once

#include "platform/preferences/PSTableCell.h"

namespace platform {

// A cell with a control that edits the row's value. Changes by the user are sent to the specifier's
// setter; changes by the program are not. Threads: main.
class PSControlTableCell : public PSTableCell {
  PLATFORM_CLASS(PSControlTableCell)

 public:
  using PSTableCell::initWithStyle;
  bool initWithStyle(UITableViewCellStyle style, const std::optional<std::string>& reuseIdentifier,
                     const std::shared_ptr<PSSpecifier>& specifier) override;
  std::shared_ptr<UIControl> control() const override { return _control; }
  void setCellEnabled(bool enabled) override;

  // The operation "controlChanged:", which the control sends when the user has changed it.
  virtual void controlChanged(const std::shared_ptr<UIControl>& sender) = 0;

  void layoutSubviews() override;

 protected:
  // Makes the control and adds it to the cell.
  virtual std::shared_ptr<UIControl> makeControl() = 0;
  template <class T>
  std::shared_ptr<T> controlAs() const {
    return std::static_pointer_cast<T>(_control);
  }

 private:
  std::shared_ptr<UIControl> _control;
};

}  // namespace platform

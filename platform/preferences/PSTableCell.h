#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/preferences/PSSpecifier.h"
#include "platform/uikit/controls/UIControl.h"
#include "platform/uikit/tables/UITableViewCell.h"

namespace platform {

// A cell of a settings list. Shows its specifier's name, icon and enabled state. Link rows have the
// disclosure chevron, buttons the tint colour, and static texts wrap. Subclasses show values.
// Threads: main.
class PSTableCell : public UITableViewCell {
  PLATFORM_CLASS(PSTableCell)

 public:
  using UITableViewCell::initWithStyle;
  // The initialiser that a list controller uses. Returns false on failure.
  virtual bool initWithStyle(UITableViewCellStyle style,
                             const std::optional<std::string>& reuseIdentifier,
                             const std::shared_ptr<PSSpecifier>& specifier);

  const std::shared_ptr<PSSpecifier>& specifier() const noexcept { return _specifier; }
  virtual void setSpecifier(const std::shared_ptr<PSSpecifier>& specifier);

  // Shows the current state of the specifier. The list controller calls this whenever it returns
  // the cell to the table and whenever the row is reloaded. The value of the specifier's getter is
  // shown only if it differs from the one shown last, so that changes by the program to the control
  // stay. Does nothing for an empty pointer.
  virtual void refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier);

  // The handlers of a tap on the row. A cell with both cellTarget and cellAction handles the tap
  // itself; otherwise the list controller performs the row's action on target. The base returns the
  // values that were set; target and action default to those of the specifier. Targets are held
  // weakly.
  virtual std::shared_ptr<Object> target();
  virtual std::optional<std::string> action();
  virtual std::shared_ptr<Object> cellTarget();
  virtual std::optional<std::string> cellAction();
  void setTarget(const std::shared_ptr<Object>& target) { _target = target; }
  void setAction(const std::optional<std::string>& action) { _action = action; }
  void setCellTarget(const std::shared_ptr<Object>& target) { _cellTarget = target; }
  void setCellAction(const std::optional<std::string>& action) { _cellAction = action; }

  // The control that edits the row's value. Empty if there is none.
  virtual std::shared_ptr<UIControl> control() const { return nullptr; }

  // The value shown last, from the getter or the setter.
  const Value& value() const noexcept { return _value; }
  // Shows a value of any type without sending it.
  void setValue(const Value& value);

  bool cellEnabled() const noexcept { return _cellEnabled; }
  // A disabled cell is dimmed, and its control ignores touches.
  virtual void setCellEnabled(bool enabled);

  PSCellType cellType() const;

  void tintColorDidChange() override;

 protected:
  // Shows a value. The base shows nothing.
  virtual void showValue(const Value& /*value*/) {}
  // Whether the user is editing. A refresh does not change the value then.
  virtual bool isEditingValue() const { return false; }
  // Remembers a value set by the user and sends it to the specifier's setter.
  void writeValue(const Value& value);

 private:
  void showKind();
  void showProblem();
  void refreshValue();

  std::shared_ptr<PSSpecifier> _specifier;
  std::weak_ptr<Object> _target;
  std::weak_ptr<Object> _cellTarget;
  std::optional<std::string> _action;
  std::optional<std::string> _cellAction;
  Value _value;
  bool _hasShownValue = false;
  bool _cellEnabled = true;
};

}  // namespace platform

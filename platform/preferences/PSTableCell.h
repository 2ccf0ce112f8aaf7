#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/preferences/PSSpecifier.h"
#include "platform/uikit/controls/UIControl.h"
#include "platform/uikit/tables/UITableViewCell.h"

namespace platform {

// A cell of a settings list: shows its specifier's name, icon and whether it is enabled; link rows
// get the disclosure chevron, buttons the tint colour, static texts wrap. Its subclasses add the
// values. Threads: main.
class PSTableCell : public UITableViewCell {
  PLATFORM_CLASS(PSTableCell)

 public:
  using UITableViewCell::initWithStyle;
  // The initialiser that a list controller uses; false refuses the cell.
  virtual bool initWithStyle(UITableViewCellStyle style,
                             const std::optional<std::string>& reuseIdentifier,
                             const std::shared_ptr<PSSpecifier>& specifier);

  const std::shared_ptr<PSSpecifier>& specifier() const noexcept { return _specifier; }
  virtual void setSpecifier(const std::shared_ptr<PSSpecifier>& specifier);

  // Shows what the specifier says now. The list controller calls it each time it hands the cell to
  // the table and each time the row is reloaded. A value is asked of the specifier's getter and
  // shown only where it differs from the one that was shown last, so that what a program has set
  // on the control stays. An empty pointer changes nothing.
  virtual void refreshCellContentsWithSpecifier(const std::shared_ptr<PSSpecifier>& specifier);

  // What a tap on the row does. A cell that answers both cellTarget and cellAction takes the tap
  // itself; else the list controller performs the row's own action on target. The base answers
  // what was set, and for target and action, where nothing was, the specifier's target and button
  // action. Targets are held weakly.
  virtual std::shared_ptr<Object> target();
  virtual std::optional<std::string> action();
  virtual std::shared_ptr<Object> cellTarget();
  virtual std::optional<std::string> cellAction();
  void setTarget(const std::shared_ptr<Object>& target) { _target = target; }
  void setAction(const std::optional<std::string>& action) { _action = action; }
  void setCellTarget(const std::shared_ptr<Object>& target) { _cellTarget = target; }
  void setCellAction(const std::optional<std::string>& action) { _cellAction = action; }

  // The control that edits the row's value; empty for cells without one.
  virtual std::shared_ptr<UIControl> control() const { return nullptr; }

  // The value shown last, as it came from the getter or went to the setter.
  const Value& value() const noexcept { return _value; }
  // Shows a value, whatever its kind, and sends nothing.
  void setValue(const Value& value);

  bool cellEnabled() const noexcept { return _cellEnabled; }
  // A cell that is not enabled is dimmed and its control takes no touches.
  virtual void setCellEnabled(bool enabled);

  PSCellType cellType() const;

  void tintColorDidChange() override;

 protected:
  // Shows a value. The base, which has no place for one, shows nothing.
  virtual void showValue(const Value& /*value*/) {}
  // Whether the user is editing just now: a refresh leaves the value alone then.
  virtual bool isEditingValue() const { return false; }
  // Remembers a value that the user's hand has set and hands it to the specifier's setter.
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

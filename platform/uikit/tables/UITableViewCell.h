#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/uikit/views/UIImageView.h"
#include "platform/uikit/views/UILabel.h"
#include "platform/uikit/views/UIView.h"

namespace platform {

enum class UITableViewCellStyle : std::uint8_t {
  standard = 0,
  value1 = 1,
  value2 = 2,
  subtitle = 3
};

enum class UITableViewCellAccessoryType : std::uint8_t {
  none = 0,
  disclosureIndicator = 1,
  detailDisclosureButton = 2,
  checkmark = 3,
  detailButton = 4,
};

enum class UITableViewCellSelectionStyle : std::uint8_t {
  none = 0,
  blue = 1,
  gray = 2,
  standard = 3,
};

enum class UITableViewCellEditingStyle : std::uint8_t { none = 0, deletion = 1, insertion = 2 };

// Shows a row of a table. The content view is the first subview; accessory views are subviews too.
// Threads: main.
class UITableViewCell : public UIView {
  PLATFORM_CLASS(UITableViewCell)

 public:
  UITableViewCell();
  // Makes a cell with the standard style and no reuse identifier.
  bool init() override;
  bool initWithFrame(Rect frame) override;
  // A cell without a frame gets 320 by 44 points, until the table places it.
  virtual bool initWithStyle(UITableViewCellStyle style,
                             std::optional<std::string> reuseIdentifier);

  UITableViewCellStyle style() const noexcept { return _style; }
  const std::optional<std::string>& reuseIdentifier() const noexcept { return _reuseIdentifier; }
  // Called before the cell is reused. The base class resets selection and highlight only: text,
  // image, colours and accessories are kept.
  virtual void prepareForReuse();

  const std::shared_ptr<UIView>& contentView() const noexcept { return _contentView; }
  const std::shared_ptr<UILabel>& textLabel() const noexcept { return _textLabel; }
  // Empty for the standard style.
  const std::shared_ptr<UILabel>& detailTextLabel() const noexcept { return _detailTextLabel; }
  const std::shared_ptr<UIImageView>& imageView() const noexcept { return _imageView; }

  UITableViewCellAccessoryType accessoryType() const noexcept { return _accessoryType; }
  void setAccessoryType(UITableViewCellAccessoryType type);
  // Shown instead of the accessory type. A new view replaces the previous one; an empty pointer
  // removes it.
  const std::shared_ptr<UIView>& accessoryView() const noexcept { return _accessoryView; }
  void setAccessoryView(std::shared_ptr<UIView> view);
  // The accessory view while the table is being edited.
  const std::shared_ptr<UIView>& editingAccessoryView() const noexcept {
    return _editingAccessoryView;
  }
  void setEditingAccessoryView(std::shared_ptr<UIView> view);
  UITableViewCellAccessoryType editingAccessoryType() const noexcept {
    return _editingAccessoryType;
  }
  void setEditingAccessoryType(UITableViewCellAccessoryType type);
  // The symbol of the disclosure accessory.
  std::shared_ptr<UIImage> disclosureChevronImage() const;

  UITableViewCellSelectionStyle selectionStyle() const noexcept { return _selectionStyle; }
  void setSelectionStyle(UITableViewCellSelectionStyle style);
  bool isSelected() const noexcept { return _selected; }
  virtual void setSelected(bool selected, bool animated = false);
  bool isHighlighted() const noexcept { return _highlighted; }
  virtual void setHighlighted(bool highlighted, bool animated = false);
  bool isEditing() const noexcept { return _editing; }
  virtual void setEditing(bool editing, bool animated = false);

  // Returns the height in points that the contents need in a row of that width; at least 44.
  virtual double heightThatFitsWidth(double width) const;
  void layoutSubviews() override;

  static constexpr double standardHeight = 44;
  static constexpr double margin = 16;  // before and after the contents

 protected:
  bool laysOutByContents() const override { return true; }

 private:
  void replaceAccessory(std::shared_ptr<UIView>& field, std::shared_ptr<UIView> view);
  void updateHighlightedText();
  double trailingWidth() const;
  void layoutAccessories();
  void layoutContents();
  void layoutTexts(double left, double right);

  UITableViewCellStyle _style = UITableViewCellStyle::standard;
  std::optional<std::string> _reuseIdentifier;
  std::shared_ptr<UIView> _contentView;
  std::shared_ptr<UILabel> _textLabel;
  std::shared_ptr<UILabel> _detailTextLabel;
  std::shared_ptr<UIImageView> _imageView;
  std::shared_ptr<UIView> _accessoryView;
  std::shared_ptr<UIView> _editingAccessoryView;
  UITableViewCellAccessoryType _accessoryType = UITableViewCellAccessoryType::none;
  UITableViewCellAccessoryType _editingAccessoryType = UITableViewCellAccessoryType::none;
  UITableViewCellSelectionStyle _selectionStyle = UITableViewCellSelectionStyle::standard;
  bool _selected = false;
  bool _highlighted = false;
  bool _editing = false;
};

}  // namespace platform

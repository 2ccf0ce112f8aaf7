#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/preferences/PSTableCell.h"
#include "platform/uikit/controllers/UIColorPickerViewController.h"
#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/views/UILabel.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// A row that shows and edits one colour: a title, and a round swatch as the accessory. A tap opens
// the platform's colour picker. The cell reads the preference file whenever it shows a colour or
// opens the picker, and writes it on every choice. It does not use the page's store, so that cell
// and page overwrite each other's changes.
//
// It reads "title", "key" and "default" of the specifier. The default is a colour value string,
// shown while nothing is stored. A stored value that is not a string is shown as transparent.
// Threads: main.
class HBColorPickerTableCell : public platform::PSTableCell,
                               public platform::UIColorPickerViewControllerDelegate {
  PLATFORM_CLASS(HBColorPickerTableCell)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  using PSTableCell::initWithStyle;
  bool initWithStyle(platform::UITableViewCellStyle style,
                     const std::optional<std::string>& reuseIdentifier,
                     const std::shared_ptr<platform::PSSpecifier>& specifier) override;

  const std::shared_ptr<platform::UILabel>& headerLabel() const noexcept { return _headerLabel; }
  void setHeaderLabel(std::shared_ptr<platform::UILabel> label);
  // The swatch. Every updatePreview makes a new one; empty before the first.
  const std::shared_ptr<platform::UIView>& colorPreview() const noexcept { return _colorPreview; }
  void setColorPreview(std::shared_ptr<platform::UIView> view);
  // The tint of title, swatch and picker.
  const std::shared_ptr<platform::UIColor>& tintColour() const noexcept { return _tintColour; }
  void setTintColour(std::shared_ptr<platform::UIColor> color);

  // A tap sends openColorPicker to the cell.
  std::shared_ptr<platform::Object> target() override;
  std::optional<std::string> action() override;
  std::shared_ptr<platform::Object> cellTarget() override;
  std::optional<std::string> cellAction() override;

  // Presents the picker over the page that contains the cell. Does nothing before system version
  // 14.0 or outside of a page. The picker starts at the stored colour, or at black if there is none
  // or if the stored string contains ":", like the reset value.
  void openColorPicker();

  // Show the colour that is in the file now. Both do the same.
  void _updateValue();
  void updatePreview();
  // The specifier's "key".
  platform::Value _hbcp_key() const;
  void didMoveToSuperview() override;

  // Both store the picker's colour and show it: on each choice, and again when the picker closes,
  // even if nothing was chosen. A file that cannot be read is replaced by a new one. A failed write
  // is not reported and leaves the old file and its colour. A row without "key" raises
  // NSInvalidArgumentException.
  void colorPickerViewControllerDidSelectColor(
      const std::shared_ptr<platform::UIColorPickerViewController>& picker) override;
  void colorPickerViewControllerDidFinish(
      const std::shared_ptr<platform::UIColorPickerViewController>& picker) override;

  // Convert colour value strings. No string reads as transparent; no colour is written as
  // transparent.
  std::shared_ptr<platform::UIColor> colorWithHexString(
      const std::optional<std::string>& text) const;
  std::string hexStringFromColor(const std::shared_ptr<platform::UIColor>& color) const;

 private:
  platform::Value property(const std::string& key) const;
  platform::Value storedValue() const;
  std::shared_ptr<platform::UIColor> startColor() const;
  void makeHeaderLabel();
  void storeColor(const std::shared_ptr<platform::UIColor>& color);

  std::shared_ptr<platform::UILabel> _headerLabel;
  std::shared_ptr<platform::UIView> _colorPreview;
  std::shared_ptr<platform::UIColor> _tintColour;
};

}  // namespace zentrova

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

// A row that shows and edits one colour: its title, and a round swatch as the accessory; a tap
// opens the platform's colour picker. The cell reads the preference file itself each time that it
// shows a colour or opens the picker, and writes it itself on every choice; it shares no store with
// the page around it, so that either overwrites what the other has not seen.
//
// Of the specifier it reads "title", "key" and "default", a colour value string that is shown while
// the file holds none. A stored value that is no text shows as transparent.
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
  // The swatch; made anew by each updatePreview, empty before the first.
  const std::shared_ptr<platform::UIView>& colorPreview() const noexcept { return _colorPreview; }
  void setColorPreview(std::shared_ptr<platform::UIView> view);
  // The accent of title, swatch and picker.
  const std::shared_ptr<platform::UIColor>& tintColour() const noexcept { return _tintColour; }
  void setTintColour(std::shared_ptr<platform::UIColor> color);

  // A tap sends openColorPicker to the cell itself.
  std::shared_ptr<platform::Object> target() override;
  std::optional<std::string> action() override;
  std::shared_ptr<platform::Object> cellTarget() override;
  std::optional<std::string> cellAction() override;

  // Presents the picker over the page that holds the cell; nothing before system version 14.0, or
  // outside of a page. It starts at the stored colour, and at black where there is none or where
  // the stored text has a ":", as the reset value has.
  void openColorPicker();

  // Shows what is in the file now. Both do the same.
  void _updateValue();
  void updatePreview();
  // The specifier's "key".
  platform::Value _hbcp_key() const;
  void didMoveToSuperview() override;

  // Both store the picker's colour and show it: a value is written at each choice, and once more
  // when the picker closes, even if nothing was chosen. A file that cannot be read is begun anew; a
  // failed write is not reported, and leaves the old file and its colour. A row without "key"
  // raises NSInvalidArgumentException.
  void colorPickerViewControllerDidSelectColor(
      const std::shared_ptr<platform::UIColorPickerViewController>& picker) override;
  void colorPickerViewControllerDidFinish(
      const std::shared_ptr<platform::UIColorPickerViewController>& picker) override;

  // The codec of colour value strings. No text is transparent; no colour is written as that.
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

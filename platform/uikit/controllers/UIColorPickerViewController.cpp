#include "platform/uikit/controllers/UIColorPickerViewController.h"

#include <algorithm>
#include <cmath>

namespace platform {

std::shared_ptr<UIColor> UIColorPickerViewController::selectedColor() const {
  if (!_selectedColor) return UIColor::blackColor();
  const ColorComponents shown = _selectedColor->components();
  if (_supportsAlpha || shown.alpha == 1) return _selectedColor;
  return UIColor::colorWithRed(shown.red, shown.green, shown.blue, 1);
}

void UIColorPickerViewController::setSelectedColor(std::shared_ptr<UIColor> color) {
  if (!color) return;
  _selectedColor = std::move(color);
  noteChange();
}

void UIColorPickerViewController::setSupportsAlpha(bool supports) {
  _supportsAlpha = supports;
  noteChange();
}

void UIColorPickerViewController::setDelegateObject(const std::shared_ptr<Object>& delegate) {
  setDelegate(std::dynamic_pointer_cast<UIColorPickerViewControllerDelegate>(delegate));
}

bool UIColorPickerViewController::userPick(ColorComponents components) {
  if (!presentingViewController()) return false;
  for (double* component :
       {&components.red, &components.green, &components.blue, &components.alpha}) {
    if (std::isnan(*component)) return false;
    *component = std::clamp(*component, 0.0, 1.0);
  }
  const auto keptAlive = self<UIColorPickerViewController>();
  setSelectedColor(std::make_shared<UIColor>(components));
  if (const auto told = delegate()) told->colorPickerViewControllerDidSelectColor(keptAlive);
  return true;
}

bool UIColorPickerViewController::userClose() {
  if (!presentingViewController()) return false;
  const auto keptAlive = self<UIColorPickerViewController>();
  dismissViewControllerAnimated(true);
  if (const auto told = delegate()) told->colorPickerViewControllerDidFinish(keptAlive);
  return true;
}

}  // namespace platform

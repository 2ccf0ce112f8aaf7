#pragma once

#include <memory>
#include <string>

#include "platform/foundation/objects/Object.h"
#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/images/UIImage.h"

namespace platform {

class UIView;

// The appearance of a view's rectangle. Threads: main.
class CALayer : public Object {
  PLATFORM_CLASS(CALayer)

 public:
  double cornerRadius() const noexcept { return _cornerRadius; }  // in points
  void setCornerRadius(double radius);
  double borderWidth() const noexcept { return _borderWidth; }  // in points
  void setBorderWidth(double width);
  // If empty, opaque black, as on the platform. Visible only if the border has a width.
  const std::shared_ptr<UIColor>& borderColor() const noexcept { return _borderColor; }
  void setBorderColor(std::shared_ptr<UIColor> color);
  // Hides everything where the mask's contents are transparent. Owned by this layer.
  const std::shared_ptr<CALayer>& mask() const noexcept { return _mask; }
  void setMask(std::shared_ptr<CALayer> mask);
  const std::shared_ptr<UIImage>& contents() const noexcept { return _contents; }
  void setContents(std::shared_ptr<UIImage> contents);
  // used for masks only; the layer of a view has none
  const Rect& frame() const noexcept { return _frame; }
  void setFrame(Rect frame);
  const std::string& minificationFilter() const noexcept { return _minificationFilter; }
  void setMinificationFilter(std::string filter);

 private:
  friend class UIView;
  void noteChange();

  UIView* _owner = nullptr;  // cleared when the view is destroyed
  double _cornerRadius = 0;
  double _borderWidth = 0;
  std::shared_ptr<UIColor> _borderColor;
  std::shared_ptr<CALayer> _mask;
  std::shared_ptr<UIImage> _contents;
  Rect _frame;
  std::string _minificationFilter = "linear";
};

}  // namespace platform

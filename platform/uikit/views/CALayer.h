#pragma once

#include <memory>
#include <string>

#include "platform/foundation/objects/Object.h"
#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/images/UIImage.h"

namespace platform {

class UIView;

// How a view's rectangle is drawn. Threads: main.
class CALayer : public Object {
  PLATFORM_CLASS(CALayer)

 public:
  double cornerRadius() const noexcept { return _cornerRadius; }  // points
  void setCornerRadius(double radius);
  double borderWidth() const noexcept { return _borderWidth; }  // points
  void setBorderWidth(double width);
  // Empty: the platform's opaque black, shown only where the border has a width.
  const std::shared_ptr<UIColor>& borderColor() const noexcept { return _borderColor; }
  void setBorderColor(std::shared_ptr<UIColor> color);
  // What the mask's contents leave transparent is not shown. Owned by this layer.
  const std::shared_ptr<CALayer>& mask() const noexcept { return _mask; }
  void setMask(std::shared_ptr<CALayer> mask);
  const std::shared_ptr<UIImage>& contents() const noexcept { return _contents; }
  void setContents(std::shared_ptr<UIImage> contents);
  const Rect& frame() const noexcept { return _frame; }  // of a mask; a view's layer has none
  void setFrame(Rect frame);
  const std::string& minificationFilter() const noexcept { return _minificationFilter; }
  void setMinificationFilter(std::string filter);

 private:
  friend class UIView;
  void noteChange();

  UIView* _owner = nullptr;  // cleared when the view goes
  double _cornerRadius = 0;
  double _borderWidth = 0;
  std::shared_ptr<UIColor> _borderColor;
  std::shared_ptr<CALayer> _mask;
  std::shared_ptr<UIImage> _contents;
  Rect _frame;
  std::string _minificationFilter = "linear";
};

}  // namespace platform

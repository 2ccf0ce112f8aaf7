#include "platform/uikit/images/UIGraphicsImageRenderer.h"

#include "platform/uikit/drawing/UIScreen.h"
#include "platform/uikit/images/UIImage.h"

namespace platform {

UIGraphicsImageRenderer::UIGraphicsImageRenderer(Size size, UIGraphicsImageRendererFormat format)
    : _size(size), _format(format) {
  if (_format.scale == 0) _format.scale = UIScreen::mainScreen()->scale();
}

std::shared_ptr<UIImage> UIGraphicsImageRenderer::imageWithActions(
    const std::function<void(CGContext&)>& actions) const {
  auto context = CGContext::create(_size, _format.scale, _format.opaque);
  if (!context) return nullptr;
  if (actions) actions(*context);
  return UIImage::imageWithPixels(context->takePixels(), _format.scale);
}

}  // namespace platform

#include "platform/uikit/views/UIImageView.h"

namespace platform {

UIImageView::UIImageView() {
  setUserInteractionEnabled(false);
}

bool UIImageView::initWithImage(const std::shared_ptr<UIImage>& image) {
  const Size size = image ? image->size() : Size{};
  if (!initWithFrame({0, 0, size.width, size.height})) return false;
  setImage(image);
  return true;
}

void UIImageView::setImage(std::shared_ptr<UIImage> image) {
  if (assign(_image, std::move(image))) invalidateIntrinsicContentSize();
}

Size UIImageView::intrinsicContentSize() const {
  return _image ? _image->size() : UIView::intrinsicContentSize();
}

}  // namespace platform

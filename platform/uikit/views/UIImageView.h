#pragma once

#include <memory>

#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/views/UIView.h"

namespace platform {

// An image, fitted by the content mode. Takes no touches unless told to. Threads: main.
class UIImageView : public UIView {
  PLATFORM_CLASS(UIImageView)

 public:
  UIImageView();
  // The frame gets the image's size.
  bool initWithImage(const std::shared_ptr<UIImage>& image);

  const std::shared_ptr<UIImage>& image() const noexcept { return _image; }
  void setImage(std::shared_ptr<UIImage> image);
  Size intrinsicContentSize() const override;

 private:
  std::shared_ptr<UIImage> _image;
};

}  // namespace platform

#pragma once

#include <memory>

#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/views/UIView.h"

namespace platform {

// Shows an image, fitted by the content mode. By default, ignores touches. Threads: main.
class UIImageView : public UIView {
  PLATFORM_CLASS(UIImageView)

 public:
  UIImageView();
  // Sets the frame to the image's size.
  bool initWithImage(const std::shared_ptr<UIImage>& image);

  const std::shared_ptr<UIImage>& image() const noexcept { return _image; }
  void setImage(std::shared_ptr<UIImage> image);
  Size intrinsicContentSize() const override;

 private:
  std::shared_ptr<UIImage> _image;
};

}  // namespace platform

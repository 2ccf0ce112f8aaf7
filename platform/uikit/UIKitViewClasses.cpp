#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/UIKitClassTables.h"
#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/views/UIActivityIndicatorView.h"
#include "platform/uikit/views/UIGestureRecognizer.h"
#include "platform/uikit/views/UIImageView.h"
#include "platform/uikit/views/UILabel.h"
#include "platform/uikit/views/UILongPressGestureRecognizer.h"
#include "platform/uikit/views/UIScrollView.h"
#include "platform/uikit/views/UIView.h"

namespace platform {
namespace {

Class viewClass() {
  ClassBuilder<UIView> builder("NSObject");
  builder.property("alpha", &UIView::alpha, &UIView::setAlpha)
      .property("hidden", &UIView::isHidden, &UIView::setHidden)
      .property("backgroundColor", &UIView::backgroundColor, &UIView::setBackgroundColor)
      .property("tintColor", &UIView::tintColor, &UIView::setTintColor)
      .property("clipsToBounds", &UIView::clipsToBounds, &UIView::setClipsToBounds)
      .property("userInteractionEnabled", &UIView::isUserInteractionEnabled,
                &UIView::setUserInteractionEnabled)
      .property("contentMode", &UIView::contentMode, &UIView::setContentMode)
      .property("accessibilityLabel", &UIView::accessibilityLabel, &UIView::setAccessibilityLabel)
      .property("tag", &UIView::tag, &UIView::setTag)
      .property("superview", &UIView::superview)
      .property("layer", &UIView::layer)
      .operation("addSubview:", &UIView::addSubview)
      .operation("removeFromSuperview", &UIView::removeFromSuperview)
      .operation("addGestureRecognizer:", &UIView::addGestureRecognizer)
      .operation("setNeedsLayout", &UIView::setNeedsLayout)
      .operation("layoutIfNeeded", &UIView::layoutIfNeeded)
      .operation("layoutSubviews", &UIView::layoutSubviews)
      .operation("tintColorDidChange", &UIView::tintColorDidChange)
      .operation("didMoveToSuperview", &UIView::didMoveToSuperview)
      .operation("_viewControllerForAncestor", &UIView::viewControllerForAncestor);
  return builder.build();
}

Class labelClass() {
  ClassBuilder<UILabel> builder("UIView");
  builder.property("text", &UILabel::text, &UILabel::setText)
      .property("font", &UILabel::font, &UILabel::setFont)
      .property("textColor", &UILabel::textColor, &UILabel::setTextColor)
      .property("highlightedTextColor", &UILabel::highlightedTextColor,
                &UILabel::setHighlightedTextColor)
      .property("highlighted", &UILabel::isHighlighted, &UILabel::setHighlighted)
      .property("enabled", &UILabel::isEnabled, &UILabel::setEnabled)
      .property("textAlignment", &UILabel::textAlignment, &UILabel::setTextAlignment)
      .property("numberOfLines", &UILabel::numberOfLines, &UILabel::setNumberOfLines);
  return builder.build();
}

Class recognizerClass() {
  ClassBuilder<UIGestureRecognizer> builder("NSObject");
  builder.property("state", &UIGestureRecognizer::state)
      .property("view", &UIGestureRecognizer::view)
      .property("enabled", &UIGestureRecognizer::isEnabled, &UIGestureRecognizer::setEnabled)
      .property("cancelsTouchesInView", &UIGestureRecognizer::cancelsTouchesInView,
                &UIGestureRecognizer::setCancelsTouchesInView);
  return builder.build();
}

}  // namespace

void registerViewClasses(ClassRegistry& registry) {
  registry.add(viewClass());
  registry.add(labelClass());
  registry.add(ClassBuilder<UIImageView>("UIView")
                   .property("image", &UIImageView::image, &UIImageView::setImage)
                   .build());
  registry.add(ClassBuilder<UIActivityIndicatorView>("UIView")
                   .operation("startAnimating", &UIActivityIndicatorView::startAnimating)
                   .operation("stopAnimating", &UIActivityIndicatorView::stopAnimating)
                   .key("animating", &UIActivityIndicatorView::isAnimating)
                   .build());
  registry.add(ClassBuilder<UIScrollView>("UIView")
                   .operation("setDelegate:", &UIScrollView::setDelegateObject)
                   .build());
  registry.add(recognizerClass());
  registry.add(ClassBuilder<UILongPressGestureRecognizer>("UIGestureRecognizer")
                   .property("minimumPressDuration",
                             &UILongPressGestureRecognizer::minimumPressDuration,
                             &UILongPressGestureRecognizer::setMinimumPressDuration)
                   .build());
}

}  // namespace platform

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/UIKitClassTables.h"
#include "platform/uikit/controllers/UIApplication.h"
#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/drawing/UIDevice.h"
#include "platform/uikit/drawing/UIFont.h"
#include "platform/uikit/drawing/UIScreen.h"
#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/tables/NSIndexPath.h"
#include "platform/uikit/views/CALayer.h"
#include "platform/uikit/views/NSLayoutConstraint.h"

namespace platform {
namespace {

Class colorClass() {
  ClassBuilder<UIColor> builder("NSObject");
  builder.classOperation("colorWithRed:green:blue:alpha:", &UIColor::colorWithRed)
      .classOperation("colorWithWhite:alpha:", &UIColor::colorWithWhite)
      .classOperation("blackColor", &UIColor::blackColor)
      .classOperation("whiteColor", &UIColor::whiteColor)
      .classOperation("clearColor", &UIColor::clearColor)
      .classOperation("redColor", &UIColor::redColor)
      .classOperation("greenColor", &UIColor::greenColor)
      .classOperation("blueColor", &UIColor::blueColor)
      .classOperation("grayColor", &UIColor::grayColor);
  builder.classOperation("systemRedColor", &UIColor::systemRedColor)
      .classOperation("systemOrangeColor", &UIColor::systemOrangeColor)
      .classOperation("systemYellowColor", &UIColor::systemYellowColor)
      .classOperation("systemGreenColor", &UIColor::systemGreenColor)
      .classOperation("systemBlueColor", &UIColor::systemBlueColor)
      .classOperation("systemTealColor", &UIColor::systemTealColor)
      .classOperation("systemIndigoColor", &UIColor::systemIndigoColor)
      .classOperation("systemPurpleColor", &UIColor::systemPurpleColor)
      .classOperation("systemPinkColor", &UIColor::systemPinkColor)
      .classOperation("systemGrayColor", &UIColor::systemGrayColor)
      .classOperation("systemGray3Color", &UIColor::systemGray3Color)
      .classOperation("labelColor", &UIColor::labelColor)
      .classOperation("secondaryLabelColor", &UIColor::secondaryLabelColor)
      .classOperation("tertiaryLabelColor", &UIColor::tertiaryLabelColor)
      .classOperation("systemBackgroundColor", &UIColor::systemBackgroundColor)
      .classOperation("systemGroupedBackgroundColor", &UIColor::systemGroupedBackgroundColor);
  return builder.build();
}

std::shared_ptr<UIFont> systemFont(double pointSize) {
  return UIFont::systemFontOfSize(pointSize);
}

std::shared_ptr<UIImage> imageWithContentsOfFile(const std::string& path) {
  return UIImage::imageWithContentsOfFile(path);
}

std::shared_ptr<UIImage> imageWithData(const Data& data) {
  return UIImage::imageWithData(data);
}

std::shared_ptr<UIImage> systemImageNamed(const std::string& name) {
  return UIImage::systemImageNamed(name);
}

Class imageClass() {
  ClassBuilder<UIImage> builder("NSObject");
  builder.classOperation("imageWithData:", &imageWithData)
      .classOperation("imageWithContentsOfFile:", &imageWithContentsOfFile)
      .classOperation("systemImageNamed:", &systemImageNamed)
      .operation("imageByPreparingForDisplay", &UIImage::imageByPreparingForDisplay)
      .operation("imageWithTintColor:", &UIImage::imageWithTintColor)
      .operation("_applicationIconImageForFormat:precomposed:scale:",
                 &UIImage::applicationIconImageForFormat)
      .key("scale", &UIImage::scale);
  return builder.build();
}

}  // namespace

void registerValueClasses(ClassRegistry& registry) {
  registry.add(colorClass());
  registry.add(ClassBuilder<UIFont>("NSObject")
                   .classOperation("systemFontOfSize:", &systemFont)
                   .classOperation("boldSystemFontOfSize:", &UIFont::boldSystemFontOfSize)
                   .key("pointSize", &UIFont::pointSize)
                   .build());
  registry.add(imageClass());
  registry.add(ClassBuilder<CALayer>("NSObject")
                   .property("cornerRadius", &CALayer::cornerRadius, &CALayer::setCornerRadius)
                   .property("borderWidth", &CALayer::borderWidth, &CALayer::setBorderWidth)
                   .property("borderColor", &CALayer::borderColor, &CALayer::setBorderColor)
                   .property("mask", &CALayer::mask, &CALayer::setMask)
                   .property("contents", &CALayer::contents, &CALayer::setContents)
                   .property("minificationFilter", &CALayer::minificationFilter,
                             &CALayer::setMinificationFilter)
                   .build());
  registry.add(ClassBuilder<NSIndexPath>("NSObject")
                   .property("section", &NSIndexPath::section)
                   .property("row", &NSIndexPath::row)
                   .build());
  registry.add(
      ClassBuilder<NSLayoutConstraint>("NSObject")
          .property("constant", &NSLayoutConstraint::constant, &NSLayoutConstraint::setConstant)
          .property("active", &NSLayoutConstraint::isActive, &NSLayoutConstraint::setActive)
          .build());
  registry.add(ClassBuilder<UIDevice>("NSObject")
                   .classOperation("currentDevice", &UIDevice::currentDevice)
                   .property("userInterfaceIdiom", &UIDevice::userInterfaceIdiom)
                   .property("systemVersion", &UIDevice::systemVersion)
                   .property("model", &UIDevice::model)
                   .build());
  registry.add(ClassBuilder<UIApplication>("NSObject")
                   .classOperation("sharedApplication", &UIApplication::sharedApplication)
                   .operation("openURL:", &UIApplication::openURL)
                   .build());
  registry.add(ClassBuilder<UIScreen>("NSObject")
                   .classOperation("mainScreen", &UIScreen::mainScreen)
                   .key("scale", &UIScreen::scale)
                   .build());
}

}  // namespace platform

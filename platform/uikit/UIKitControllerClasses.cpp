#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/UIKitClassTables.h"
#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/controllers/UIColorPickerViewController.h"
#include "platform/uikit/controllers/UIImagePickerController.h"
#include "platform/uikit/controllers/UINavigationBar.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/controllers/UINavigationItem.h"
#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/controllers/UIWindow.h"

namespace platform {
namespace {

Class controllerClass() {
  ClassBuilder<UIViewController> builder("NSObject");
  builder.property("title", &UIViewController::title, &UIViewController::setTitle)
      .property("view", &UIViewController::view, &UIViewController::setView)
      .property("navigationItem", &UIViewController::navigationItem)
      .property("navigationController", &UIViewController::navigationController)
      .property("parentViewController", &UIViewController::parentViewController)
      .key("_parentViewController", &UIViewController::parentViewController)
      .key("presentedViewController", &UIViewController::presentedViewController)
      .key("presentingViewController", &UIViewController::presentingViewController)
      .operation("viewDidLoad", &UIViewController::viewDidLoad)
      .operation("viewWillAppear:", &UIViewController::viewWillAppear)
      .operation("viewDidAppear:", &UIViewController::viewDidAppear)
      .operation("viewWillDisappear:", &UIViewController::viewWillDisappear)
      .operation("viewDidDisappear:", &UIViewController::viewDidDisappear)
      .operation("viewDidLayoutSubviews", &UIViewController::viewDidLayoutSubviews);
  return builder.build();
}

Class navigationControllerClass() {
  ClassBuilder<UINavigationController> builder("UIViewController");
  builder.property("navigationBar", &UINavigationController::navigationBar)
      .property("topViewController", &UINavigationController::topViewController)
      .operation("pushViewController:animated:", &UINavigationController::pushViewController)
      .operation("popViewControllerAnimated:", &UINavigationController::popViewControllerAnimated);
  return builder.build();
}

Class colorPickerClass() {
  ClassBuilder<UIColorPickerViewController> builder("UIViewController");
  builder
      .property("selectedColor", &UIColorPickerViewController::selectedColor,
                &UIColorPickerViewController::setSelectedColor)
      .property("supportsAlpha", &UIColorPickerViewController::supportsAlpha,
                &UIColorPickerViewController::setSupportsAlpha)
      .operation("setDelegate:", &UIColorPickerViewController::setDelegateObject);
  return builder.build();
}

Class imagePickerClass() {
  ClassBuilder<UIImagePickerController> builder("UINavigationController");
  builder
      .property("sourceType", &UIImagePickerController::sourceType,
                &UIImagePickerController::setSourceType)
      .operation("setDelegate:", &UIImagePickerController::setDelegateObject);
  return builder.build();
}

}  // namespace

void registerControllerClasses(ClassRegistry& registry) {
  registry.add(ClassBuilder<UINavigationItem>("NSObject")
                   .property("title", &UINavigationItem::title, &UINavigationItem::setTitle)
                   .property("largeTitleDisplayMode", &UINavigationItem::largeTitleDisplayMode,
                             &UINavigationItem::setLargeTitleDisplayMode)
                   .build());
  registry.add(ClassBuilder<UINavigationBar>("UIView")
                   .property("prefersLargeTitles", &UINavigationBar::prefersLargeTitles,
                             &UINavigationBar::setPrefersLargeTitles)
                   .operation("_setTitleOpacity:", &UINavigationBar::setTitleOpacity)
                   .key("_titleOpacity", &UINavigationBar::titleOpacity)
                   .build());
  registry.add(controllerClass());
  registry.add(navigationControllerClass());
  registry.add(colorPickerClass());
  registry.add(imagePickerClass());
  registry.add(ClassBuilder<UIAlertAction>("NSObject")
                   .key("title", &UIAlertAction::title)
                   .key("style", &UIAlertAction::style)
                   .build());
  registry.add(ClassBuilder<UIAlertController>("UIViewController")
                   .property("message", &UIAlertController::message, &UIAlertController::setMessage)
                   .key("preferredStyle", &UIAlertController::preferredStyle)
                   .operation("addAction:", &UIAlertController::addAction)
                   .build());
  registry.add(ClassBuilder<UIWindow>("UIView")
                   .operation("makeKeyAndVisible", &UIWindow::makeKeyAndVisible)
                   .build());
}

}  // namespace platform

#include "platform/foundation/values/Exception.h"
#include "platform/uikit/UIKitClasses.h"
#include "platform/uikit/controllers/UINavigationBar.h"
#include "platform/uikit/controllers/UIWindow.h"
#include "platform/uikit/controls/UISwitch.h"
#include "platform/uikit/drawing/UIDevice.h"
#include "platform/uikit/drawing/UIScreen.h"
#include "platform/uikit/views/UILabel.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;

class UIKitClassesTest : public UIKitTest {};

TEST_F(UIKitClassesTest, EveryClassStandsUnderItsBase) {
  const std::vector<std::pair<std::string, std::string>> bases = {
      {"UITableView", "UIScrollView"},
      {"UIScrollView", "UIView"},
      {"UISwitch", "UIControl"},
      {"UITextField", "UIControl"},
      {"UITableViewCell", "UIView"},
      {"UINavigationController", "UIViewController"},
      {"UIAlertController", "UIViewController"},
      {"UILongPressGestureRecognizer", "UIGestureRecognizer"},
      {"UIWindow", "UIView"},
      {"UIImage", "NSObject"},
  };
  for (const auto& [name, base] : bases) {
    const Class* found = process.classes().find(name);
    ASSERT_NE(found, nullptr) << name;
    EXPECT_TRUE(found->isSubclassOf(base)) << name;
  }
}

TEST_F(UIKitClassesTest, InstancesAreMadeByName) {
  for (const std::string& name : process.classes().names()) {
    if (!name.starts_with("UI")) continue;
    const auto instance = process.classes().find(name)->makeInstance();
    ASSERT_NE(instance, nullptr) << name;
    EXPECT_EQ(instance->className(), name);
  }
}

TEST_F(UIKitClassesTest, ValuesAreReadAndWrittenByKey) {
  const auto label = make<UILabel>();
  label->setValueForKey("Version 1.0", "text");
  EXPECT_EQ(label->valueForKey("text"), Value("Version 1.0"));
  label->setValueForKey(0.6, "alpha");
  EXPECT_EQ(label->alpha(), 0.6);
  label->setValueForKey(Value(), "text");
  EXPECT_EQ(label->text(), std::nullopt);
  EXPECT_THROW(label->valueForKey("txet"), Exception);
}

TEST_F(UIKitClassesTest, OperationsAreSentByName) {
  const auto view = make<UIView>();
  const auto child = make<UISwitch>();
  view->perform("addSubview:", {Value(child)});
  EXPECT_EQ(child->superview(), view);
  view->perform("addSubview:", {Value()});
  child->perform("setOn:", {true});
  EXPECT_TRUE(child->isOn());
  child->perform("setOn:animated:", {false, true});
  EXPECT_FALSE(child->isOn());
  EXPECT_THROW(view->perform("setOn:", {true}), Exception);
}

TEST_F(UIKitClassesTest, ATablesDelegateIsSetByNameToo) {
  const auto table = make<UITableView>();
  const auto source = make<TextSource>();
  source->sections = {{"a"}};
  table->perform("setDataSource:", {Value(source)});
  table->perform("setDelegate:", {Value(source)});
  EXPECT_EQ(table->numberOfRowsInSection(0), 1);
  EXPECT_EQ(table->tableDelegate(), source);
  table->perform("setDataSource:", {Value(recorder)});
  EXPECT_EQ(table->numberOfSections(), 0) << "the recorder is not a data source";
}

TEST_F(UIKitClassesTest, TheTitleOpacityOfABarIsReachedByItsPrivateName) {
  const auto bar = make<UINavigationBar>();
  EXPECT_EQ(bar->titleOpacity(), 1);
  bar->perform("_setTitleOpacity:", {0.25});
  EXPECT_EQ(bar->titleOpacity(), 0.25);
}

TEST_F(UIKitClassesTest, TheDeviceAnswersByItsTraits) {
  process.traits().idiom = UserInterfaceIdiom::pad;
  process.traits().systemVersion = {13, 7, 0};
  const auto device = UIDevice::currentDevice();
  EXPECT_EQ(device, UIDevice::currentDevice());
  EXPECT_TRUE(device->respondsToSelector("userInterfaceIdiom"));
  EXPECT_EQ(device->perform("userInterfaceIdiom").intValue(), 1);
  EXPECT_EQ(device->systemVersion(), "13.7");
  EXPECT_EQ(device->model(), "iPad");
}

TEST_F(UIKitClassesTest, TheScreenAnswersByTheTraits) {
  process.traits().screenWidth = 375;
  EXPECT_EQ(UIScreen::mainScreen()->bounds(), (Rect{0, 0, 375, 844}));
  EXPECT_EQ(UIScreen::mainScreen()->scale(), 3);
}

TEST_F(UIKitClassesTest, AWindowHasTheDevicesSizeAndTint) {
  process.traits().tint = "FF0000FF";
  const auto window = make<UIWindow>();
  EXPECT_EQ(window->frame(), (Rect{0, 0, 390, 844}));
  EXPECT_EQ(window->tintColor()->components(), (ColorComponents{1, 0, 0, 1}));
  process.traits().tint = "no colour";
  process.traits().screenWidth = 800;
  window->traitsDidChange();
  EXPECT_EQ(window->tintColor()->systemName(), "systemBlueColor");
  EXPECT_EQ(window->frame().width, 800);
}

TEST_F(UIKitClassesTest, EveryViewOfAWindowHearsOfOtherTraits) {
  class TraitView : public UIView {
   public:
    void traitCollectionDidChange() override { ++changes; }
    int changes = 0;
  };
  const auto window = make<UIWindow>();
  const auto outer = make<TraitView>();
  const auto inner = make<TraitView>();
  outer->addSubview(inner);
  window->addSubview(outer);
  window->traitsDidChange();
  EXPECT_EQ(outer->changes, 1);
  EXPECT_EQ(inner->changes, 1);
}

TEST_F(UIKitClassesTest, IndexPathsAreObjectsTooAndEqualByContent) {
  const auto path = NSIndexPath::indexPathForRow(3, 1);
  EXPECT_EQ(path->path(), (IndexPath{1, 3}));
  EXPECT_TRUE(path->isEqual(*NSIndexPath::indexPathForRow(3, 1)));
  EXPECT_FALSE(path->isEqual(*NSIndexPath::indexPathForRow(1, 3)));
  EXPECT_EQ(path->valueForKey("row").intValue(), 3);
}

}  // namespace
}  // namespace uikit_test

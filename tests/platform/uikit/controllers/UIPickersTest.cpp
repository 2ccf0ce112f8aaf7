#include <cmath>
#include <limits>

#include "platform/uikit/controllers/UIColorPickerViewController.h"
#include "platform/uikit/controllers/UIImagePickerController.h"
#include "platform/uikit/controllers/UIWindow.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A page that presents pickers and records their events.
class PickerPage : public UIViewController,
                   public UIColorPickerViewControllerDelegate,
                   public UIImagePickerControllerDelegate {
  PLATFORM_CLASS(PickerPage)

 public:
  void colorPickerViewControllerDidSelectColor(
      const std::shared_ptr<UIColorPickerViewController>& picker) override {
    told.push_back("selected " + picker->selectedColor()->description());
  }
  void colorPickerViewControllerDidFinish(
      const std::shared_ptr<UIColorPickerViewController>& picker) override {
    told.push_back((picker->presentingViewController() ? "finished, shown " : "finished ") +
                   picker->selectedColor()->description());
  }
  void didFinishPickingMediaWithInfo(const std::shared_ptr<UIImagePickerController>&,
                                     const Dictionary& info) override {
    infos.push_back(info);
  }

  std::vector<std::string> told;
  std::vector<Dictionary> infos;
};

class UIPickersTest : public UIKitTest {
 protected:
  UIPickersTest() {
    window->setRootViewController(page);
    window->makeKeyAndVisible();
  }

  std::shared_ptr<UIWindow> window = make<UIWindow>();
  std::shared_ptr<PickerPage> page = make<PickerPage>();
};

class UIColorPickerTest : public UIPickersTest {
 protected:
  UIColorPickerTest() {
    picker->setDelegate(page);
    page->presentViewController(picker, true);
  }

  std::shared_ptr<UIColorPickerViewController> picker = make<UIColorPickerViewController>();
};

TEST_F(UIColorPickerTest, EveryChoiceIsToldWhileThePickerIsOpen) {
  EXPECT_TRUE(picker->userPick({1, 0, 0, 1}));
  EXPECT_TRUE(picker->userPick({0, 0.5, 0, 1}));
  EXPECT_THAT(page->told, ElementsAre("selected UIExtendedSRGBColorSpace 1 0 0 1",
                                      "selected UIExtendedSRGBColorSpace 0 0.5 0 1"));
  EXPECT_EQ(page->presentedViewController(), picker);
}

TEST_F(UIColorPickerTest, ClosingTellsOnceMoreWithTheStartingColourWhereNothingWasChosen) {
  picker->setSelectedColor(UIColor::colorWithRed(0, 0, 1, 1));
  EXPECT_TRUE(picker->userClose());
  EXPECT_THAT(page->told, ElementsAre("finished UIExtendedSRGBColorSpace 0 0 1 1"));
  EXPECT_EQ(page->presentedViewController(), nullptr);
}

TEST_F(UIColorPickerTest, ThePickerStartsAtBlack) {
  EXPECT_TRUE(sameColor(picker->selectedColor(), UIColor::blackColor()));
  picker->setSelectedColor(nullptr);
  EXPECT_TRUE(sameColor(picker->selectedColor(), UIColor::blackColor()));
}

TEST_F(UIColorPickerTest, WithoutTheAlphaControlTheAlphaIsOne) {
  picker->setSelectedColor(UIColor::colorWithRed(1, 0, 0, 0.25));
  EXPECT_EQ(picker->selectedColor()->components().alpha, 0.25);
  picker->setSupportsAlpha(false);
  EXPECT_EQ(picker->selectedColor()->components(), (ColorComponents{1, 0, 0, 1}));
  EXPECT_TRUE(picker->userPick({0, 1, 0, 0.5}));
  EXPECT_EQ(picker->selectedColor()->components(), (ColorComponents{0, 1, 0, 1}));
}

TEST_F(UIColorPickerTest, WithTheAlphaControlTheAlphaIsTheUsers) {
  EXPECT_TRUE(picker->userPick({0, 1, 0, 0.5}));
  EXPECT_EQ(picker->selectedColor()->components(), (ColorComponents{0, 1, 0, 0.5}));
}

TEST_F(UIColorPickerTest, AColourOfTheSystemIsResolvedByTheTraitsOfTheMoment) {
  picker->setSupportsAlpha(false);
  picker->setSelectedColor(UIColor::tertiaryLabelColor());
  const auto light = picker->selectedColor()->components();
  EXPECT_EQ(light.alpha, 1);
  process.traits().appearance = UserInterfaceStyle::dark;
  EXPECT_NE(picker->selectedColor()->components(), light);
}

TEST_F(UIColorPickerTest, ComponentsAreKeptBetweenZeroAndOne) {
  constexpr double infinite = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(picker->userPick({-1, 7, infinite, 1}));
  EXPECT_EQ(picker->selectedColor()->components(), (ColorComponents{0, 1, 1, 1}));
  EXPECT_FALSE(picker->userPick({0, std::nan(""), 0, 1}));
  EXPECT_EQ(page->told.size(), 1U);
}

TEST_F(UIColorPickerTest, APickerThatIsNotShownCannotBeUsed) {
  EXPECT_TRUE(picker->userClose());
  EXPECT_FALSE(picker->userClose());
  EXPECT_FALSE(picker->userPick({1, 0, 0, 1}));
  EXPECT_EQ(page->told.size(), 1U);
}

TEST_F(UIColorPickerTest, APickerThatTheProgramDismissesTellsNothing) {
  page->dismissViewControllerAnimated(false);
  EXPECT_THAT(page->told, IsEmpty());
}

TEST_F(UIColorPickerTest, ADelegateThatHasDiedIsNotTold) {
  auto other = make<PickerPage>();
  picker->setDelegate(other);
  EXPECT_EQ(picker->delegate(), other);
  other.reset();
  EXPECT_EQ(picker->delegate(), nullptr);
  EXPECT_TRUE(picker->userPick({1, 0, 0, 1}));
  EXPECT_TRUE(picker->userClose());
}

TEST_F(UIColorPickerTest, ThePickerIsMadeAndSetUpByName) {
  const auto made = process.classes().find("UIColorPickerViewController")->makeInstance();
  made->perform("setDelegate:", {Value(page)});
  made->perform("setSelectedColor:", {Value(UIColor::redColor())});
  made->perform("setSupportsAlpha:", {false});
  const auto byName = std::dynamic_pointer_cast<UIColorPickerViewController>(made);
  ASSERT_NE(byName, nullptr);
  EXPECT_EQ(byName->delegate(), page);
  EXPECT_FALSE(byName->supportsAlpha());
  EXPECT_TRUE(sameColor(made->perform("selectedColor").as<UIColor>(), UIColor::redColor()));
  made->perform("setDelegate:", {Value(recorder)});
  EXPECT_EQ(byName->delegate(), nullptr) << "the recorder is not a delegate";
}

class UIImagePickerTest : public UIPickersTest {
 protected:
  UIImagePickerTest() {
    picker->setDelegate(page);
    page->presentViewController(picker, true);
  }

  std::shared_ptr<UIImagePickerController> picker = make<UIImagePickerController>();
  std::shared_ptr<UIImage> photo = UIImage::imageWithPixels({1, 1, {1, 2, 3, 255}}, 1);
};

TEST_F(UIImagePickerTest, AChoiceIsToldWithTheImageAndThePickerStays) {
  EXPECT_TRUE(picker->userChoose(photo));
  ASSERT_EQ(page->infos.size(), 1U);
  EXPECT_EQ(page->infos[0].valueForKey("UIImagePickerControllerOriginalImage").as<UIImage>(),
            photo);
  EXPECT_EQ(page->infos[0].valueForKey("UIImagePickerControllerMediaType"), Value("public.image"));
  EXPECT_EQ(page->presentedViewController(), picker);
}

TEST_F(UIImagePickerTest, ABusyPickerTakesNoSecondPicture) {
  EXPECT_FALSE(picker->isBusy());
  EXPECT_TRUE(picker->userChoose(photo));
  picker->view()->setUserInteractionEnabled(false);
  EXPECT_TRUE(picker->isBusy());
  EXPECT_FALSE(picker->userChoose(photo));
  EXPECT_EQ(page->infos.size(), 1U);
}

TEST_F(UIImagePickerTest, CancellingDismissesAndTellsNoPicture) {
  EXPECT_TRUE(picker->userCancel());
  EXPECT_EQ(page->presentedViewController(), nullptr);
  EXPECT_THAT(page->infos, IsEmpty());
  EXPECT_FALSE(picker->userCancel());
}

TEST_F(UIImagePickerTest, ABusyPickerCanBeSwipedAway) {
  picker->view()->setUserInteractionEnabled(false);
  EXPECT_TRUE(picker->userCancel());
  EXPECT_EQ(page->presentedViewController(), nullptr);
  picker->dismissViewControllerAnimated(true);
  EXPECT_EQ(page->presentedViewController(), nullptr) << "dismissing it again does nothing";
}

TEST_F(UIImagePickerTest, ADelegateMayCancelItsOwnWay) {
  class Stubborn : public Object, public UIImagePickerControllerDelegate {
   public:
    void imagePickerControllerDidCancel(const std::shared_ptr<UIImagePickerController>&) override {
      ++cancelled;
    }
    int cancelled = 0;
  };
  const auto stubborn = std::make_shared<Stubborn>();
  picker->setDelegate(stubborn);
  EXPECT_TRUE(picker->userCancel());
  EXPECT_EQ(stubborn->cancelled, 1);
  EXPECT_EQ(page->presentedViewController(), picker);
}

TEST_F(UIImagePickerTest, WithoutADelegateThePickerOnlyCloses) {
  picker->setDelegate(nullptr);
  EXPECT_TRUE(picker->userChoose(photo));
  EXPECT_EQ(page->presentedViewController(), nullptr);
  page->presentViewController(picker, true);
  EXPECT_TRUE(picker->userCancel());
  EXPECT_EQ(page->presentedViewController(), nullptr);
}

TEST_F(UIImagePickerTest, NothingIsChosenFromAPickerThatIsNotShown) {
  EXPECT_FALSE(picker->userChoose(nullptr));
  EXPECT_TRUE(picker->userCancel());
  EXPECT_FALSE(picker->userChoose(photo));
  EXPECT_THAT(page->infos, IsEmpty());
}

TEST_F(UIImagePickerTest, ThePickerIsSetUpByName) {
  const auto made = process.classes().find("UIImagePickerController")->makeInstance();
  made->perform("setDelegate:", {Value(page)});
  made->perform("setSourceType:", {Value::integer(2)});
  const auto byName = std::dynamic_pointer_cast<UIImagePickerController>(made);
  ASSERT_NE(byName, nullptr);
  EXPECT_EQ(byName->delegate(), page);
  EXPECT_EQ(byName->sourceType(), UIImagePickerControllerSourceType::savedPhotosAlbum);
  EXPECT_EQ(picker->sourceType(), UIImagePickerControllerSourceType::photoLibrary);
}

}  // namespace
}  // namespace uikit_test

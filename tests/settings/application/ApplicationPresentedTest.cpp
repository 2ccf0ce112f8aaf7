// Presentations over the pages: alerts, the colour picker and the photo picker.

#include <gmock/gmock.h>
#include <limits>
#include <optional>

#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/controllers/UIColorPickerViewController.h"
#include "platform/uikit/controllers/UIImagePickerController.h"
#include "platform/uikit/views/UIActivityIndicatorView.h"
#include "settings/application/SettingsProcess.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/PhotoLibrary.h"
#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;
using platform::UIAlertAction;
using platform::UIAlertActionStyle;
using platform::UIAlertController;
using platform::UIColorPickerViewController;
using platform::UIImagePickerController;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class ColorListener : public platform::UIColorPickerViewControllerDelegate {
 public:
  void colorPickerViewControllerDidSelectColor(
      const std::shared_ptr<UIColorPickerViewController>& picker) override {
    picked.push_back(picker->selectedColor()->components());
  }
  void colorPickerViewControllerDidFinish(
      const std::shared_ptr<UIColorPickerViewController>&) override {
    ++finished;
  }

  std::vector<platform::ColorComponents> picked;
  int finished = 0;
};

class PhotoListener : public platform::UIImagePickerControllerDelegate {
 public:
  void didFinishPickingMediaWithInfo(const std::shared_ptr<UIImagePickerController>& picker,
                                     const platform::Dictionary& info) override {
    image =
        info.valueForKey(platform::UIImagePickerControllerOriginalImage).as<platform::UIImage>();
    if (!becomesBusy) return;
    const auto indicator = platform::make<platform::UIActivityIndicatorView>();
    indicator->startAnimating();
    picker->view()->addSubview(indicator);
    picker->view()->setUserInteractionEnabled(false);
  }

  std::shared_ptr<platform::UIImage> image;
  bool becomesBusy = false;
};

class ApplicationPresentedTest : public ApplicationTest {
 protected:
  void present(const std::shared_ptr<platform::UIViewController>& controller) {
    inProcess([&] { application().process()->topPage()->presentViewController(controller, true); });
  }
  void inProcess(const std::function<void()>& work) {
    ASSERT_TRUE(application().runAtEdge("a test", work).accepted);
  }

  void openColorPicker() {
    open();
    inProcess([&] {
      colorPicker = platform::make<UIColorPickerViewController>();
      colorPicker->setDelegate(colors);
    });
    present(colorPicker);
  }
  void openPhotoPicker() {
    open();
    inProcess([&] {
      photoPicker = platform::make<UIImagePickerController>();
      photoPicker->setDelegate(photos);
    });
    present(photoPicker);
  }
  void openAlert(const std::vector<UIAlertActionStyle>& styles) {
    open();
    std::shared_ptr<UIAlertController> alert;
    inProcess([&] {
      alert = UIAlertController::alertControllerWithTitle(
          "Sure?", "Nothing is lost.", platform::UIAlertControllerStyle::actionSheet);
      for (const auto style : styles) {
        const auto index = static_cast<int>(alert->actions().size());
        alert->addAction(UIAlertAction::actionWithTitle(
            "Choice " + std::to_string(index), style,
            [this, index](const std::shared_ptr<UIAlertAction>&) { chosen = index; }));
      }
    });
    present(alert);
  }
  ActionResult pick(const json& rgba) {
    return act({{"action", "pick"}, {"rgba", rgba}}, presentedNode());
  }
  ActionResult choosePhoto(const json& name) {
    return act({{"action", "photo"}, {"name", name}}, presentedNode());
  }
  ActionResult close() { return act({{"action", "close"}}, presentedNode()); }

  static std::string inLibrary(std::string_view name) {
    return std::string(photosPath) + "/" + std::string(name);
  }
  void addToLibrary(std::string_view name, std::string_view bytes) {
    TreeWriter writer(root());
    writer.file(inLibrary(name), bytes);
    ASSERT_EQ(writer.problem(), "");
  }

  std::shared_ptr<ColorListener> colors = std::make_shared<ColorListener>();
  std::shared_ptr<PhotoListener> photos = std::make_shared<PhotoListener>();
  std::shared_ptr<UIColorPickerViewController> colorPicker;
  std::shared_ptr<UIImagePickerController> photoPicker;
  std::optional<int> chosen;
};

// A PNG of one red pixel.
std::string onePixel() {
  return {
      "\x89PNG\r\n\x1a\n"
      "\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\2\0\0\0\x90wS\xde"
      "\0\0\0\x0cIDATx\x9c\x63\xf8\xcf\xc0\0\0\3\1\1\0\xc9\xfe\x92\xef"
      "\0\0\0\0IEND\xae\x42\x60\x82",
      69};
}

// The same picture with a larger size in its header.
std::string claimingSize(char sideHighByte) {
  std::string bytes = onePixel();
  bytes[17] = sideHighByte;
  bytes[21] = sideHighByte;
  return bytes;
}

// --- Alerts ---

TEST_F(ApplicationPresentedTest, AnAlertIsANodeOfTheWindowWithItsChoicesInTheirOrder) {
  openAlert(
      {UIAlertActionStyle::standard, UIAlertActionStyle::destructive, UIAlertActionStyle::cancel});
  const json alert = presented();
  EXPECT_EQ(alert["kind"], "alert");
  EXPECT_EQ(alert["class"], "UIAlertController");
  EXPECT_EQ(alert["style"], "sheet");
  EXPECT_EQ(alert["title"], "Sure?");
  EXPECT_EQ(alert["message"], "Nothing is lost.");
  EXPECT_EQ(alert["actions"], (json::array({{{"title", "Choice 0"}, {"style", "default"}},
                                            {{"title", "Choice 1"}, {"style", "destructive"}},
                                            {{"title", "Choice 2"}, {"style", "cancel"}}})));
  EXPECT_EQ(alert["children"], json::array());
}

TEST_F(ApplicationPresentedTest, AChoiceOfAnAlertIsRunAndTheAlertGoes) {
  openAlert({UIAlertActionStyle::standard, UIAlertActionStyle::cancel});
  EXPECT_TRUE(act({{"action", "choose"}, {"index", 0}}, presentedNode()).accepted);
  EXPECT_EQ(chosen, 0);
  EXPECT_EQ(presented(), json::object());
}

TEST_F(ApplicationPresentedTest, ClosingAnAlertIsItsCancellingChoice) {
  openAlert({UIAlertActionStyle::standard, UIAlertActionStyle::cancel});
  EXPECT_TRUE(close().accepted);
  EXPECT_EQ(chosen, 1);
  EXPECT_EQ(presented(), json::object());
}

TEST_F(ApplicationPresentedTest, AnAlertWithoutACancellingChoiceCannotBeClosed) {
  openAlert({UIAlertActionStyle::standard});
  const ActionResult result = close();
  EXPECT_FALSE(result.accepted);
  EXPECT_THAT(result.message, HasSubstr("none that cancels"));
  EXPECT_EQ(presented()["kind"], "alert");
  EXPECT_EQ(chosen, std::nullopt);
}

TEST_F(ApplicationPresentedTest, AChoiceThatAnAlertDoesNotHaveIsRefused) {
  openAlert({UIAlertActionStyle::standard});
  for (const json& index : {json(1), json(-1), json("0"), json(0.5), json(nullptr)}) {
    EXPECT_FALSE(act({{"action", "choose"}, {"index", index}}, presentedNode()).accepted) << index;
  }
  EXPECT_EQ(chosen, std::nullopt);
  EXPECT_EQ(presented()["kind"], "alert");
}

TEST_F(ApplicationPresentedTest, APageUnderAnAlertTakesNoTouches) {
  openAlert({UIAlertActionStyle::cancel});
  const ActionResult result = act({{"action", "tap"}}, rowNode("respring"));
  EXPECT_FALSE(result.accepted);
  EXPECT_THAT(result.message, HasSubstr("something else is open over the page: Sure?"));
  EXPECT_TRUE(application().programRecords().empty());
}

TEST_F(ApplicationPresentedTest, ATableThatIsOnItsWayMovesOnUnderAnAlert) {
  openAlert({UIAlertActionStyle::cancel});
  const std::string table = TreeQuery(application().tree()).table().id;
  EXPECT_TRUE(act({{"action", "scroll"}, {"offset", 30}}, table));
  EXPECT_EQ(node(table)["offset"], 30);
}

// --- The colour picker ---

TEST_F(ApplicationPresentedTest, AColourPickerShowsItsColourAndWhetherAlphaIsOffered) {
  openColorPicker();
  inProcess([&] {
    colorPicker->setSelectedColor(platform::UIColor::colorWithRed(1, 0.5, 0, 0.5));
    colorPicker->setSupportsAlpha(false);
  });
  EXPECT_EQ(presented()["kind"], "colorPicker");
  EXPECT_EQ(presented()["class"], "UIColorPickerViewController");
  EXPECT_EQ(presented()["alpha"], false);
  EXPECT_EQ(presented()["color"], (json{{"rgba", {1.0, 0.5, 0.0, 1.0}}}));
  EXPECT_EQ(presented()["children"], json::array());
}

TEST_F(ApplicationPresentedTest, PickingTellsTheDelegateEachTimeAndLeavesThePickerOpen) {
  openColorPicker();
  const std::string identity = presentedNode();
  EXPECT_TRUE(pick({1.0, 0.0, 0.0, 1.0}).accepted);
  EXPECT_TRUE(pick({0, 0.25, 1, 1}).accepted);
  EXPECT_EQ(colors->picked,
            (std::vector<platform::ColorComponents>{{1, 0, 0, 1}, {0, 0.25, 1, 1}}));
  EXPECT_EQ(colors->finished, 0);
  EXPECT_EQ(presentedNode(), identity);
  EXPECT_EQ(presented()["color"], (json{{"rgba", {0.0, 0.25, 1.0, 1.0}}}));
}

TEST_F(ApplicationPresentedTest, ClosingTheColourPickerTellsTheDelegateOnce) {
  openColorPicker();
  EXPECT_TRUE(close().accepted);
  EXPECT_EQ(colors->finished, 1);
  EXPECT_TRUE(colors->picked.empty());
  EXPECT_EQ(presented(), json::object());
}

TEST_F(ApplicationPresentedTest, AColourThatIsNoneIsRefused) {
  openColorPicker();
  constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
  for (const json& rgba : {json(nullptr), json("FF0000"), json::array(), json({1, 0, 0}),
                           json({1, 0, 0, 1, 1}), json({1, 0, "0", 1}), json({-0.1, 0, 0, 1}),
                           json({0, 0, 1.1, 1}), json({0, 0, notANumber, 1})}) {
    const ActionResult result = pick(rgba);
    EXPECT_FALSE(result.accepted) << rgba;
    EXPECT_THAT(result.message, HasSubstr("four numbers from 0 to 1"));
  }
  EXPECT_TRUE(colors->picked.empty());
}

TEST_F(ApplicationPresentedTest, AColourPickerTakesNoPhotoAndNoChoice) {
  openColorPicker();
  EXPECT_THAT(choosePhoto("a.png").message, HasSubstr("(expected photo picker)"));
  EXPECT_THAT(act({{"action", "choose"}, {"index", 0}}, presentedNode()).message,
              HasSubstr("(expected sheet)"));
}

// --- The photo picker ---

TEST_F(ApplicationPresentedTest, APhotoPickerShowsTheLibraryByNameWithImagesThatCanBeFetched) {
  addToLibrary("B.png", onePixel());
  addToLibrary("A.png", onePixel());
  addToLibrary(".hidden.png", onePixel());
  openPhotoPicker();
  const json picker = presented();
  EXPECT_EQ(picker["kind"], "imagePicker");
  EXPECT_EQ(picker["busy"], false);
  ASSERT_EQ(picker["photos"].size(), 2U);
  EXPECT_EQ(picker["photos"][0]["name"], "A.png");
  EXPECT_EQ(picker["photos"][1]["name"], "B.png");
  const json& image = picker["photos"][0]["image"];
  EXPECT_EQ(image["width"], 1.0);
  EXPECT_EQ(application().imageBytes(image["hash"].get<std::string>()), onePixel());
}

TEST_F(ApplicationPresentedTest, ADeviceWithoutALibraryHasAPickerWithoutPhotos) {
  openPhotoPicker();
  EXPECT_EQ(presented()["photos"], json::array());
}

TEST_F(ApplicationPresentedTest, AFileOfTheLibraryThatIsNoPictureSaysWhyInPlaceOfAnImage) {
  addToLibrary("broken.png", onePixel().substr(0, 50));
  addToLibrary("notes.txt", "no picture");
  openPhotoPicker();
  const json shown = presented();
  for (const json& photo : shown["photos"]) {
    EXPECT_FALSE(photo.contains("image")) << photo;
    EXPECT_NE(photo.value("problem", ""), "") << photo;
  }
  EXPECT_EQ(shown["photos"].size(), 2U);
}

TEST_F(ApplicationPresentedTest, APhotoThatIsChosenByNameGoesToTheDelegate) {
  addToLibrary("A.png", onePixel());
  openPhotoPicker();
  EXPECT_TRUE(choosePhoto("A.png").accepted);
  ASSERT_TRUE(photos->image);
  EXPECT_EQ(photos->image->pixelWidth(), 1U);
  EXPECT_EQ(presented()["kind"], "imagePicker");  // its presenter closes it
}

TEST_F(ApplicationPresentedTest, AnythingThatIsNoPhotoOfTheLibraryIsRefusedWithAMessage) {
  addToLibrary("broken.png", onePixel().substr(0, 50));
  addToLibrary("notes.txt", "no picture");
  addToLibrary("bomb.png", claimingSize('\x7f'));
  put("/secret.png", onePixel());
  openPhotoPicker();
  for (const json& name : {json("absent.png"), json("broken.png"), json("notes.txt"),
                           json("bomb.png"), json("../../../../secret.png"), json("/secret.png"),
                           json(""), json(".."), json(7), json(nullptr)}) {
    const ActionResult result = choosePhoto(name);
    EXPECT_FALSE(result.accepted) << name;
    EXPECT_NE(result.message, "") << name;
  }
  EXPECT_FALSE(photos->image);
  EXPECT_EQ(presented()["kind"], "imagePicker");
}

// Detecting the damage requires decompressing the photo, which takes too long for the main thread.
TEST_F(ApplicationPresentedTest, APhotoThatIsDamagedInTheMiddleIsRefusedAsSoonAsThatIsKnown) {
  std::string damaged = onePixel();
  damaged[45] = static_cast<char>(damaged[45] + 1);
  addToLibrary("damaged.png", damaged);
  openPhotoPicker();
  const json entry = presented()["photos"][0];
  ASSERT_TRUE(entry.contains("image"));
  EXPECT_TRUE(choosePhoto("damaged.png"));
  EXPECT_TRUE(photos->image);
  photos->image.reset();

  EXPECT_EQ(application().imageBytes(entry["image"]["hash"].get<std::string>()), std::nullopt);
  const std::string problem = presented()["photos"][0].value("problem", "");
  EXPECT_THAT(problem, HasSubstr("The PNG cannot be read"));
  EXPECT_EQ(choosePhoto("damaged.png").message, problem);
  EXPECT_FALSE(photos->image);
}

TEST_F(ApplicationPresentedTest, APictureThatTheUserBringsIsChosenLikeAPhoto) {
  openPhotoPicker();
  const PhotoResult brought = readPhoto(platform::Data(onePixel()));
  EXPECT_TRUE(application().choosePhoto(presentedNode(), brought).accepted);
  EXPECT_EQ(photos->image, brought.image);
}

TEST_F(ApplicationPresentedTest, APictureThatCannotBeReadIsRefusedByItsProblem) {
  openPhotoPicker();
  const PhotoResult bomb = readPhoto(platform::Data(claimingSize('\x7f')));
  EXPECT_THAT(bomb.problem, HasSubstr("8323073 x 8323073 pixels"));
  const ActionResult result = application().choosePhoto(presentedNode(), bomb);
  EXPECT_FALSE(result.accepted);
  EXPECT_EQ(result.message, bomb.problem);
  EXPECT_FALSE(photos->image);
}

TEST_F(ApplicationPresentedTest, ABroughtPictureNeedsAPhotoPicker) {
  openColorPicker();
  const PhotoResult brought = readPhoto(platform::Data(onePixel()));
  EXPECT_THAT(application().choosePhoto(presentedNode(), brought).message,
              HasSubstr("not a photo picker"));
  EXPECT_THAT(application().choosePhoto("999999", brought).message, HasSubstr("is gone"));
}

TEST_F(ApplicationPresentedTest, ABusyPickerSaysSoShowsWhatLiesOverItAndTakesNoOtherPhoto) {
  addToLibrary("A.png", onePixel());
  photos->becomesBusy = true;
  openPhotoPicker();
  EXPECT_TRUE(choosePhoto("A.png").accepted);
  const json picker = presented();
  EXPECT_EQ(picker["busy"], true);
  const json over = node(picker["children"].back());
  EXPECT_EQ(over["kind"], "activity");
  EXPECT_EQ(over["animating"], true);
  photos->image.reset();
  EXPECT_THAT(choosePhoto("A.png").message, HasSubstr("busy"));
  EXPECT_FALSE(photos->image);
}

TEST_F(ApplicationPresentedTest, ClosingThePhotoPickerChoosesNothing) {
  addToLibrary("A.png", onePixel());
  openPhotoPicker();
  EXPECT_TRUE(close().accepted);
  EXPECT_EQ(presented(), json::object());
  EXPECT_FALSE(photos->image);
}

// --- In a script ---

TEST_F(ApplicationPresentedTest, AScriptPicksColoursAndClosesThePicker) {
  openColorPicker();
  EXPECT_EQ(play("pick FF0000\npick #00FF0080\nclose").messages, "");
  EXPECT_EQ(colors->picked.size(), 2U);
  EXPECT_EQ(colors->picked[0], (platform::ColorComponents{1, 0, 0, 1}));
  EXPECT_EQ(colors->picked[1], (platform::ColorComponents{0, 1, 0, 128 / 255.0}));
  EXPECT_EQ(colors->finished, 1);
}

TEST_F(ApplicationPresentedTest, AScriptChoosesAPhotoOfTheLibraryOrAFileBesideIt) {
  addToLibrary("A.png", onePixel());
  folder.write("mine/brought one.png", onePixel());
  openPhotoPicker();
  EXPECT_EQ(play("photo A.png").messages, "");
  EXPECT_TRUE(photos->image);
  photos->image.reset();
  ScriptOptions beside;
  beside.folder = folder.in("mine");
  EXPECT_EQ(play("photo \"@brought one.png\"", beside).messages, "");
  EXPECT_TRUE(photos->image);
}

TEST_F(ApplicationPresentedTest, AScriptIsToldWhatIsWrongWithAPhoto) {
  openPhotoPicker();
  EXPECT_THAT(play("photo nothing.png").messages, HasSubstr("line 1: "));
  EXPECT_THAT(play("photo @nothing.png").messages, HasSubstr("cannot read the file"));
}

TEST_F(ApplicationPresentedTest, AScriptShowsWhatIsOpen) {
  addToLibrary("A.png", onePixel());
  addToLibrary("B.txt", "no picture");
  openPhotoPicker();
  EXPECT_THAT(
      play("show").output,
      HasSubstr("[imagePicker]\n  A.png\n  B.txt  (The file is not a PNG or JPEG picture.)"));
  openColorPicker();
  EXPECT_THAT(play("show").output, HasSubstr("[colorPicker] {\"rgba\":[0.0,0.0,0.0,1.0]}"));
  openAlert({UIAlertActionStyle::cancel});
  EXPECT_THAT(play("show").output, HasSubstr("[alert] Sure? Nothing is lost.\n  Choice 0\n"));
}

TEST_F(ApplicationPresentedTest, ANameThatIsNoUnicodeIsPrintedAllTheSame) {
  addToLibrary("\xFF.png", onePixel());
  openPhotoPicker();
  EXPECT_THAT(play("tree").output, HasSubstr("\xEF\xBF\xBD.png"));
}

TEST_F(ApplicationPresentedTest, AScriptChoosesInASheetByItsLabel) {
  openAlert({UIAlertActionStyle::standard, UIAlertActionStyle::cancel});
  EXPECT_THAT(
      play("choose \"Other\"").messages,
      HasSubstr("not a choice of the alert: \"Other\" (choices: \"Choice 0\", \"Choice 1\""));
  EXPECT_EQ(play("choose \"Choice 0\"").messages, "");
  EXPECT_EQ(chosen, 0);
}

TEST_F(ApplicationPresentedTest, AScriptCancelsASheet) {
  openAlert({UIAlertActionStyle::standard, UIAlertActionStyle::cancel});
  EXPECT_EQ(play("cancel").messages, "");
  EXPECT_EQ(chosen, 1);
}

TEST_F(ApplicationPresentedTest, CommandsForWhatIsNotOpenSaySo) {
  open();
  EXPECT_THAT(play("pick FF0000").messages, HasSubstr("there is no open colour picker"));
  EXPECT_THAT(play("photo A.png").messages, HasSubstr("there is no open photo picker"));
  EXPECT_THAT(play("choose \"A\"").messages, HasSubstr("there is no open sheet to choose in"));
  EXPECT_THAT(play("close").messages, HasSubstr("there is nothing open to close"));
  EXPECT_THAT(play("cancel").messages, HasSubstr("there is nothing open to close"));
}

}  // namespace
}  // namespace settings::test

#include <gtest/gtest.h>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/views/UIImageView.h"
#include "platform/uikit/views/UILabel.h"
#include "tests/root/Pictures.h"
#include "tests/root/RootFixture.h"

namespace zentrova::tests {
namespace {

using platform::Dictionary;
using platform::UIImageView;
using platform::Value;

// A fake profile cell: its icon is nearly invisible until it has a picture.
class ProfileCell : public platform::PSTableCell {
  PLATFORM_CLASS(ProfileCell)

 public:
  static constexpr double alphaAtFirst = 0.25;

  const std::shared_ptr<UIImageView>& iconImageView() {
    if (!_icon) {
      _icon = platform::make<UIImageView>();
      _icon->setAlpha(alphaAtFirst);
    }
    return _icon;
  }

 private:
  std::shared_ptr<UIImageView> _icon;
};

class Avatar : public RootTest {
 protected:
  static constexpr const char* profileClass = "HBTwitterCell";
  static constexpr std::string_view avatarPath =
      "/var/jb/Library/Application Support/Zentrova/twitter.jpg";

  Avatar() {
    standIn(profileClass);
    standIn("HBLinkTableCell");
    process.tree().write(avatarPath, jpegOf(64, 48));
  }
  void standIn(const char* name, const char* base = "PSTableCell") {
    process.classes().remove(name);
    process.classes().add(platform::ClassBuilder<ProfileCell>(name, base)
                              .key("iconImageView", &ProfileCell::iconImageView)
                              .build());
  }
  // Shows a page with one row.
  void show(const char* cellClass, const char* label) {
    Dictionary row{{"cell", "PSLinkCell"}, {"id", "profile"}, {"label", label}};
    writeRoot({row.with("cellClass", cellClass)});
    showPage();
  }
  std::shared_ptr<platform::PSTableCell> cell() {
    return page->cachedCellForSpecifierID("profile");
  }
  UIImageView& icon() { return *cell()->valueForKey("iconImageView").as<UIImageView>(); }
  void expectUntouched() {
    ASSERT_TRUE(cell());
    EXPECT_FALSE(icon().image());
    EXPECT_EQ(icon().alpha(), ProfileCell::alphaAtFirst);
  }
  std::shared_ptr<platform::UITableViewCell> askForTheCell() {
    return page->cellForRowAtIndexPath(page->table(), {0, 0});
  }
};

TEST_F(Avatar, IsShownInTheMakersProfile) {
  show(profileClass, "hollowmere");
  ASSERT_TRUE(icon().image());
  EXPECT_EQ(icon().image()->size(), (platform::Size{64, 48}));
  EXPECT_EQ(icon().alpha(), 1);
}

TEST_F(Avatar, IsNotShownInOtherProfiles) {
  for (const char* label : {"Hollowmere", "HOLLOWMERE", "hollowmere ", " hollowmere", "@hollowmere",
                            "hollow", "someone", ""}) {
    show(profileClass, label);
    EXPECT_NO_FATAL_FAILURE(expectUntouched()) << label;
  }
}

TEST_F(Avatar, IsNotShownInRowsOfAnotherClass) {
  show("HBLinkTableCell", "hollowmere");
  expectUntouched();
}

TEST_F(Avatar, IsShownInACellBuiltOnThatOfTheProfile) {
  standIn("ProfileCellOfItsOwn", profileClass);
  show("ProfileCellOfItsOwn", "hollowmere");
  EXPECT_TRUE(icon().image());
}

// The class is looked up at run time: without it no row is a profile.
TEST_F(Avatar, ProfileIsKnownByItsClassAtRunTime) {
  process.classes().remove(profileClass);
  writeRoot({Dictionary{{"cell", "PSLinkCell"}, {"id", "profile"}, {"label", "hollowmere"}}});
  showPage();
  EXPECT_TRUE(cell());
}

TEST_F(Avatar, IsShownAsSoonAsTheCellSaysTheMakersName) {
  show(profileClass, "someone");
  cell()->specifier()->setName("hollowmere");
  askForTheCell();
  EXPECT_TRUE(icon().image());
}

TEST_F(Avatar, MissingPictureLeavesTheIconEmptyButVisible) {
  process.tree().remove(avatarPath);
  show(profileClass, "hollowmere");
  EXPECT_FALSE(icon().image());
  EXPECT_EQ(icon().alpha(), 1);
}

TEST_F(Avatar, MissingPictureTakesTheFormerOneAway) {
  show(profileClass, "hollowmere");
  ASSERT_TRUE(icon().image());
  process.tree().remove(avatarPath);
  askForTheCell();
  EXPECT_FALSE(icon().image());
  EXPECT_EQ(icon().alpha(), 1);
}

TEST_F(Avatar, FileThatIsNoPictureLeavesTheIconEmpty) {
  const std::string whole = jpegOf(64, 48);
  for (const std::string& bytes : {std::string(), std::string("no picture"), whole.substr(0, 8),
                                   whole.substr(0, whole.size() / 2), hugePng()}) {
    process.tree().write(avatarPath, bytes);
    show(profileClass, "hollowmere");
    EXPECT_FALSE(icon().image()) << bytes.size();
    EXPECT_EQ(icon().alpha(), 1);
  }
}

TEST_F(Avatar, PictureMayBeLarge) {
  process.tree().write(avatarPath, jpegOf(3000, 2000));
  show(profileClass, "hollowmere");
  ASSERT_TRUE(icon().image());
  EXPECT_EQ(icon().image()->size(), (platform::Size{3000, 2000}));
}

TEST_F(Avatar, EveryRowIsGivenItsCell) {
  writeRoot({item("PSGroupCell", "group"), item("PSSwitchCell", "one"),
             Dictionary{{"cell", "PSLinkCell"},
                        {"id", "profile"},
                        {"label", "hollowmere"},
                        {"cellClass", profileClass}}});
  showPage();
  EXPECT_EQ(page->cellForRowAtIndexPath(page->table(), {0, 0}),
            page->cachedCellForSpecifierID("one"));
  EXPECT_EQ(page->cellForRowAtIndexPath(page->table(), {0, 1}), cell());
  EXPECT_FALSE(page->cellForRowAtIndexPath(page->table(), {7, 7}));
}

}  // namespace
}  // namespace zentrova::tests

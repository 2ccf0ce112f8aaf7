#include <algorithm>
#include <gmock/gmock.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/values/Collections.h"
#include "settings/device/BundleInstallation.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/Product.h"
#include "tests/settings/device/DeviceTreeFixture.h"

namespace settings::tests {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class DeviceTreeCreate : public DeviceTreeTest {
 protected:
  platform::Dictionary propertyList(std::string_view path) {
    const auto result = platform::readPropertyList(read(host(path)));
    EXPECT_FALSE(result.error) << path;
    const auto* dictionary = result.value.asDictionary();
    return dictionary ? *dictionary : platform::Dictionary();
  }
};

TEST_F(DeviceTreeCreate, MakesATreeThatOpens) {
  const auto created = create();
  ASSERT_TRUE(created) << created.problem;
  EXPECT_EQ(created.tree->root(), treePath());
  const auto opened = DeviceTree::open(treePath());
  ASSERT_TRUE(opened) << opened.problem;
  EXPECT_EQ(opened.tree->root(), treePath());
  // Nothing else remains next to it.
  EXPECT_THAT(namesIn(folder), ElementsAre("built", "device"));
}

// As on a device. The link is relative, so that programs of this machine also stay inside the tree.
TEST_F(DeviceTreeCreate, VarJbIsALinkInsideTheTree) {
  ASSERT_TRUE(create());
  EXPECT_TRUE(fs::is_symlink(host("/var/jb")));
  EXPECT_TRUE(fs::read_symlink(host("/var/jb")).is_relative());
  const auto target = fs::canonical(host("/var/jb")).string();
  EXPECT_TRUE(target.starts_with(fs::canonical(treePath()).string() + "/")) << target;
}

TEST_F(DeviceTreeCreate, PreferenceFolderHoldsTheProductsSettingsOnly) {
  ASSERT_TRUE(create());
  EXPECT_TRUE(fs::is_directory(host(preferencesPath)));
  EXPECT_THAT(namesIn(host(preferencesPath)), ElementsAre("com.hollowmere.zentrovaprefs.plist"));
}

TEST_F(DeviceTreeCreate, BundleIsInstalled) {
  ASSERT_TRUE(create());
  EXPECT_THAT(namesIn(host(bundlePath)), ElementsAre("Info.plist", "Root.plist", "ZentrovaPrefs"));
  EXPECT_EQ(read(host(bundlePath) / "ZentrovaPrefs"), "code");
}

TEST_F(DeviceTreeCreate, AvatarIsAJpeg) {
  ASSERT_TRUE(create());
  const auto avatar = read(host(supportPath) / "twitter.jpg");
  ASSERT_GT(avatar.size(), 4U);
  EXPECT_EQ(avatar.substr(0, 3), "\xFF\xD8\xFF");
  EXPECT_EQ(avatar.substr(avatar.size() - 2), "\xFF\xD9");
}

TEST_F(DeviceTreeCreate, PhotosAreJpegAndPng) {
  ASSERT_TRUE(create());
  EXPECT_THAT(namesIn(host(photosPath)), ElementsAre("IMG_0001.JPG", "IMG_0002.JPG", "IMG_0003.JPG",
                                                     "IMG_0004.JPG", "IMG_0005.PNG"));
  EXPECT_EQ(read(host(photosPath) / "IMG_0001.JPG").substr(0, 3), "\xFF\xD8\xFF");
  EXPECT_EQ(read(host(photosPath) / "IMG_0005.PNG").substr(0, 8), "\x89PNG\r\n\x1A\n");
}

TEST_F(DeviceTreeCreate, AFewDozenModulesHaveNamesAndIcons) {
  ASSERT_TRUE(create());
  std::set<std::string> identifiers;
  std::set<std::string> titles;
  for (const auto path : {systemModulesPath, addedModulesPath}) {
    for (const auto& name : namesIn(host(path))) {
      const std::string module = std::string(path) + "/" + name;
      const auto info = propertyList(module + "/Info.plist");
      const auto title = info.valueForKey("CFBundleDisplayName").text();
      ASSERT_TRUE(title) << module;
      EXPECT_TRUE(titles.insert(*title).second) << *title;
      const auto identifier = info.valueForKey("CFBundleIdentifier").text();
      ASSERT_TRUE(identifier) << module;
      EXPECT_TRUE(identifiers.insert(*identifier).second) << *identifier;
      EXPECT_EQ(read(host(module + "/icon.png")).substr(0, 4), "\x89PNG") << module;
    }
  }
  EXPECT_GE(identifiers.size(), 24U);
}

TEST_F(DeviceTreeCreate, ModuleConfigurationNamesInstalledModules) {
  ASSERT_TRUE(create());
  const auto configuration = propertyList(moduleConfigurationPath);
  const auto enabled = configuration.valueForKey("module-identifiers");
  ASSERT_NE(enabled.asArray(), nullptr);
  EXPECT_GT(enabled.asArray()->size(), 4U);
  const auto modules = DeviceTree::open(treePath()).tree->describe().modules;
  for (const auto& identifier : *enabled.asArray()) {
    EXPECT_TRUE(std::ranges::find(modules, *identifier.text()) != modules.end())
        << identifier.description();
  }
  EXPECT_LT(enabled.asArray()->size(), modules.size());
}

// Without a stored list, the page for favourites would not accept any.
TEST_F(DeviceTreeCreate, FavouritesAreFourInstalledModulesThatMayBe) {
  ASSERT_TRUE(create());
  const auto favourites = propertyList(productPreferencesPath).valueForKey("groupedIdentifiers");
  ASSERT_NE(favourites.asArray(), nullptr);
  EXPECT_EQ(favourites.asArray()->size(), 4U);
  const auto modules = DeviceTree::open(treePath()).tree->describe().modules;
  const auto forbidden = platform::readPropertyList(read(host(forbiddenModulesPath))).value;
  ASSERT_NE(forbidden.asArray(), nullptr);
  for (const auto& identifier : *forbidden.asArray()) {
    EXPECT_THAT(modules, testing::Contains(*identifier.text()));
  }
  for (const auto& identifier : *favourites.asArray()) {
    EXPECT_THAT(modules, testing::Contains(*identifier.text()));
    EXPECT_FALSE(forbidden.asArray()->contains(identifier)) << identifier.description();
  }
}

TEST_F(DeviceTreeCreate, EmptyFolderIsTaken) {
  fs::create_directories(treePath());
  EXPECT_TRUE(create());
  EXPECT_TRUE(DeviceTree::open(treePath()));
}

TEST_F(DeviceTreeCreate, FoldersAboveAreMade) {
  const auto path = folder / "one" / "two" / "device";
  const auto created = DeviceTree::create(path, {bundle()});
  ASSERT_TRUE(created) << created.problem;
  EXPECT_TRUE(DeviceTree::open(path));
  EXPECT_THAT(namesIn(folder / "one" / "two"), ElementsAre("device"));
}

TEST_F(DeviceTreeCreate, SlashAtTheEndMakesNoDifference) {
  const auto created = DeviceTree::create(treePath().string() + "/", {bundle()});
  ASSERT_TRUE(created) << created.problem;
  EXPECT_EQ(created.tree->root(), treePath());
}

// --- Refusals: an error message, and no change ---

TEST_F(DeviceTreeCreate, RefusesAFolderThatIsNotEmpty) {
  write(treePath() / "mine.txt", "mine");
  const auto created = create();
  EXPECT_FALSE(created);
  EXPECT_THAT(created.problem, HasSubstr("is not empty"));
  EXPECT_THAT(namesIn(treePath()), ElementsAre("mine.txt"));
}

TEST_F(DeviceTreeCreate, RefusesATreeThatIsThere) {
  ASSERT_TRUE(create());
  write(host("/tmp/mine.txt"), "mine");
  const auto again = create();
  EXPECT_FALSE(again);
  EXPECT_THAT(again.problem, HasSubstr("is already a device tree"));
  EXPECT_EQ(read(host("/tmp/mine.txt")), "mine");
}

TEST_F(DeviceTreeCreate, RefusesAFileAndALink) {
  write(treePath(), "file");
  EXPECT_THAT(create().problem, HasSubstr("is not a folder"));
  fs::remove(treePath());
  fs::create_symlink(folder / "built", treePath());
  EXPECT_THAT(create().problem, HasSubstr("is not a folder"));
  EXPECT_TRUE(fs::is_symlink(treePath()));
}

TEST_F(DeviceTreeCreate, RefusesTheRootOfThisMachine) {
  EXPECT_THAT(DeviceTree::create("/", {bundle()}).problem, HasSubstr("is not empty"));
}

TEST_F(DeviceTreeCreate, RefusesNoName) {
  EXPECT_THAT(DeviceTree::create("", {bundle()}).problem, HasSubstr("no folder was given"));
}

TEST_F(DeviceTreeCreate, RefusesABundleThatIsNotComplete) {
  for (const char* name : {"Info.plist", "ZentrovaPrefs"}) {
    const auto kept = read(bundle() / name);
    fs::remove(bundle() / name);
    const auto created = create();
    EXPECT_FALSE(created);
    EXPECT_THAT(created.problem, HasSubstr("the file " + std::string(name) + " is missing"));
    EXPECT_THAT(namesIn(folder), ElementsAre("built"));
    write(bundle() / name, kept);
  }
}

TEST_F(DeviceTreeCreate, RefusesAPlaceBelowAFile) {
  write(folder / "file", "text");
  const auto created = DeviceTree::create(folder / "file" / "device", {bundle()});
  EXPECT_FALSE(created);
  EXPECT_THAT(created.problem, HasSubstr("cannot make"));
  EXPECT_THAT(namesIn(folder), ElementsAre("built", "file"));
}

// A failure in the middle leaves neither a partial tree nor the parent folders that were created
// for it.
TEST_F(DeviceTreeCreate, FailureInTheMiddleLeavesNothing) {
  ASSERT_EQ(::mkfifo((bundle() / "pipe").c_str(), 0600), 0);
  const auto created = DeviceTree::create(folder / "one" / "two" / "device", {bundle()});
  EXPECT_FALSE(created);
  EXPECT_THAT(created.problem, HasSubstr("cannot copy"));
  EXPECT_THAT(namesIn(folder), ElementsAre("built"));
}

// The bundle that was built with the running program is found next to it.
TEST_F(DeviceTreeCreate, BuiltBundleIsTheOneToInstall) {
  ASSERT_EQ(findBuiltBundle().filename(), "ZentrovaPrefs.bundle");
  const auto created = DeviceTree::create(treePath());
  ASSERT_TRUE(created) << created.problem;
  EXPECT_EQ(propertyList(std::string(bundlePath) + "/Info.plist").valueForKey("NSPrincipalClass"),
            platform::Value("ZVRRootListController"));
  EXPECT_TRUE(fs::is_regular_file(host(bundlePath) / "ZentrovaPrefs"));
}

// --- Opening ---

class DeviceTreeOpen : public DeviceTreeTest {};

TEST_F(DeviceTreeOpen, RefusesAMissingFolder) {
  const auto opened = DeviceTree::open(treePath());
  EXPECT_FALSE(opened);
  EXPECT_THAT(opened.problem, HasSubstr("there is no folder " + treePath().string()));
  EXPECT_THAT(opened.problem, HasSubstr("device create"));
}

TEST_F(DeviceTreeOpen, RefusesAFile) {
  write(treePath(), "file");
  EXPECT_THAT(DeviceTree::open(treePath()).problem,
              HasSubstr(treePath().string() + " is not a folder. Make a device tree with"));
}

TEST_F(DeviceTreeOpen, SaysWhyAFolderCannotBeLookedInto) {
  fs::create_symlink(treePath().filename(), treePath());
  EXPECT_THAT(
      DeviceTree::open(treePath()).problem,
      HasSubstr(treePath().string() + " cannot be read: Too many levels of symbolic links"));
  EXPECT_THAT(DeviceTree::open("").problem, HasSubstr("no folder was given"));
}

TEST_F(DeviceTreeOpen, RefusesAFolderThatIsNoTree) {
  for (const char* mark : {"", "text", "<plist version=\"1.0\"><array/></plist>",
                           "<plist version=\"1.0\"><dict><key>format</key><integer>1</integer>"
                           "</dict></plist>"}) {
    write(host("/.zentrova-device.plist"), mark);
    const auto opened = DeviceTree::open(treePath());
    EXPECT_FALSE(opened) << mark;
    EXPECT_THAT(opened.problem, HasSubstr("is not a device tree"));
  }
}

TEST_F(DeviceTreeOpen, RefusesAnotherFormat) {
  write(host("/.zentrova-device.plist"),
        "<plist version=\"1.0\"><dict><key>format</key><integer>2</integer><key>kind</key>"
        "<string>zentrova-device-tree</string></dict></plist>");
  const auto opened = DeviceTree::open(treePath());
  EXPECT_FALSE(opened);
  EXPECT_THAT(opened.problem, HasSubstr("format 2"));
  EXPECT_THAT(opened.problem, HasSubstr("format 1"));
}

TEST_F(DeviceTreeOpen, DescribesWhatTheTreeHolds) {
  const auto created = create();
  ASSERT_TRUE(created);
  write(host(preferencesPath) / "com.example.plist", "text");
  const auto description = created.tree->describe();
  EXPECT_EQ(description.folder, treePath().string());
  EXPECT_EQ(description.format, 1);
  EXPECT_EQ(description.jailbreakFolder, "../private/preboot/hollowmere/jb");
  EXPECT_EQ(description.bundlePath, bundlePath);
  EXPECT_EQ(description.bundleVersion, "1.2.3");
  EXPECT_THAT(description.preferenceFiles,
              ElementsAre("com.example.plist", "com.hollowmere.zentrovaprefs.plist"));
  EXPECT_GE(description.modules.size(), 24U);
  EXPECT_EQ(description.photos.size(), 5U);
  EXPECT_THAT(description.programs,
              ElementsAre("/bin/bash", "/var/jb/usr/bin/killall", "/var/jb/usr/bin/sbreload"));
}

// Missing or damaged parts count as absent.
TEST_F(DeviceTreeOpen, DescribesATreeThatLostMuch) {
  const auto created = create();
  ASSERT_TRUE(created);
  fs::remove_all(host("/private"));
  fs::remove_all(host("/bin"));
  write(host(systemModulesPath) / "CameraModule.bundle" / "Info.plist", "damaged");
  const auto description = created.tree->describe();
  EXPECT_EQ(description.bundlePath, "");
  EXPECT_EQ(description.bundleVersion, "");
  EXPECT_THAT(description.preferenceFiles, IsEmpty());
  EXPECT_THAT(description.programs, IsEmpty());
  EXPECT_THAT(description.modules, testing::Not(testing::Contains(HasSubstr("CameraModule"))));
  EXPECT_FALSE(description.modules.empty());
}

// --- Changing ---

class DeviceTreeReset : public DeviceTreeTest {};

TEST_F(DeviceTreeReset, MakesTheTreeAsNew) {
  const auto created = create();
  ASSERT_TRUE(created);
  write(host(preferencesPath) / "com.hollowmere.zentrovaprefs.plist", "changed");
  fs::remove_all(host(photosPath));
  EXPECT_EQ(created.tree->reset({bundle()}), std::nullopt);
  EXPECT_NE(read(host(productPreferencesPath)), "changed");
  EXPECT_THAT(namesIn(host(preferencesPath)), ElementsAre("com.hollowmere.zentrovaprefs.plist"));
  EXPECT_EQ(namesIn(host(photosPath)).size(), 5U);
  EXPECT_THAT(namesIn(folder), ElementsAre("built", "device"));
}

TEST_F(DeviceTreeReset, FailureLeavesTheTreeAsItWas) {
  const auto created = create();
  ASSERT_TRUE(created);
  write(host("/tmp/mine.txt"), "mine");
  ASSERT_EQ(::mkfifo((bundle() / "pipe").c_str(), 0600), 0);
  const auto problem = created.tree->reset({bundle()});
  ASSERT_TRUE(problem);
  EXPECT_THAT(*problem, HasSubstr("cannot copy"));
  EXPECT_EQ(read(host("/tmp/mine.txt")), "mine");
  EXPECT_THAT(namesIn(folder), ElementsAre("built", "device"));
}

// If something else has replaced the tree in the meantime, it is not deleted.
TEST_F(DeviceTreeReset, RefusesWhatIsNoTreeAnyMore) {
  const auto created = create();
  ASSERT_TRUE(created);
  fs::remove(host("/.zentrova-device.plist"));
  const auto problem = created.tree->reset({bundle()});
  ASSERT_TRUE(problem);
  EXPECT_THAT(*problem, HasSubstr("is not a device tree"));
  EXPECT_TRUE(fs::exists(host(photosPath)));
}

TEST_F(DeviceTreeReset, InstallsANewBundleAndNothingElse) {
  const auto created = create();
  ASSERT_TRUE(created);
  write(host(preferencesPath) / "kept.plist", "kept");
  write(bundle() / "ZentrovaPrefs", "new code");
  fs::remove(bundle() / "Root.plist");
  EXPECT_EQ(created.tree->installBundle({bundle()}), std::nullopt);
  EXPECT_THAT(namesIn(host(bundlePath)), ElementsAre("Info.plist", "ZentrovaPrefs"));
  EXPECT_EQ(read(host(bundlePath) / "ZentrovaPrefs"), "new code");
  EXPECT_THAT(namesIn(host(bundlePath).parent_path()), ElementsAre("ZentrovaPrefs.bundle"));
  EXPECT_EQ(read(host(preferencesPath) / "kept.plist"), "kept");
}

TEST_F(DeviceTreeReset, InstallsABundleThatIsMissing) {
  const auto created = create();
  ASSERT_TRUE(created);
  fs::remove_all(host("/var/jb/Library/PreferenceBundles"));
  EXPECT_EQ(created.tree->installBundle({bundle()}), std::nullopt);
  EXPECT_EQ(created.tree->describe().bundleVersion, "1.2.3");
}

TEST_F(DeviceTreeReset, FailedInstallationLeavesTheOldBundle) {
  const auto created = create();
  ASSERT_TRUE(created);
  ASSERT_EQ(::mkfifo((bundle() / "pipe").c_str(), 0600), 0);
  EXPECT_TRUE(created.tree->installBundle({bundle()}));
  EXPECT_THAT(namesIn(host(bundlePath)), ElementsAre("Info.plist", "Root.plist", "ZentrovaPrefs"));
  EXPECT_THAT(namesIn(host(bundlePath).parent_path()), ElementsAre("ZentrovaPrefs.bundle"));
}

}  // namespace
}  // namespace settings::tests

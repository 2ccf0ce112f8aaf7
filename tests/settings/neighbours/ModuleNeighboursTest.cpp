#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/uikit/UIKitClasses.h"
#include "settings/device/DevicePaths.h"
#include "settings/neighbours/ModuleIndex.h"
#include "settings/neighbours/Neighbours.h"
#include "tests/root/Pictures.h"
#include "tests/support/TestProcess.h"

namespace settings::tests {
namespace {

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

Texts textsOf(const Value& list) {
  Texts texts;
  if (!list.asArray()) return {"no list"};
  for (const auto& each : *list.asArray()) texts.push_back(each.description());
  return texts;
}

// A device with the system modules "a" and "b" and the added module "c".
class ModuleNeighbours : public testing::Test {
 protected:
  ModuleNeighbours() {
    platform::registerUIKitClasses(process.classes());
    registry.registerClasses(process.classes());
    addModule(systemModulesPath, "B", "b");
    addModule(systemModulesPath, "A", "a");
    addModule(addedModulesPath, "C", "c");
  }

  void write(std::string_view path, const Value& list) {
    process.tree().write(path, platform::writeXmlPropertyList(list).bytes);
  }
  static std::string folderOf(std::string_view parent, const std::string& name) {
    return std::string(parent) + "/" + name + "Module.bundle";
  }
  void addModule(std::string_view parent, const std::string& name, const std::string& identifier) {
    write(folderOf(parent, name) + "/Info.plist",
          Dictionary{{"CFBundleDisplayName", name}, {"CFBundleIdentifier", identifier}});
  }
  std::shared_ptr<platform::Object> send(const Value& receiver, std::string_view selector) {
    return receiver.asObject()->perform(selector).asObject();
  }
  // As a page asks after a user action.
  Texts loadable() {
    process.process().once<ModuleIndex>().forget();
    const Value repository =
        process.classes().find("CCSModuleRepository")->perform("repositoryWithDefaults");
    return textsOf(send(repository, "loadableModuleIdentifiers")->perform("allObjects"));
  }
  Texts forbidden() {
    return textsOf(process.classes().find("ZVModuleRepository")->perform("forbiddenCCIdentifiers"));
  }
  Dictionary descriptions(std::string_view className = "CCUISettingsListController") {
    process.process().once<ModuleIndex>().forget();
    const auto controller = process.classes().find(className)->makeInstance();
    return *controller->valueForKey("_identifiersToDescriptions").asDictionary();
  }
  std::shared_ptr<platform::Object> description(std::string_view identifier) {
    return descriptions().valueForKey(identifier).asObject();
  }
  std::shared_ptr<platform::UIImage> iconOf(std::string_view identifier) {
    return description(identifier)->perform("iconImage").as<platform::UIImage>();
  }

  test_support::TestProcess process;
  NeighbourRegistry registry{allNeighbours};
};

TEST_F(ModuleNeighbours, RepositoryListsTheFoldersByName) {
  EXPECT_THAT(loadable(), ElementsAre("a", "b", "c"));
}

TEST_F(ModuleNeighbours, DescriptionsAnswerNameAndIcon) {
  process.tree().write(folderOf(systemModulesPath, "A") + "/icon.png",
                       zentrova::tests::pngOf(58, 58));
  EXPECT_EQ(descriptions().size(), 3U);
  EXPECT_EQ(description("a")->perform("displayName"), Value("A"));
  ASSERT_TRUE(iconOf("a"));
  EXPECT_EQ(iconOf("a")->size(), (platform::Size{29, 29}));
  EXPECT_EQ(iconOf("b"), nullptr);
}

TEST_F(ModuleNeighbours, ControllerHasTwoNames) {
  EXPECT_EQ(descriptions("CCUISettingsModulesController").size(), 3U);
}

TEST_F(ModuleNeighbours, FoldersThatComeAndGoAreSeenAtTheNextTurn) {
  EXPECT_THAT(loadable(), ElementsAre("a", "b", "c"));
  addModule(addedModulesPath, "D", "d");
  process.tree().remove(folderOf(systemModulesPath, "A") + "/Info.plist");
  EXPECT_THAT(loadable(), ElementsAre("b", "c", "d"));
}

// Between two turns, all questions get the same answer.
TEST_F(ModuleNeighbours, FoldersAreLookedAtOnceATurn) {
  auto& index = process.process().once<ModuleIndex>();
  EXPECT_EQ(index.modules().size(), 3U);
  addModule(addedModulesPath, "D", "d");
  EXPECT_EQ(index.modules().size(), 3U);
  index.forget();
  EXPECT_EQ(index.modules().size(), 4U);
}

TEST_F(ModuleNeighbours, DamagedFolderIsNoModule) {
  const std::string info = folderOf(systemModulesPath, "A") + "/Info.plist";
  for (const char* text : {"", "text", "<plist><dict><key>CFBundleIdentifier</key>"}) {
    process.tree().write(info, text);
    EXPECT_THAT(loadable(), ElementsAre("b", "c")) << text;
  }
  for (const Value& list : {Value(Array{"CFBundleIdentifier"}), Value("a"), Value(Dictionary{}),
                            Value(Dictionary{{"CFBundleIdentifier", 7}}),
                            Value(Dictionary{{"CFBundleIdentifier", ""}})}) {
    write(info, list);
    EXPECT_THAT(loadable(), ElementsAre("b", "c")) << list.description();
  }
}

TEST_F(ModuleNeighbours, DeviceWithoutModuleFoldersHasNone) {
  ASSERT_FALSE(process.files().remove(systemModulesPath));
  ASSERT_FALSE(process.files().remove(addedModulesPath));
  EXPECT_THAT(loadable(), IsEmpty());
  EXPECT_TRUE(descriptions().empty());
  process.tree().write(addedModulesPath, "a file");
  EXPECT_THAT(loadable(), IsEmpty());
}

TEST_F(ModuleNeighbours, FirstOfTwoWithOneIdentifierCounts) {
  addModule(addedModulesPath, "Another", "b");
  EXPECT_THAT(loadable(), ElementsAre("a", "b", "c"));
  EXPECT_EQ(description("b")->perform("displayName"), Value("B"));
}

TEST_F(ModuleNeighbours, NameIsWhatTheFolderHas) {
  const std::string info = folderOf(systemModulesPath, "A") + "/Info.plist";
  write(info, Dictionary{{"CFBundleIdentifier", "a"}, {"CFBundleName", "Bundle name"}});
  EXPECT_EQ(description("a")->perform("displayName"), Value("Bundle name"));
  write(info, Dictionary{{"CFBundleIdentifier", "a"}, {"CFBundleDisplayName", 7}});
  EXPECT_EQ(description("a")->perform("displayName"), Value("AModule.bundle"));
}

TEST_F(ModuleNeighbours, FileThatIsNoImageIsNoIcon) {
  const std::string icon = folderOf(systemModulesPath, "A") + "/icon.png";
  for (const char* bytes : {"", "GIF89a", "\x89PNG\r\n\x1A\n"}) {
    process.tree().write(icon, bytes);
    EXPECT_EQ(iconOf("a"), nullptr);
  }
  ASSERT_FALSE(process.files().remove(icon));
  ASSERT_FALSE(process.files().createDirectory(icon));
  EXPECT_EQ(iconOf("a"), nullptr);
}

// A picture of any size is scaled to the size of an icon.
TEST_F(ModuleNeighbours, IconFitsItsPlace) {
  process.tree().write(folderOf(systemModulesPath, "A") + "/icon.png",
                       zentrova::tests::pngOf(290, 1450));
  ASSERT_TRUE(iconOf("a"));
  EXPECT_NEAR(iconOf("a")->size().height, 29, 1e-9);
  EXPECT_NEAR(iconOf("a")->size().width, 5.8, 1e-9);
}

TEST_F(ModuleNeighbours, ForbiddenModulesAreAListOnTheDevice) {
  EXPECT_THAT(forbidden(), IsEmpty());
  write(forbiddenModulesPath, Array{"b", "z"});
  EXPECT_THAT(forbidden(), ElementsAre("b", "z"));
  write(forbiddenModulesPath, Dictionary{{"b", true}});
  EXPECT_THAT(forbidden(), IsEmpty());
  process.tree().write(forbiddenModulesPath, "damaged");
  EXPECT_THAT(forbidden(), IsEmpty());
}

TEST_F(ModuleNeighbours, EachClassCanBeSwitchedOff) {
  for (const auto& name : registry.names()) {
    NeighbourRegistry without{allNeighbours};
    ASSERT_TRUE(without.switchOff(name));
    const test_support::TestProcess another;
    auto& classes = platform::Process::current().classes();
    without.registerClasses(classes);
    for (const auto& each : registry.names()) {
      EXPECT_EQ(classes.find(each) != nullptr, each != name) << each << " without " << name;
    }
  }
}

TEST_F(ModuleNeighbours, SwitchedOffClassesCanBeSwitchedOnAgain) {
  NeighbourRegistry switched{allNeighbours};
  EXPECT_TRUE(switched.isOn("CCSModuleRepository"));
  ASSERT_TRUE(switched.switchOff("CCSModuleRepository"));
  EXPECT_FALSE(switched.isOn("CCSModuleRepository"));
  EXPECT_TRUE(switched.isOn("ZVModuleRepository"));
  EXPECT_TRUE(switched.switchOn("CCSModuleRepository"));
  EXPECT_TRUE(switched.isOn("CCSModuleRepository"));
  const test_support::TestProcess another;
  auto& classes = platform::Process::current().classes();
  switched.registerClasses(classes);
  EXPECT_NE(classes.find("CCSModuleRepository"), nullptr);
  EXPECT_FALSE(switched.switchOn("Nobody"));
  EXPECT_FALSE(switched.isOn("Nobody"));
}

}  // namespace
}  // namespace settings::tests

#include <gtest/gtest.h>

#include "tests/root/RootFixture.h"

namespace zentrova::tests {
namespace {

// The bundle as the application sees it.
class BundleEntry : public testing::Test {
 protected:
  void registerPlatform() {
    platform::registerUIKitClasses(process.classes());
    platform::registerPreferencesClasses(process.classes());
  }
  int registerBundle(unsigned version = platform::bundleInterfaceVersion) {
    return zentrova_bundle_register(&process.classes(), version);
  }

  test_support::TestProcess process;
};

TEST_F(BundleEntry, RegistersThePrincipalClassAndItsBases) {
  registerPlatform();
  EXPECT_EQ(registerBundle(), platform::bundleRegistered);
  const auto* root = process.classes().find("ZVRRootListController");
  ASSERT_NE(root, nullptr);
  EXPECT_TRUE(root->isSubclassOf("HBRootListController"));
  EXPECT_TRUE(root->isSubclassOf("PSListController"));
  EXPECT_NE(process.classes().find("HBPreferences"), nullptr);
}

TEST_F(BundleEntry, RefusesAnotherInterfaceVersion) {
  registerPlatform();
  const auto before = process.classes().names();
  EXPECT_EQ(registerBundle(platform::bundleInterfaceVersion + 1), platform::bundleInterfaceDiffers);
  EXPECT_EQ(registerBundle(0), platform::bundleInterfaceDiffers);
  EXPECT_EQ(process.classes().names(), before);
}

TEST_F(BundleEntry, RefusesAMissingRegistry) {
  EXPECT_EQ(zentrova_bundle_register(nullptr, platform::bundleInterfaceVersion),
            platform::bundleRegistryMissing);
}

// All classes or none: earlier classes stay.
TEST_F(BundleEntry, RegistersNothingASecondTime) {
  registerPlatform();
  EXPECT_EQ(registerBundle(), platform::bundleRegistered);
  const auto names = process.classes().names();
  EXPECT_EQ(registerBundle(), platform::bundleClassRefused);
  EXPECT_EQ(process.classes().names(), names);
}

TEST_F(BundleEntry, RegistersNothingWithoutThePlatformsLists) {
  const auto before = process.classes().names();
  EXPECT_EQ(registerBundle(), platform::bundleClassRefused);
  EXPECT_EQ(process.classes().names(), before);
}

class RootByName : public RootTest {};

// The operations that rows and scripts send to the page.
TEST_F(RootByName, PageOffersItsOperationsByName) {
  writeRoot();
  const auto controller = makePage();
  for (const char* selector :
       {"respring", "setPreferenceValue:specifier:", "readPreferenceValue:", "viewDidAppear:"}) {
    EXPECT_TRUE(controller->respondsToSelector(selector)) << selector;
  }
}

TEST_F(RootByName, RespringRowRestartsTheHomeScreen) {
  writeRoot({platform::Dictionary{{"cell", "PSButtonCell"},
                                  {"id", "respring"},
                                  {"label", "Respring"},
                                  {"action", "respring"}}});
  showPage();
  page->performActionForSpecifier(page->specifierForID("respring"));
  const auto records = process.programs().records();
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].request.path, "/var/jb/usr/bin/killall");
  EXPECT_EQ(records[0].request.arguments,
            (std::vector<std::string>{"killall", "-9", "SpringBoard"}));
  EXPECT_EQ(records[0].request.environment, std::nullopt);
}

}  // namespace
}  // namespace zentrova::tests

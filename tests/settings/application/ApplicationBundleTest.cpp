// Bundles that cannot be loaded, damaged lists, and pages that raise. Each becomes a page, a row or
// a report with the error, and the application goes on.

#include <filesystem>
#include <gmock/gmock.h>

#include "settings/application/BundleLoader.h"
#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;

std::string info(const std::string& entries) {
  return "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>";
}

std::string entry(const std::string& key, const std::string& text) {
  return "<key>" + key + "</key><string>" + text + "</string>";
}

class ApplicationBundleTest : public ApplicationTest {
 protected:
  // The text of the page that replaces one that could not be made.
  std::string problem() {
    open();
    EXPECT_FALSE(application().crash());
    return page().value("problem", json::object()).value("text", "");
  }
  void useInfo(const std::string& entries) { put(inBundle("Info.plist"), info(entries)); }
  // Installs a bundle of the tests with this principal class.
  void useBundle(const std::string& name, const std::string& principal = "PlainPage") {
    useInfo(entry("CFBundleExecutable", name) + entry("NSPrincipalClass", principal));
    const std::string installed = *application().device().hostPath(bundlePath);
    std::filesystem::copy_file(std::filesystem::path(ZENTROVA_ODD_BUNDLES) / name,
                               std::filesystem::path(installed) / name);
  }
  std::string rowProblem(const std::string& title) {
    open();
    EXPECT_FALSE(application().crash());
    const TreeQuery query(application().tree());
    const FoundNode found = query.row({RowAddress::By::label, title, 1, 0, 0});
    return found ? found.node->value("problem", "") : "no row " + title;
  }
  void answerCrash(const char* how) {
    EXPECT_TRUE(act({{"action", how}}, presentedNode()).accepted);
  }
};

// --- The bundle ---

TEST_F(ApplicationBundleTest, AMissingBundleIsAPageThatNamesIt) {
  ASSERT_FALSE(application().device().remove(bundlePath));
  EXPECT_EQ(problem(), "cannot read " + inBundle("Info.plist") +
                           ": No such file or directory. Reinstall the bundle.");
  EXPECT_EQ(page()["problem"]["title"], "The settings cannot be shown");
}

TEST_F(ApplicationBundleTest, ABundleThatIsPutBackOpens) {
  const std::string bytes = contents(inBundle("Info.plist"));
  put(inBundle("Info.plist"), "damaged");
  EXPECT_NE(problem(), "");
  put(inBundle("Info.plist"), bytes);
  EXPECT_EQ(problem(), "");
  EXPECT_EQ(page()["title"], "Zentrova");
}

TEST_F(ApplicationBundleTest, ADamagedInfoSaysFileAndPlace) {
  put(inBundle("Info.plist"), "<plist version=\"1.0\">\n<dict><key>a</key></dict></plist>");
  EXPECT_THAT(problem(), AllOf(HasSubstr(inBundle("Info.plist")), HasSubstr("line 2")));
}

TEST_F(ApplicationBundleTest, AnInfoWithoutAPrincipalClassSaysWhichKeyIsMissing) {
  useInfo(entry("CFBundleExecutable", "ZentrovaPrefs"));
  EXPECT_THAT(problem(),
              AllOf(HasSubstr(inBundle("Info.plist")), HasSubstr("NSPrincipalClass is missing")));
}

TEST_F(ApplicationBundleTest, AnInfoWithoutAnExecutableSaysWhichKeyIsMissing) {
  useInfo(entry("NSPrincipalClass", "ZVRRootListController"));
  EXPECT_THAT(problem(), HasSubstr("CFBundleExecutable is missing"));
}

TEST_F(ApplicationBundleTest, AKeyThatIsNoTextSaysSo) {
  useInfo(entry("CFBundleExecutable", "ZentrovaPrefs") + "<key>NSPrincipalClass</key><true/>");
  EXPECT_THAT(problem(), HasSubstr("NSPrincipalClass is empty or not a string"));
  useInfo("<key>CFBundleExecutable</key><string></string>" + entry("NSPrincipalClass", "A"));
  EXPECT_THAT(problem(), HasSubstr("CFBundleExecutable is empty or not a string"));
}

TEST_F(ApplicationBundleTest, APrincipalClassThatTheBundleDoesNotHaveSaysItsName) {
  useInfo(entry("CFBundleExecutable", "ZentrovaPrefs") + entry("NSPrincipalClass", "Absent"));
  EXPECT_THAT(problem(), HasSubstr("NSPrincipalClass is \"Absent\""));
}

TEST_F(ApplicationBundleTest, AnExecutableOutsideOfTheBundleIsRefused) {
  useInfo(entry("CFBundleExecutable", "../../evil") + entry("NSPrincipalClass", "A"));
  EXPECT_THAT(problem(), HasSubstr("without a slash"));
}

TEST_F(ApplicationBundleTest, AMissingExecutableSaysItsPath) {
  ASSERT_FALSE(application().device().remove(inBundle("ZentrovaPrefs")));
  EXPECT_THAT(problem(), AllOf(HasSubstr(inBundle("ZentrovaPrefs")), HasSubstr("no such file")));
}

TEST_F(ApplicationBundleTest, AnExecutableThatIsNoCodeSaysSo) {
  put(inBundle("ZentrovaPrefs"), "no code");
  EXPECT_THAT(problem(), AllOf(HasSubstr(inBundle("ZentrovaPrefs")), HasSubstr("cannot be loaded"),
                               HasSubstr("Reinstall the bundle")));
}

TEST_F(ApplicationBundleTest, ASharedObjectThatIsNoBundleSaysWhichFunctionIsMissing) {
  useBundle("NoBundle");
  EXPECT_THAT(problem(), HasSubstr("zentrova_bundle_register"));
}

TEST_F(ApplicationBundleTest, ABundleOfAnotherInterfaceSaysWhatToDo) {
  useBundle("RefusedBundle1");
  EXPECT_THAT(problem(), AllOf(HasSubstr("another version"), HasSubstr("from the same checkout")));
}

TEST_F(ApplicationBundleTest, ABundleWhoseClassesAreRefusedSaysSo) {
  useBundle("RefusedBundle2");
  EXPECT_THAT(problem(), HasSubstr("could not be registered"));
}

TEST_F(ApplicationBundleTest, AnUnknownAnswerOfABundleIsTold) {
  useBundle("RefusedBundle99");
  EXPECT_THAT(problem(), HasSubstr("status 99"));
}

TEST_F(ApplicationBundleTest, AnotherBundleIsShownAsWell) {
  useBundle("OddPages", "PlainPage");
  EXPECT_EQ(problem(), "");
  EXPECT_EQ(page()["class"], "PlainPage");
}

TEST_F(ApplicationBundleTest, APrincipalClassThatIsNoPageSaysSo) {
  useBundle("OddPages", "NoPage");
  EXPECT_THAT(problem(), HasSubstr("which is not a page"));
}

TEST_F(ApplicationBundleTest, APageThatRefusesToBeMadeSaysSo) {
  useBundle("OddPages", "RefusingPage");
  EXPECT_THAT(problem(), HasSubstr("RefusingPage could not be created"));
}

// --- Crashes ---

TEST_F(ApplicationBundleTest, APageThatRaisesWhileItIsMadeIsACrashOverAPageThatSaysSo) {
  useBundle("OddPages", "RaisingInitPage");
  open();
  ASSERT_TRUE(application().crash());
  EXPECT_EQ(application().crash()->name, "TestException");
  EXPECT_EQ(application().crash()->reason, "raised in init");
  EXPECT_EQ(presented()["kind"], "crash");
  EXPECT_EQ(presented()["name"], "TestException");
  EXPECT_EQ(presented()["reason"], "raised in init");
  EXPECT_EQ(presented()["where"], "opening the settings");
  answerCrash("continue");
  EXPECT_THAT(page()["problem"]["text"].get<std::string>(), HasSubstr("raised in init"));
}

TEST_F(ApplicationBundleTest, APageThatRaisesWhileItLoadsIsShownAsFarAsItCame) {
  useBundle("OddPages", "RaisingPage");
  open();
  ASSERT_TRUE(application().crash());
  EXPECT_EQ(application().crash()->reason, "raised on purpose");
  answerCrash("continue");
  EXPECT_FALSE(application().crash());
  EXPECT_EQ(page()["class"], "RaisingPage");
}

TEST_F(ApplicationBundleTest, WorkThatRaisesLaterIsACrashToo) {
  useBundle("OddPages", "LateRaisingPage");
  open();
  EXPECT_FALSE(application().crash());
  EXPECT_TRUE(application().advance(2));
  ASSERT_TRUE(application().crash());
  EXPECT_EQ(application().crash()->where, "delayed work");
}

TEST_F(ApplicationBundleTest, ATapThatRaisesIsACrashThatSaysWhere) {
  useBundle("OddPages", "RaisingListPage");
  open();
  EXPECT_TRUE(tap("raise").accepted);
  ASSERT_TRUE(application().crash());
  EXPECT_EQ(application().crash()->name, "TestException");
  EXPECT_EQ(application().crash()->where, "tap on \"raise\"");
}

TEST_F(ApplicationBundleTest, APageThatRaisesWhenItIsAskedForItsRowsIsACrashWithoutThePage) {
  useBundle("OddPages", "RaisingListPage");
  open();
  EXPECT_TRUE(tap("arm").accepted);
  const json shown = tree();
  ASSERT_TRUE(application().crash());
  EXPECT_EQ(application().crash()->where, "asking the page for its rows");
  EXPECT_EQ(presented()["kind"], "crash");
  EXPECT_EQ(page(), json::object());
  // Asking the page again raises again; a new process recovers.
  answerCrash("continue");
  tree();
  ASSERT_TRUE(application().crash());
  answerCrash("restart");
  EXPECT_EQ(rowTitles(), (std::vector<std::string>{"arm", "raise"}));
  EXPECT_FALSE(application().crash());
}

class CrashedPageTest : public ApplicationBundleTest {
 protected:
  CrashedPageTest() {
    useBundle("OddPages", "LateRaisingPage");
    open();
    EXPECT_TRUE(application().advance(2));
    EXPECT_TRUE(application().crash());
  }
};

TEST_F(CrashedPageTest, NothingButAnAnswerIsTakenWhileTheReportIsOpen) {
  const ActionResult result =
      application().perform({{"action", "bounds"}, {"width", 1}, {"height", 1}});
  EXPECT_THAT(result.message, HasSubstr("TestException"));
  EXPECT_FALSE(application().advance(1));
  EXPECT_FALSE(application().runAtEdge("work", [] { FAIL(); }));
  application().run([this] { application().stop(); });
  EXPECT_TRUE(application().crash());
}

TEST_F(CrashedPageTest, ContinueGoesOnWithThePageAsItIs) {
  const std::string table = TreeQuery(application().tree()).page().id;
  answerCrash("continue");
  EXPECT_FALSE(application().crash());
  EXPECT_EQ(presented(), json::object());
  EXPECT_EQ(TreeQuery(application().tree()).page().id, table);
  EXPECT_TRUE(application().advance(5));
  EXPECT_FALSE(application().crash());
}

TEST_F(CrashedPageTest, RestartIsANewProcess) {
  const std::string old = TreeQuery(application().tree()).page().id;
  answerCrash("restart");
  EXPECT_FALSE(application().crash());
  EXPECT_NE(TreeQuery(application().tree()).page().id, old);
}

TEST_F(CrashedPageTest, TheReportIsAnsweredOnItsOwnNode) {
  const std::string other = TreeQuery(application().tree()).page().id;
  for (const char* how : {"continue", "restart"}) {
    EXPECT_FALSE(act({{"action", how}}, other)) << how;
    EXPECT_FALSE(act({{"action", how}}, "999999")) << how;
  }
  const std::string report = presentedNode();
  answerCrash("continue");
  EXPECT_THAT(act({{"action", "continue"}}, report).message, HasSubstr("no crash report"));
}

TEST_F(CrashedPageTest, ReopenIsTakenTooAndDropsTheReport) {
  EXPECT_TRUE(application().perform({{"action", "reopen"}}));
  EXPECT_FALSE(application().crash());
}

TEST_F(CrashedPageTest, ASecondCrashIsAnotherReport) {
  const std::string first = presentedNode();
  answerCrash("restart");
  EXPECT_TRUE(application().advance(2));
  ASSERT_TRUE(application().crash());
  EXPECT_NE(presentedNode(), first);
}

// --- Specifier lists ---

TEST_F(ApplicationBundleTest, AMissingListIsAPageThatNamesIt) {
  ASSERT_FALSE(application().device().remove(inBundle("Root.plist")));
  EXPECT_THAT(problem(), HasSubstr("Root.plist"));
}

TEST_F(ApplicationBundleTest, ADamagedListSaysFileAndPlace) {
  put(inBundle("Root.plist"), "<plist version=\"1.0\">\n<dict>\n<key>items</key>");
  EXPECT_THAT(problem(), AllOf(HasSubstr("Root.plist"), HasSubstr("line 3")));
}

TEST_F(ApplicationBundleTest, AListOfAnotherFormSaysSo) {
  for (const char* inside :
       {"<array/>", "<dict/>", "<dict><key>items</key><string>a</string></dict>"}) {
    put(inBundle("Root.plist"), propertyList(inside));
    EXPECT_THAT(problem(), HasSubstr("Root.plist")) << inside;
  }
}

TEST_F(ApplicationBundleTest, AnItemThatIsNoRowSaysFileAndRow) {
  useRows({{{"cell", "PSButtonCell"}, {"label", "Good"}}, "text"});
  open();
  EXPECT_FALSE(application().crash());
  EXPECT_THAT(play("show").output, AllOf(HasSubstr("Good"), HasSubstr("Root.plist, row 2")));
}

TEST_F(ApplicationBundleTest, AnUnknownCellNameSaysFileRowAndWhatIsAllowed) {
  useRows(
      {{{"cell", "PSButtonCell"}, {"label", "Good"}}, {{"cell", "PSWrongCell"}, {"label", "Bad"}}});
  EXPECT_EQ(rowProblem("Good"), "");
  EXPECT_THAT(rowProblem("Bad"), AllOf(HasSubstr("Root.plist, row 2"), HasSubstr("PSWrongCell"),
                                       HasSubstr("PSSwitchCell")));
}

TEST_F(ApplicationBundleTest, ACellClassThatIsNotThereSaysFileAndRow) {
  useRows({{{"cell", "PSButtonCell"}, {"label", "Bad"}, {"cellClass", "AbsentCell"}}});
  EXPECT_THAT(rowProblem("Bad"), AllOf(HasSubstr("Root.plist, row 1"), HasSubstr("AbsentCell")));
}

TEST_F(ApplicationBundleTest, AnActionThatThePageDoesNotHaveSaysFileAndRow) {
  useRows({{{"cell", "PSButtonCell"}, {"label", "Bad"}, {"action", "absentAction"}}});
  EXPECT_THAT(rowProblem("Bad"), AllOf(HasSubstr("Root.plist, row 1"), HasSubstr("absentAction")));
}

TEST_F(ApplicationBundleTest, APageClassThatIsNotThereSaysFileAndRow) {
  useRows({{{"cell", "PSLinkCell"}, {"label", "Bad"}, {"detail", "AbsentPage"}}});
  EXPECT_THAT(rowProblem("Bad"), AllOf(HasSubstr("Root.plist, row 1"), HasSubstr("AbsentPage")));
}

TEST_F(ApplicationBundleTest, ADetailClassThatIsNoPageSaysFileAndRow) {
  useRows({{{"cell", "PSLinkCell"}, {"label", "Bad"}, {"detail", "HBPreferences"}}});
  EXPECT_THAT(rowProblem("Bad"), AllOf(HasSubstr("Root.plist, row 1"), HasSubstr("HBPreferences")));
}

// --- The application itself ---

TEST_F(ApplicationBundleTest, AFolderThatIsNoneIsNoDevice) {
  for (const std::string& deviceRoot : {folder.in("absent"), folder.write("file", "")}) {
    ApplicationOptions wrong;
    wrong.deviceRoot = deviceRoot;
    const ApplicationResult made = Application::create(wrong);
    EXPECT_FALSE(made.application);
    EXPECT_THAT(made.error, AllOf(HasSubstr(deviceRoot), HasSubstr("device create")));
  }
}

TEST_F(ApplicationBundleTest, ABundleIsLetGoOfAsOftenAsItIsOpened) {
  for (int i = 0; i < 5; ++i) {
    open();
    EXPECT_TRUE(tap("moduleMaterial").accepted);
    EXPECT_FALSE(application().crash());
  }
}

}  // namespace
}  // namespace settings::test

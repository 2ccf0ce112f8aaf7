// What each script command does, and its errors.

#include <gmock/gmock.h>

#include "settings/device/Product.h"
#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class ScriptCommandsTest : public ApplicationTest {
 protected:
  // Plays lines that must succeed, after `open`. Returns the output.
  std::string played(const std::string& script) {
    const Played result = play("open\n" + script);
    EXPECT_EQ(result.status, ScriptStatus::done) << result.messages;
    EXPECT_EQ(result.messages, "");
    return result.output;
  }
  // Plays lines of which the last must fail. Returns the messages.
  std::string failed(const std::string& script) {
    const Played result = play("open\n" + script);
    EXPECT_EQ(result.status, ScriptStatus::failed) << result.output;
    const auto lines = 1 + std::count(script.begin(), script.end(), '\n') + 1;
    EXPECT_THAT(result.messages, HasSubstr("line " + std::to_string(lines) + ": "));
    return result.messages;
  }
  // The JSON that the script's last line printed.
  json printed(const std::string& script) {
    ScriptOptions asJson;
    asJson.json = true;
    const Played result = play("open\n" + script, asJson);
    EXPECT_EQ(result.messages, "");
    json last;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) last = json::parse(line);
    return last;
  }
};

// --- The device ---

TEST_F(ScriptCommandsTest, TraitsAreSetBeforeAndAfterOpen) {
  EXPECT_EQ(play("trait idiom pad\ntrait system 14.4.2\nopen\nexpect no row #presentationStyle\n"
                 "trait appearance dark\ntrait screen 375x667@2\ntrait tint FF000080\n"
                 "trait text 1.5")
                .messages,
            "");
  const json device = tree()["device"];
  EXPECT_EQ(device["idiom"], "pad");
  EXPECT_EQ(device["system"], "14.4.2");
  EXPECT_EQ(device["appearance"], "dark");
  EXPECT_EQ(device["screen"], (json{{"width", 375.0}, {"height", 667.0}, {"scale", 2.0}}));
  EXPECT_EQ(device["tint"], "FF000080");
  EXPECT_EQ(device["textScale"], 1.5);
}

TEST_F(ScriptCommandsTest, ANeighbourThatIsNoneIsRefusedWithTheOnesThereAre) {
  EXPECT_THAT(failed("trait neighbour Nobody off"),
              AllOf(HasSubstr("unknown neighbour: \"Nobody\""), HasSubstr("expected one of:")));
}

TEST_F(ScriptCommandsTest, PutWritesAPropertyListOrTheBytesOfAFile) {
  played("put /new/folder/a.plist {\"k\": [1, true, 0.5, \"t\", {\"data\": \"AAE=\"}]}");
  EXPECT_THAT(contents("/new/folder/a.plist"),
              AllOf(HasSubstr("<plist"), HasSubstr("<true/>"), HasSubstr("AAE=")));
  folder.write("bytes.bin", std::string("a\0b", 3));
  folder.write("empty", "");
  ScriptOptions beside;
  beside.folder = folder.path();
  EXPECT_EQ(play("put /b @bytes.bin\nput /c @" + folder.in("bytes.bin") + "\nput /d @empty", beside)
                .messages,
            "");
  EXPECT_EQ(contents("/b"), std::string("a\0b", 3));
  EXPECT_EQ(contents("/c"), contents("/b"));
  EXPECT_TRUE(application().device().fileExists("/d"));
}

TEST_F(ScriptCommandsTest, PutSaysWhichFileCannotBeReadOrWritten) {
  EXPECT_THAT(failed("put /a @absent"), HasSubstr("cannot read the file"));
  EXPECT_THAT(failed("put /a @" + folder.path()), HasSubstr("cannot read the file"));
  EXPECT_THAT(failed("put /var {}"), HasSubstr("/var"));
}

TEST_F(ScriptCommandsTest, WhatAScriptPutsIsNoWriteOfTheBundle) {
  EXPECT_EQ(played("put /a {}\nrm /a\nexpect no writes\nwrites"), "nothing was written\n");
}

TEST_F(ScriptCommandsTest, RmRemovesAFileOrAFolder) {
  played("put /a/b {}\nput /c {}\nrm /a\nrm /c");
  EXPECT_FALSE(application().device().fileExists("/a"));
  EXPECT_FALSE(application().device().fileExists("/c"));
  EXPECT_THAT(failed("rm /c"), HasSubstr("/c"));
}

TEST_F(ScriptCommandsTest, ChmodAndLinkChangeTheDevice) {
  played("put /a {}\nchmod 600 /a\nlink /b a");
  EXPECT_EQ(application().device().attributesOfItem("/a")->mode, 0600U);
  EXPECT_EQ(application().device().destinationOfSymbolicLink("/b"), "a");
  EXPECT_THAT(failed("chmod 644 /absent"), HasSubstr("/absent"));
  EXPECT_THAT(failed("link /a b"), HasSubstr("/a"));
}

TEST_F(ScriptCommandsTest, OpenStartsAnewAndReadsTheFileAnew) {
  played("put " + std::string(productPreferencesPath) +
         " {\"presentFullyExpanded\": true}\nexpect row #presentFullyExpanded value off\nopen\n"
         "expect row #presentFullyExpanded value on");
}

// --- The hand ---

TEST_F(ScriptCommandsTest, TapFindsARowOutOfSightAndByEachOfItsNames) {
  useWholeDevice();
  played(
      "tap #vibration\nback\ntap \"Vibration\"\nexpect title \"Vibration\"\nback\n"
      "expect title \"Zentrova\"");
}

TEST_F(ScriptCommandsTest, ARowIsAddressedByItsPlace) {
  useRows({{{"cell", "PSGroupCell"}},
           {{"cell", "PSSwitchCell"}, {"label", "A"}, {"key", "a"}},
           {{"cell", "PSGroupCell"}},
           {{"cell", "PSSwitchCell"}, {"label", "B"}, {"key", "b"}}});
  played(
      "set 1 0 on\nexpect pref b bool true\nexpect no pref a\nexpect no row 1 1\n"
      "expect no row 2 0");
}

TEST_F(ScriptCommandsTest, ASecondRowOfANameIsAddressedByItsNumber) {
  useRows({{{"cell", "PSSwitchCell"}, {"id", "x"}, {"label", "A"}, {"key", "a"}},
           {{"cell", "PSSwitchCell"}, {"id", "x"}, {"label", "A"}, {"key", "b"}}});
  played(
      "set #x~2 on\nexpect pref b bool true\nexpect no pref a\nset \"A\"~2 off\n"
      "expect pref b bool false\nexpect no row #x~3");
}

TEST_F(ScriptCommandsTest, ARowThatIsNotThereIsToldWithThoseThatAre) {
  EXPECT_THAT(failed("tap #absent"),
              AllOf(HasSubstr("there is no row #absent"), HasSubstr("#respring")));
  EXPECT_THAT(failed("tap \"Absent\"~2"), HasSubstr("there is no row \"Absent\"~2"));
  EXPECT_THAT(failed("tap 99 0"), HasSubstr("there is no row 99 0"));
}

TEST_F(ScriptCommandsTest, OfThousandsOfRowsTheFirstAreTold) {
  json rows = json::array();
  for (int row = 0; row < 2000; ++row) {
    rows.push_back({{"cell", "PSButtonCell"}, {"id", "r" + std::to_string(row)}, {"label", "R"}});
  }
  useRows(rows);
  EXPECT_THAT(failed("tap #absent"),
              AllOf(HasSubstr("there are #r0, #r1, "), HasSubstr("#r49 and 1950 more\n"),
                    Not(HasSubstr("#r50"))));
}

TEST_F(ScriptCommandsTest, SetTakesTheWordsOfASwitch) {
  for (const char* on : {"on", "true", "yes", "1"}) {
    played("set #presentFullyExpanded off\nset #presentFullyExpanded " + std::string(on) +
           "\nexpect pref presentFullyExpanded bool true");
  }
  for (const char* off : {"off", "false", "no", "0"}) {
    played("set #presentFullyExpanded on\nset #presentFullyExpanded " + std::string(off) +
           "\nexpect pref presentFullyExpanded bool false");
  }
  for (const char* wrong : {"maybe", "2", "nil", "[]", "\"\""}) {
    EXPECT_THAT(failed("set #presentFullyExpanded " + std::string(wrong)),
                HasSubstr("expected on or off"))
        << wrong;
  }
}

TEST_F(ScriptCommandsTest, SetTakesTheValueOrTheTitleOfASegment) {
  played(
      "set #presentationStyle 1\nexpect row #presentationStyle value \"Compact\"\n"
      "set #presentationStyle \"Full Screen\"\nexpect pref presentationStyle integer 0");
  EXPECT_THAT(failed("set #presentationStyle 7"), AllOf(HasSubstr("not a choice of the row: 7"),
                                                        HasSubstr("[0,1]"), HasSubstr("Compact")));
}

TEST_F(ScriptCommandsTest, SetChoosesInAListAndComesBack) {
  played(
      "set #moduleMaterial \"thin\"\nexpect title \"Zentrova\"\n"
      "expect pref moduleMaterial string thin");
  EXPECT_THAT(failed("set #moduleMaterial \"wood\""),
              HasSubstr("\"wood\" is not one of its choices"));
}

TEST_F(ScriptCommandsTest, SetChoosesInAListWhoseTitlesAreNumbersOrAlike) {
  useRows({{{"cell", "PSLinkListCell"},
            {"id", "c"},
            {"key", "c"},
            {"label", "C"},
            {"detail", "PSListItemsController"},
            {"validValues", {"a", "b"}},
            {"validTitles", {"Same", "Same"}}}});
  played("set #c \"b\"\nexpect pref c string b");
}

TEST_F(ScriptCommandsTest, SetAndSlideDragASlider) {
  useRows({{{"cell", "PSSliderCell"}, {"id", "s"}, {"key", "s"}, {"max", 10.0}}});
  played(
      "set #s 4\nexpect pref s real 4\nslide #s 7.5\nexpect row #s value 7.5\n"
      "expect pref s real 7.5");
  EXPECT_THAT(failed("set #s far"), HasSubstr("not a number: \"far\""));
}

TEST_F(ScriptCommandsTest, SetAndTypeWriteATextInPlaceOfTheOld) {
  useRows({{{"cell", "PSEditTextCell"}, {"id", "e"}, {"key", "e"}, {"label", "E"}}});
  played(
      "type #e \"one two\"\nexpect pref e string \"one two\"\nset #e three\n"
      "expect pref e string three\nset #e 5\nexpect pref e string 5\ntype #e \"\"\n"
      "expect pref e string \"\"");
}

TEST_F(ScriptCommandsTest, AControlThatARowDoesNotHaveIsTold) {
  EXPECT_THAT(failed("type #enabled \"text\""), HasSubstr("the row #enabled has no text field"));
  EXPECT_THAT(failed("slide #enabled 1"), HasSubstr("the row #enabled has no slider"));
  EXPECT_THAT(failed("set #respring on"), HasSubstr("no control for a value"));
}

TEST_F(ScriptCommandsTest, APressMovesTheClock) {
  played("press #respring 1.5\nexpect spawned /var/jb/usr/bin/killall -9 SpringBoard");
}

TEST_F(ScriptCommandsTest, InsertDeleteAndMoveEditATable) {
  useWholeDevice();
  played(
      "tap #arrangeModules\nexpect row 0 3\ndelete 0 3\nexpect no row 0 3\n"
      "insert 1 0\nexpect row 0 3\nmove 0 3 to 0 1\nexpect row 0 3");
  EXPECT_THAT(failed("insert #respring"), HasSubstr("no insert or delete control"));
  EXPECT_THAT(failed("move #respring to 0 0"), HasSubstr("cannot be moved there"));
}

TEST_F(ScriptCommandsTest, ScrollSetsTheContentOffset) {
  useWholeDevice();
  EXPECT_EQ(printed("scroll 120\ntree")["command"], "tree");
  EXPECT_EQ((*TreeQuery(application().tree()).table().node)["offset"], 120.0);
}

TEST_F(ScriptCommandsTest, BackNeedsAPageBefore) {
  EXPECT_THAT(failed("back\nback"), HasSubstr("no page to go back to"));
}

// --- Time ---

TEST_F(ScriptCommandsTest, AdvanceRunsWhatFallsDue) {
  put("/var/jb/var/mobile/Library/Preferences/com.hollowmere.kestrelleprefs.plist",
      propertyList("<dict><key>useGestures</key><true/></dict>"));
  played("advance 0.09");
  const auto alpha = [this] {
    const TreeQuery query(application().tree());
    const FoundNode found = query.row({RowAddress::By::identifier, "gestureSegmentCell", 1, 0, 0});
    return query.firstOfKind(found, {"cell"}).node->value("alpha", 1.0);
  };
  EXPECT_EQ(alpha(), 1.0);
  EXPECT_EQ(play("advance 0.5").messages, "");
  EXPECT_EQ(alpha(), 0.6);
}

TEST_F(ScriptCommandsTest, BackgroundWorkThatIsNotThereIsTold) {
  played("background all\nbackground 0");
  EXPECT_THAT(failed("background 2"), HasSubstr("only 0 of 2"));
}

// --- By name ---

TEST_F(ScriptCommandsTest, SendSendsAnOperationToEachTarget) {
  EXPECT_EQ(played("send page title"), "Zentrova\n");
  EXPECT_EQ(played("send store objectForKey: absent"), "(null)\n");
  EXPECT_THAT(played("send nav topViewController"), HasSubstr("ZVRRootListController"));
  EXPECT_THAT(played("send outer topViewController"), HasSubstr("PSRootController"));
  EXPECT_THAT(played("send cell #enabled cellEnabled"), HasSubstr("true"));
  EXPECT_THAT(played("send new HBPreferences initWithIdentifier: \"a.b\""),
              HasSubstr("HBPreferences"));
}

TEST_F(ScriptCommandsTest, ARowAsAnArgumentStandsForItsSpecifier) {
  EXPECT_EQ(played("send page readPreferenceValue: #enabled"), "true\n");
  played(
      "send page setPreferenceValue:specifier: 1 #presentationStyle\n"
      "expect row #alwaysPresentFromTop\nexpect pref presentationStyle integer 1");
}

TEST_F(ScriptCommandsTest, WhatCannotBeSentIsTold) {
  EXPECT_THAT(failed("send new Absent init"), HasSubstr("there is no class Absent"));
  EXPECT_THAT(failed("send cell #absent init"), HasSubstr("there is no row #absent"));
  EXPECT_THAT(failed("send page readPreferenceValue: #absent"),
              HasSubstr("there is no row #absent"));
  EXPECT_THAT(failed("send store setFloat:forKey: 1 k"),
              HasSubstr("-[HBPreferences setFloat:forKey:]: unrecognized selector"));
}

TEST_F(ScriptCommandsTest, ValuesOfThePageAreReadAndSetByKey) {
  EXPECT_EQ(played("put-value title \"Other\"\nget title"), "Other\n");
  EXPECT_THAT(played("get preferences.identifier_rl"), HasSubstr("com.hollowmere.zentrovaprefs"));
  EXPECT_THAT(failed("get absent"), HasSubstr("NSUnknownKeyException"));
  EXPECT_THAT(failed("put-value absent 1"), HasSubstr("NSUnknownKeyException"));
}

// --- Reports ---

TEST_F(ScriptCommandsTest, SpawnedPrintsWhatWasStartedSinceTheLastCall) {
  useWholeDevice();
  const std::string output = played("spawned\ntap #respring\nspawned\nspawned");
  EXPECT_EQ(output,
            "nothing was started\n"
            "/var/jb/usr/bin/killall \"killall\" \"-9\" \"SpringBoard\" environment none exit 0\n"
            "nothing was started\n");
  const json entry = printed("tap #respring\nspawned")["result"].back();
  EXPECT_EQ(entry["path"], "/var/jb/usr/bin/killall");
  EXPECT_EQ(entry["arguments"], json({"killall", "-9", "SpringBoard"}));
  EXPECT_EQ(entry["environment"], nullptr);
  EXPECT_EQ(entry["exit"], 0);
}

TEST_F(ScriptCommandsTest, AProgramThatIsNotThereIsToldInTheRecord) {
  EXPECT_THAT(played("tap #respring\nspawned"), HasSubstr("not started: No such file"));
}

TEST_F(ScriptCommandsTest, WritesPrintsEachWriteOnceWithWhetherItChangedAnything) {
  const std::string path(productPreferencesPath);
  EXPECT_EQ(played("set #presentFullyExpanded on\nwrites\nwrites"),
            path + " by ZentrovaPrefs, changed\nnothing was written\n");
  EXPECT_THAT(play("open\nsend store setObject:forKey: true presentFullyExpanded\nwrites").output,
              HasSubstr(path + " by ZentrovaPrefs, the same bytes\n"));
  const json entry = printed("set #presentFullyExpanded off\nwrites")["result"].back();
  EXPECT_EQ(entry["path"], path);
  EXPECT_EQ(entry["writer"], "ZentrovaPrefs");
  EXPECT_EQ(entry["changed"], true);
  EXPECT_GT(entry["size"], 0);
}

TEST_F(ScriptCommandsTest, AWriteThatFailedIsToldWithTheReason) {
  ASSERT_FALSE(application().device().createDirectory(productPreferencesPath));
  EXPECT_THAT(played("set #presentFullyExpanded on\nwrites"),
              AllOf(HasSubstr("by ZentrovaPrefs: "), Not(HasSubstr("changed"))));
}

TEST_F(ScriptCommandsTest, ShowPrintsTheScreenAsText) {
  useRows({{{"cell", "PSGroupCell"}, {"label", "Head"}, {"footerText", "Foot"}},
           {{"cell", "PSSwitchCell"}, {"label", "Switch"}, {"key", "s"}},
           {{"cell", "PSLinkCell"}, {"label", "Link"}, {"detail", "PSListItemsController"}},
           {{"cell", "PSButtonCell"}, {"label", "Off"}, {"enabled", false}}});
  EXPECT_EQ(played("show"),
            "Rows\n\nHead\n  Switch  [off]\n  Link  >\n  Off  (disabled)\n"
            "    Foot\n");
}

TEST_F(ScriptCommandsTest, RowAndTreePrintJson) {
  const json shown = json::parse(played("row #enabled"));
  EXPECT_EQ(shown["kind"], "row");
  EXPECT_EQ(shown["identifier"], "enabled");
  EXPECT_EQ(shown["children"][0]["kind"], "cell");
  EXPECT_EQ(shown["specifier"]["cellType"], "PSSwitchCell");
  EXPECT_EQ(shown["specifier"]["properties"]["key"], "enabled");
  EXPECT_EQ(json::parse(played("tree"))["nodes"].size(), tree()["nodes"].size());
}

TEST_F(ScriptCommandsTest, LogPrintsWhatIsNewInIt) {
  const std::string first = played("log");
  EXPECT_THAT(first, HasSubstr("zentrova id: presentationStyle, value: "));
  EXPECT_EQ(play("log").output, first);  // another script reads from the start
  EXPECT_EQ(play("log\nlog").output, first);
}

TEST_F(ScriptCommandsTest, FilePrintsAPropertyListOfTheDevice) {
  put("/a.plist", propertyList("<dict><key>k</key><data>AAE=</data></dict>"));
  EXPECT_EQ(json::parse(played("file /a.plist")), (json{{"k", {{"data", "AAE="}}}}));
  put("/b.plist", "no list");
  EXPECT_THAT(failed("file /b.plist"), HasSubstr("/b.plist is not a property list: "));
  EXPECT_THAT(failed("file /absent"), HasSubstr("/absent"));
}

TEST_F(ScriptCommandsTest, JsonOutputHasOneObjectALine) {
  const json last = printed("get title");
  EXPECT_EQ(last, (json{{"line", 2}, {"command", "get"}, {"result", "Zentrova"}}));
  ScriptOptions asJson;
  asJson.json = true;
  const Played wrong = play("open\nexpect title \"Other\"", asJson);
  const json failure = json::parse(wrong.output);
  EXPECT_EQ(failure["line"], 2);
  EXPECT_EQ(failure["failure"], "expectation failed");
  EXPECT_EQ(failure["expected"], "title \"Other\"");
  EXPECT_EQ(failure["actual"], "title \"Zentrova\"");
}

TEST_F(ScriptCommandsTest, WithoutAPageCommandsSayThatNothingIsOpen) {
  for (const char* line : {"tap #a",
                           "set #a 1",
                           "type #a \"t\"",
                           "slide #a 1",
                           "press #a 1",
                           "insert #a",
                           "delete #a",
                           "move #a to 0 0",
                           "scroll 1",
                           "back",
                           "pick FF0000",
                           "photo a",
                           "choose \"a\"",
                           "close",
                           "cancel",
                           "advance 1",
                           "background all",
                           "send page title",
                           "get title",
                           "put-value title 1",
                           "show",
                           "tree",
                           "row #a",
                           "expect title \"a\"",
                           "expect row #a",
                           "expect no row #a",
                           "expect footer #a \"b\"",
                           "expect opacity outer 1"}) {
    const Played result = play(line);
    EXPECT_EQ(result.status, ScriptStatus::failed) << line;
    EXPECT_THAT(result.messages, HasSubstr("nothing is open")) << line;
  }
}

TEST_F(ScriptCommandsTest, AFailureEndsTheScript) {
  EXPECT_THAT(play("open\ntap #absent\nset #presentFullyExpanded on").messages,
              AllOf(HasSubstr("line 2"), Not(HasSubstr("line 3"))));
  EXPECT_EQ(application().filePane()["state"], "missing");
}

}  // namespace
}  // namespace settings::test

// Invalid lines of a script. Each is refused with its number, what is wrong and what is expected,
// before anything is played.

#include <gmock/gmock.h>

#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {
namespace {

using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;

struct BadLine {
  const char* line;
  const char* problem;
  const char* allowed;
};

void PrintTo(const BadLine& bad, std::ostream* out) {
  *out << bad.line;
}

class BadScriptLine : public testing::TestWithParam<BadLine> {};

TEST_P(BadScriptLine, IsRefusedBeforeAnythingIsPlayed) {
  const TemporaryFolder folder;
  ApplicationOptions options;
  options.deviceRoot = folder.path();
  const auto made = Application::create(options);
  std::istringstream script("open\n\n" + std::string(GetParam().line) + "\n");
  std::ostringstream output;
  std::ostringstream messages;
  EXPECT_EQ(ScriptRunner(*made.application, output, messages, {}).run(script),
            ScriptStatus::badLine);
  EXPECT_THAT(messages.str(), AllOf(HasSubstr("script, line 3: "), HasSubstr(GetParam().problem),
                                    HasSubstr(GetParam().allowed), HasSubstr(GetParam().line)));
  EXPECT_EQ(output.str(), "");
  EXPECT_FALSE(made.application->isOpen());
}

INSTANTIATE_TEST_SUITE_P(
    Commands, BadScriptLine,
    testing::Values(
        BadLine{"fly", "unknown command: \"fly\"", "expected trait, put, rm"},
        BadLine{"Open", "unknown command: \"Open\"", "open, tap"},
        BadLine{"open now", "unexpected text at the end of the line: \"now\"", "usage: open"},
        BadLine{"trait", "NAME is missing", "trait NAME VALUE"},
        BadLine{"trait idiom", "VALUE is missing", "trait NAME VALUE"},
        BadLine{"trait idiom watch", "invalid value for the trait idiom: \"watch\"",
                "phone or pad"},
        BadLine{"trait colour red", "unknown trait: \"colour\"",
                "idiom, system, screen, appearance"},
        BadLine{"trait screen 390", "screen: \"390\"", "390x844@3"},
        BadLine{"trait screen 390x9e9@3", "invalid value", "390x844@3"},
        BadLine{"trait system fifteen", "invalid value", "15.4"},
        BadLine{"trait tint red", "invalid value", "FF0000FF"},
        BadLine{"trait text huge", "invalid value", "0.5 to 4"},
        BadLine{"trait neighbour", "CLASS is missing", "trait NAME VALUE"},
        BadLine{"trait neighbour CCSModuleRepository", "expected on or off after CLASS", "trait"},
        BadLine{"put", "PATH is missing", "put PATH JSON|@FILE"},
        BadLine{"put here {}", "not a device path: \"here\"", "starts with \"/\""},
        BadLine{"put here @file", "not a device path: \"here\"", "starts with \"/\""},
        BadLine{"put /a", "JSON or @FILE is missing", "put PATH"},
        BadLine{"put /a text", "\"text\" is not JSON", "JSON in double quotes, or @FILE"},
        BadLine{"put /a {\"k\": null}", "cannot be a property list", "put PATH"},
        BadLine{"rm", "PATH is missing", "rm PATH"},
        BadLine{"rm a", "not a device path: \"a\"", "rm PATH"},
        BadLine{"chmod", "MODE is missing", "chmod MODE PATH"},
        BadLine{"chmod 888 /a", "not a mode: \"888\"", "octal"},
        BadLine{"chmod 17777 /a", "not a mode", "such as 644 or 000"},
        BadLine{"chmod 644", "PATH is missing", "chmod MODE PATH"},
        BadLine{"link /a", "TARGET is missing", "link PATH TARGET"}));

INSTANTIATE_TEST_SUITE_P(
    Hands, BadScriptLine,
    testing::Values(
        BadLine{"tap", "ROW is missing", "expected #identifier, a label in quotes"},
        BadLine{"tap enabled", "not a row: \"enabled\"", "SECTION ROW as two numbers"},
        BadLine{"tap \"Enabled", "missing closing quote", "tap ROW"},
        BadLine{"tap 1", "ROW is missing", "tap ROW"},
        BadLine{"tap 1 x", "is not a whole number: \"x\"", "0 or more"},
        BadLine{"tap 1 -1", "is not a whole number: \"-1\"", "0 or more"},
        BadLine{"tap #a~0", "after \"~\" must be 1 or more", "tap ROW"},
        BadLine{"tap #a~b", "is not a whole number: \"b\"", "tap ROW"},
        BadLine{"tap #a #b", "unexpected text at the end of the line: \"#b\"", "tap ROW"},
        BadLine{"press #a", "SECONDS is missing", "press ROW SECONDS"},
        BadLine{"press #a long", "SECONDS is not a number: \"long\"", "such as 0.5"},
        BadLine{"press #a -1", "time cannot go back", "0 or more"},
        BadLine{"insert", "ROW is missing", "insert ROW"},
        BadLine{"delete", "ROW is missing", "delete ROW"},
        BadLine{"move #a 1 2", "expected \"to SECTION INDEX\" after ROW",
                "move ROW to SECTION INDEX"},
        BadLine{"move #a to 1", "INDEX is missing", "move ROW to SECTION INDEX"},
        BadLine{"scroll", "Y is missing", "scroll Y"},
        BadLine{"scroll nan", "is not a number: \"nan\"", "scroll Y"},
        BadLine{"scroll 1e999", "is not a number", "scroll Y"},
        BadLine{"back home", "unexpected text at the end of the line: \"home\"", "back"},
        BadLine{"set #a", "VALUE is missing", "set ROW VALUE"},
        BadLine{"set #a {\"k\":}", "is not JSON", "set ROW VALUE"},
        BadLine{"type #a", "\"text\" is missing (expected a text in double quotes)", "type ROW"},
        BadLine{"type #a bare", "a text in double quotes", "type ROW"},
        BadLine{"slide #a far", "is not a number: \"far\"", "slide ROW N"},
        BadLine{"pick", "COLOUR is missing", "pick COLOUR"},
        BadLine{"pick red", "not a COLOUR: \"red\"", "RRGGBB or RRGGBBAA"},
        BadLine{"pick FF00", "not a COLOUR: \"FF00\"", "such as FF0000"},
        BadLine{"pick FF00GG", "not a COLOUR", "pick COLOUR"},
        BadLine{"photo", "FILE is missing", "photo FILE"},
        BadLine{"choose", "\"label\" is missing", "choose \"label\""},
        BadLine{"close it", "unexpected text at the end of the line: \"it\"", "close"},
        BadLine{"cancel it", "unexpected text at the end of the line: \"it\"", "cancel"}));

INSTANTIATE_TEST_SUITE_P(
    Eyes, BadScriptLine,
    testing::Values(
        BadLine{"advance", "SECONDS is missing", "advance SECONDS"},
        BadLine{"advance -1", "time cannot go back", "0 or more"},
        BadLine{"background", "N is missing", "background N|all"},
        BadLine{"background some", "is not a whole number: \"some\"", "background N|all"},
        BadLine{"send", "not a TARGET: nothing", "page, cell ROW, store, nav, outer or new CLASS"},
        BadLine{"send window init", "not a TARGET: \"window\"", "send TARGET SELECTOR ARG..."},
        BadLine{"send page", "SELECTOR is missing", "send TARGET SELECTOR ARG..."},
        BadLine{"send new", "CLASS is missing", "send TARGET"},
        BadLine{"send cell", "ROW is missing", "send TARGET"},
        BadLine{"get", "KEYPATH is missing", "get KEYPATH"},
        BadLine{"put-value", "KEYPATH is missing", "put-value KEYPATH VALUE"},
        BadLine{"put-value a", "VALUE is missing", "put-value KEYPATH VALUE"},
        BadLine{"row", "ROW is missing", "row ROW"},
        BadLine{"file", "PATH is missing", "file PATH"},
        BadLine{"file a", "not a device path: \"a\"", "file PATH"},
        BadLine{"show me", "unexpected text at the end of the line: \"me\"", "show"},
        BadLine{"tree all", "unexpected text at the end of the line: \"all\"", "tree"},
        BadLine{"log all", "unexpected text at the end of the line: \"all\"", "log"},
        BadLine{"writes all", "unexpected text at the end of the line: \"all\"", "writes"},
        BadLine{"spawned all", "unexpected text at the end of the line: \"all\"", "spawned"}));

INSTANTIATE_TEST_SUITE_P(
    Expectations, BadScriptLine,
    testing::Values(
        BadLine{"expect", "unknown expectation: nothing", "expected title"},
        BadLine{"expect miracle", "unknown expectation: \"miracle\"", "title, rows, row, no, pref"},
        BadLine{"expect no", "unknown expectation: nothing", "expected row, pref, log, writes"},
        BadLine{"expect no title", "unknown expectation: \"title\"", "row, pref, log, writes"},
        BadLine{"expect no log", "\"text\" is missing", "expect no log \"text\""},
        BadLine{"expect title", "\"T\" is missing", "expect title \"T\""},
        BadLine{"expect title Zentrova", "a text in double quotes", "expect title \"T\""},
        BadLine{"expect row", "ROW is missing", "expect row ROW [value V]"},
        BadLine{"expect row #a value", "V is missing", "expect row ROW [value V]"},
        BadLine{"expect row #a is 1", "unexpected text at the end of the line: \"is 1\"",
                "expect row ROW [value V]"},
        BadLine{"expect no row", "ROW is missing", "expect no row ROW"},
        BadLine{"expect no pref", "KEY is missing", "expect no pref KEY"},
        BadLine{"expect no writes yet", "unexpected text at the end of the line: \"yet\"",
                "expect no writes"},
        BadLine{"expect pref", "KEY is missing", "expect pref KEY TYPE VALUE"},
        BadLine{"expect pref k", "TYPE is missing", "expect pref KEY TYPE VALUE"},
        BadLine{"expect pref k int 1", "not a TYPE: \"int\"", "integer, real, bool, string, data"},
        BadLine{"expect pref k integer many", "not a VALUE of the type integer: \"many\"",
                "KEY TYPE"},
        BadLine{"expect pref k integer 1.5", "not a VALUE of the type integer: 1.5", "KEY TYPE"},
        BadLine{"expect pref k real [1]", "not a VALUE of the type real: [1]", "KEY TYPE"},
        BadLine{"expect pref k bool maybe", "not a VALUE of the type bool: \"maybe\"", "KEY TYPE"},
        BadLine{"expect pref k data 1", "not a VALUE of the type data: 1", "KEY TYPE"},
        BadLine{"expect pref k array 1", "not a VALUE of the type array: 1", "KEY TYPE"},
        BadLine{"expect pref k dict []", "not a VALUE of the type dict: []", "KEY TYPE"},
        BadLine{"expect pref k bool", "VALUE is missing", "expect pref KEY TYPE VALUE"},
        BadLine{"expect footer #a", "\"text\" is missing", "expect footer ROW \"text\""},
        BadLine{"expect opacity", "expected outer N or inner N after \"opacity\"", "opacity"},
        BadLine{"expect opacity outer", "N is missing", "expect opacity outer|inner N"},
        BadLine{"expect log", "\"text\" is missing", "expect log \"text\""},
        BadLine{"expect spawned", "PATH is missing", "expect spawned PATH ARG..."},
        BadLine{"expect spawned sbreload", "not a device path: \"sbreload\"",
                "expect spawned PATH ARG..."},
        BadLine{"expect exception", "NAME is missing", "expect exception NAME"}));

class ScriptLineTest : public ApplicationTest {};

TEST_F(ScriptLineTest, EveryBadLineIsTold) {
  const Played played = play("fly\nopen\ntap\n");
  EXPECT_THAT(played.messages, AllOf(HasSubstr("line 1: "), HasSubstr("line 3: ")));
}

TEST_F(ScriptLineTest, JsonThatWouldExhaustTheStackIsRefused) {
  const std::string deep = std::string(1'000'000, '[') + std::string(1'000'000, ']');
  for (const char* command : {"put /a ", "put-value k ", "expect pref k array ", "send page a "}) {
    const Played played = play(command + deep);
    EXPECT_EQ(played.status, ScriptStatus::badLine) << command;
    EXPECT_THAT(played.messages, HasSubstr("is nested more than 512 levels deep")) << command;
  }
}

TEST_F(ScriptLineTest, ALongLineIsToldWithoutItsMiddle) {
  const Played played =
      play("fly " + std::string(3'000'000, 'x') + "\nadvance " + std::string(1'000'000, 'y'));
  EXPECT_LT(played.messages.size(), 20'000U);
  EXPECT_THAT(played.messages, AllOf(HasSubstr("unknown command: \"fly\""), HasSubstr("  fly xxx"),
                                     HasSubstr("yyy\" (expected a number such as 0.5)"),
                                     HasSubstr("bytes omitted]")));
}

TEST_F(ScriptLineTest, ALongLineThatIsNoUtf8IsCutAsWell) {
  EXPECT_LT(play(std::string(3'000'000, '\x80')).messages.size(), 20'000U);
}

TEST_F(ScriptLineTest, ALongLineIsCutBetweenCharacters) {
  for (const char* start : {"", "a", "ab", "abc"}) {
    std::string text = start;
    for (int i = 0; i < 5000; ++i) text += "🎛";
    const std::string told = play("open\nexpect title \"" + text + "\"").messages;
    EXPECT_THAT(told, HasSubstr("bytes omitted]"));
    EXPECT_FALSE(json(told).dump(-1, ' ', false, json::error_handler_t::strict).empty());
  }
}

TEST_F(ScriptLineTest, BlankLinesAndCommentsArePassedOver) {
  const Played played =
      play("# nothing\n\n   \t\nopen # the page\r\n#\nexpect title \"Zentrova\"  # its title");
  EXPECT_EQ(played.messages, "");
  EXPECT_EQ(played.status, ScriptStatus::done);
}

TEST_F(ScriptLineTest, AnIdentifierAndAQuotedSignAreNoComments) {
  useRows({{{"cell", "PSButtonCell"}, {"id", "a"}, {"label", "A # B"}}});
  EXPECT_EQ(play("open\nexpect row #a\nexpect row \"A # B\"").messages, "");
}

TEST_F(ScriptLineTest, TextsInQuotesHaveEscapes) {
  useRows({{{"cell", "PSButtonCell"}, {"label", "say \"hi\" \\ \t\n"}}});
  EXPECT_EQ(play("open\nexpect row \"say \\\"hi\\\" \\\\ \\t\\n\"").messages, "");
}

TEST_F(ScriptLineTest, ALabelOfAnyLanguageIsFound) {
  useRows({{{"cell", "PSButtonCell"}, {"label", "Größe 設定 🎛"}}});
  EXPECT_EQ(play("open\nexpect row \"Größe 設定 🎛\"").messages, "");
}

TEST_F(ScriptLineTest, AnEmptyScriptIsDone) {
  const Played played = play("");
  EXPECT_EQ(played.status, ScriptStatus::done);
  EXPECT_EQ(played.output + played.messages, "");
}

TEST_F(ScriptLineTest, HelpNamesEveryCommandWithItsUsage) {
  std::string usages;
  for (const ScriptCommandHelp& command : ScriptRunner::help()) {
    EXPECT_NE(command.text, "") << command.usage;
    usages += command.usage + "\n";
  }
  for (const char* usage : {"trait NAME VALUE",
                            "put PATH JSON|@FILE",
                            "rm PATH",
                            "chmod MODE PATH",
                            "link PATH TARGET",
                            "open",
                            "tap ROW",
                            "set ROW VALUE",
                            "type ROW \"text\"",
                            "slide ROW N",
                            "press ROW SECONDS",
                            "insert ROW",
                            "delete ROW",
                            "move ROW to SECTION INDEX",
                            "scroll Y",
                            "pick COLOUR",
                            "photo FILE",
                            "choose \"label\"",
                            "close",
                            "cancel",
                            "back",
                            "advance SECONDS",
                            "background N|all",
                            "send TARGET SELECTOR ARG...",
                            "get KEYPATH",
                            "put-value KEYPATH VALUE",
                            "spawned",
                            "writes",
                            "show",
                            "tree",
                            "row ROW",
                            "log",
                            "file PATH",
                            "expect title \"T\"",
                            "expect row ROW [value V]",
                            "expect no row ROW",
                            "expect pref KEY TYPE VALUE",
                            "expect no pref KEY",
                            "expect footer ROW \"text\"",
                            "expect opacity outer|inner N",
                            "expect log \"text\"",
                            "expect no log \"text\"",
                            "expect spawned PATH ARG...",
                            "expect exception NAME",
                            "expect no writes"}) {
    EXPECT_THAT(usages, HasSubstr(std::string(usage) + "\n"));
  }
}

}  // namespace
}  // namespace settings::test

// Lines of a script that cannot be understood: each is refused with its number, what is wrong and
// what is allowed, before anything is played.

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
        BadLine{"fly", "\"fly\" is no command", "allowed are trait, put, rm"},
        BadLine{"Open", "\"Open\" is no command", "open, tap"},
        BadLine{"open now", "\"now\" is left over", "the command is: open"},
        BadLine{"trait", "NAME is missing", "trait NAME VALUE"},
        BadLine{"trait idiom", "VALUE is missing", "trait NAME VALUE"},
        BadLine{"trait idiom watch", "\"watch\" is no value of the trait idiom", "phone or pad"},
        BadLine{"trait colour red", "no trait \"colour\"", "idiom, system, screen, appearance"},
        BadLine{"trait screen 390", "\"390\" is no value", "390x844@3"},
        BadLine{"trait screen 390x9e9@3", "is no value", "390x844@3"},
        BadLine{"trait system fifteen", "is no value", "15.4"},
        BadLine{"trait tint red", "is no value", "FF0000FF"},
        BadLine{"trait text huge", "is no value", "0.5 to 4"},
        BadLine{"trait neighbour", "CLASS is missing", "trait NAME VALUE"},
        BadLine{"trait neighbour CCSModuleRepository", "what follows CLASS is on or off", "trait"},
        BadLine{"put", "PATH is missing", "put PATH JSON|@FILE"},
        BadLine{"put here {}", "\"here\" is no path of the device", "one starts with \"/\""},
        BadLine{"put here @file", "\"here\" is no path of the device", "one starts with \"/\""},
        BadLine{"put /a", "JSON or @FILE is missing", "put PATH"},
        BadLine{"put /a text", "\"text\" is no JSON", "a text of it in double quotes, or @FILE"},
        BadLine{"put /a {\"k\": null}", "cannot be a property list", "put PATH"},
        BadLine{"rm", "PATH is missing", "rm PATH"},
        BadLine{"rm a", "no path of the device", "rm PATH"},
        BadLine{"chmod", "MODE is missing", "chmod MODE PATH"},
        BadLine{"chmod 888 /a", "\"888\" is no mode", "octal"},
        BadLine{"chmod 17777 /a", "is no mode", "as 644 or 000"},
        BadLine{"chmod 644", "PATH is missing", "chmod MODE PATH"},
        BadLine{"link /a", "TARGET is missing", "link PATH TARGET"}));

INSTANTIATE_TEST_SUITE_P(
    Hands, BadScriptLine,
    testing::Values(BadLine{"tap", "ROW is missing", "a row is #identifier, a label in quotes"},
                    BadLine{"tap enabled", "\"enabled\" is no row", "SECTION ROW as two numbers"},
                    BadLine{"tap \"Enabled", "has no end", "tap ROW"},
                    BadLine{"tap 1", "ROW is missing", "tap ROW"},
                    BadLine{"tap 1 x", "\"x\" is no whole number", "from 0"},
                    BadLine{"tap 1 -1", "\"-1\" is no whole number", "from 0"},
                    BadLine{"tap #a~0", "the first row of a name is ~1", "tap ROW"},
                    BadLine{"tap #a~b", "\"b\" is no whole number", "tap ROW"},
                    BadLine{"tap #a #b", "\"#b\" is left over", "tap ROW"},
                    BadLine{"press #a", "SECONDS is missing", "press ROW SECONDS"},
                    BadLine{"press #a long", "\"long\" is no number", "as 0.5"},
                    BadLine{"press #a -1", "time does not go back", "0 or more"},
                    BadLine{"insert", "ROW is missing", "insert ROW"},
                    BadLine{"delete", "ROW is missing", "delete ROW"},
                    BadLine{"move #a 1 2", "what follows ROW is: to SECTION INDEX",
                            "move ROW to SECTION INDEX"},
                    BadLine{"move #a to 1", "INDEX is missing", "move ROW to SECTION INDEX"},
                    BadLine{"scroll", "Y is missing", "scroll Y"},
                    BadLine{"scroll nan", "\"nan\" is no number", "scroll Y"},
                    BadLine{"scroll 1e999", "is no number", "scroll Y"},
                    BadLine{"back home", "\"home\" is left over", "back"},
                    BadLine{"set #a", "VALUE is missing", "set ROW VALUE"},
                    BadLine{"set #a {\"k\":}", "is no JSON", "set ROW VALUE"},
                    BadLine{"type #a", "\"text\" is missing: a text in double quotes", "type ROW"},
                    BadLine{"type #a bare", "a text in double quotes", "type ROW"},
                    BadLine{"slide #a far", "\"far\" is no number", "slide ROW N"},
                    BadLine{"pick", "COLOUR is missing", "pick COLOUR"},
                    BadLine{"pick red", "\"red\" is no COLOUR", "RRGGBB or RRGGBBAA"},
                    BadLine{"pick FF00", "\"FF00\" is no COLOUR", "as FF0000"},
                    BadLine{"pick FF00GG", "is no COLOUR", "pick COLOUR"},
                    BadLine{"photo", "FILE is missing", "photo FILE"},
                    BadLine{"choose", "\"label\" is missing", "choose \"label\""},
                    BadLine{"close it", "\"it\" is left over", "close"},
                    BadLine{"cancel it", "\"it\" is left over", "cancel"}));

INSTANTIATE_TEST_SUITE_P(
    Eyes, BadScriptLine,
    testing::Values(
        BadLine{"advance", "SECONDS is missing", "advance SECONDS"},
        BadLine{"advance -1", "time does not go back", "0 or more"},
        BadLine{"background", "N, or all, is missing", "background N|all"},
        BadLine{"background some", "\"some\" is no whole number", "background N|all"},
        BadLine{"send", "nothing is no TARGET", "page, cell ROW, store, nav, outer or new CLASS"},
        BadLine{"send window init", "\"window\" is no TARGET", "send TARGET SELECTOR ARG..."},
        BadLine{"send page", "SELECTOR is missing", "send TARGET SELECTOR ARG..."},
        BadLine{"send new", "CLASS is missing", "send TARGET"},
        BadLine{"send cell", "ROW is missing", "send TARGET"},
        BadLine{"get", "KEYPATH is missing", "get KEYPATH"},
        BadLine{"put-value", "KEYPATH is missing", "put-value KEYPATH VALUE"},
        BadLine{"put-value a", "VALUE is missing", "put-value KEYPATH VALUE"},
        BadLine{"row", "ROW is missing", "row ROW"},
        BadLine{"file", "PATH is missing", "file PATH"},
        BadLine{"file a", "no path of the device", "file PATH"},
        BadLine{"show me", "\"me\" is left over", "show"},
        BadLine{"tree all", "\"all\" is left over", "tree"},
        BadLine{"log all", "\"all\" is left over", "log"},
        BadLine{"writes all", "\"all\" is left over", "writes"},
        BadLine{"spawned all", "\"all\" is left over", "spawned"}));

INSTANTIATE_TEST_SUITE_P(
    Expectations, BadScriptLine,
    testing::Values(
        BadLine{"expect", "nothing is nothing to expect", "allowed are title"},
        BadLine{"expect miracle", "\"miracle\" is nothing to expect", "title, rows, row, no, pref"},
        BadLine{"expect no", "nothing is nothing to expect", "allowed are row, pref, log, writes"},
        BadLine{"expect no title", "\"title\" is nothing to expect", "row, pref, log, writes"},
        BadLine{"expect no log", "\"text\" is missing", "expect no log \"text\""},
        BadLine{"expect title", "\"T\" is missing", "expect title \"T\""},
        BadLine{"expect title Zentrova", "a text in double quotes", "expect title \"T\""},
        BadLine{"expect row", "ROW is missing", "expect row ROW [value V]"},
        BadLine{"expect row #a value", "V is missing", "expect row ROW [value V]"},
        BadLine{"expect row #a is 1", "\"is 1\" is left over", "expect row ROW [value V]"},
        BadLine{"expect no row", "ROW is missing", "expect no row ROW"},
        BadLine{"expect no pref", "KEY is missing", "expect no pref KEY"},
        BadLine{"expect no writes yet", "\"yet\" is left over", "expect no writes"},
        BadLine{"expect pref", "KEY is missing", "expect pref KEY TYPE VALUE"},
        BadLine{"expect pref k", "TYPE is missing", "expect pref KEY TYPE VALUE"},
        BadLine{"expect pref k int 1", "\"int\" is no TYPE", "integer, real, bool, string, data"},
        BadLine{"expect pref k integer many", "\"many\" is no VALUE of the type integer",
                "KEY TYPE"},
        BadLine{"expect pref k integer 1.5", "1.5 is no VALUE of the type integer", "KEY TYPE"},
        BadLine{"expect pref k real [1]", "[1] is no VALUE of the type real", "KEY TYPE"},
        BadLine{"expect pref k bool maybe", "\"maybe\" is no VALUE of the type bool", "KEY TYPE"},
        BadLine{"expect pref k data 1", "1 is no VALUE of the type data", "KEY TYPE"},
        BadLine{"expect pref k array 1", "1 is no VALUE of the type array", "KEY TYPE"},
        BadLine{"expect pref k dict []", "[] is no VALUE of the type dict", "KEY TYPE"},
        BadLine{"expect pref k bool", "VALUE is missing", "expect pref KEY TYPE VALUE"},
        BadLine{"expect footer #a", "\"text\" is missing", "expect footer ROW \"text\""},
        BadLine{"expect opacity", "what follows \"opacity\" is outer N or inner N", "opacity"},
        BadLine{"expect opacity outer", "N is missing", "expect opacity outer|inner N"},
        BadLine{"expect log", "\"text\" is missing", "expect log \"text\""},
        BadLine{"expect spawned", "PATH is missing", "expect spawned PATH ARG..."},
        BadLine{"expect spawned sbreload", "no path of the device", "expect spawned PATH ARG..."},
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
    EXPECT_THAT(played.messages, HasSubstr("nests more than 512 deep")) << command;
  }
}

TEST_F(ScriptLineTest, ALongLineIsToldWithoutItsMiddle) {
  const Played played =
      play("fly " + std::string(3'000'000, 'x') + "\nadvance " + std::string(1'000'000, 'y'));
  EXPECT_LT(played.messages.size(), 20'000U);
  EXPECT_THAT(played.messages, AllOf(HasSubstr("\"fly\" is no command"), HasSubstr("  fly xxx"),
                                     HasSubstr("yyy\" is no number; SECONDS is one"),
                                     HasSubstr("bytes are left out]")));
}

TEST_F(ScriptLineTest, ALongLineThatIsNoUtf8IsCutAsWell) {
  EXPECT_LT(play(std::string(3'000'000, '\x80')).messages.size(), 20'000U);
}

TEST_F(ScriptLineTest, ALongLineIsCutBetweenCharacters) {
  for (const char* start : {"", "a", "ab", "abc"}) {
    std::string text = start;
    for (int i = 0; i < 5000; ++i) text += "🎛";
    const std::string told = play("open\nexpect title \"" + text + "\"").messages;
    EXPECT_THAT(told, HasSubstr("bytes are left out]"));
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

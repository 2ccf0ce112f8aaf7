#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/propertylist/PropertyListBinary.h"
#include "platform/preferences/PSSpecifierFile.h"
#include "platform/uikit/images/UIImage.h"
#include "tests/platform/preferences/PreferencesTest.h"

namespace preferences_test {

using namespace platform;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class PSSpecifierFileTest : public PreferencesTest {
 protected:
  PSSpecifierFile read(const std::string& text) {
    writeList("Main", text);
    return readSpecifierFile("Main", bundle, target);
  }
  // The row of a list with only this item.
  std::shared_ptr<PSSpecifier> only(const std::string& item) {
    const auto file = read(listOf({item}));
    EXPECT_EQ(file.problem, std::nullopt);
    EXPECT_EQ(file.specifiers.size(), 1U);
    return file.specifiers.empty() ? nullptr : file.specifiers.front();
  }
  std::string problemOf(const std::string& item) {
    const auto specifier = only(item);
    return specifier ? specifier->problem().value_or("no problem") : "no row";
  }

  std::shared_ptr<TestPage> target = make<TestPage>();
};

TEST_F(PSSpecifierFileTest, RowIsWhatItsItemSays) {
  const auto specifier =
      only(row("PSSwitchCell", "Reverse",
               textEntry("id", "reverse") + textEntry("key", "reverseKey") +
                   textEntry("defaults", "com.hollowmere.zentrovaprefs") +
                   textEntry("get", "fixedValue:") + textEntry("set", "keepFixed:specifier:") +
                   textEntry("action", "restart") + "<key>default</key><true/>"));
  EXPECT_EQ(specifier->problem(), std::nullopt);
  EXPECT_EQ(specifier->name(), "Reverse");
  EXPECT_EQ(specifier->cellType(), PSSwitchCell);
  EXPECT_EQ(specifier->identifier(), "reverse");
  EXPECT_EQ(specifier->target(), target);
  EXPECT_EQ(specifier->getter(), "fixedValue:");
  EXPECT_EQ(specifier->setter(), "keepFixed:specifier:");
  EXPECT_EQ(specifier->buttonAction(), "restart");
  EXPECT_EQ(specifier->propertyForKey("key"), Value("reverseKey"));
  EXPECT_EQ(specifier->propertyForKey("default"), Value(true));
  EXPECT_EQ(specifier->propertyForKey("label"), Value("Reverse"));
  EXPECT_EQ(specifier->origin(), "Main.plist, row 1 (\"Reverse\")");
}

TEST_F(PSSpecifierFileTest, GetterAndSetterAreThePlatformsWhereTheyAreNotGiven) {
  const auto specifier = only(row("PSSwitchCell", "A"));
  EXPECT_EQ(specifier->getter(), "readPreferenceValue:");
  EXPECT_EQ(specifier->setter(), "setPreferenceValue:specifier:");
  EXPECT_EQ(specifier->buttonAction(), std::nullopt);
}

TEST_F(PSSpecifierFileTest, TitleIsTheLists) {
  EXPECT_EQ(read(listOf({}, textEntry("title", "Zentrova"))).title, "Zentrova");
  EXPECT_EQ(read(listOf({})).title, std::nullopt);
}

TEST_F(PSSpecifierFileTest, TitleOfAnotherTypeIsARowThatSaysSo) {
  const auto file =
      read(listOf({row("PSButtonCell", "A")}, "<key>title</key><integer>3</integer>"));
  ASSERT_EQ(file.specifiers.size(), 2U);
  EXPECT_EQ(file.specifiers[0]->problem(), "Main.plist: \"title\" must be a string, not a number");
  EXPECT_EQ(file.specifiers[1]->problem(), std::nullopt);
}

TEST_F(PSSpecifierFileTest, MissingListIsAProblemOfThePage) {
  const auto file = readSpecifierFile("Nowhere", bundle, target);
  EXPECT_TRUE(file.specifiers.empty());
  ASSERT_TRUE(file.problem);
  EXPECT_THAT(*file.problem, StartsWith("Nowhere.plist cannot be loaded: "));
}

TEST_F(PSSpecifierFileTest, ListWithoutNameOrBundleIsAProblemOfThePage) {
  EXPECT_THAT(readSpecifierFile({}, bundle, target).problem.value_or(""), HasSubstr("no name"));
  EXPECT_THAT(readSpecifierFile("Main", {}, target).problem.value_or(""), HasSubstr("no bundle"));
}

TEST_F(PSSpecifierFileTest, DamagedListIsAProblemOfThePage) {
  for (const std::string text :
       {"", "garbage", "<plist version=\"1.0\"><dict><key>items</key><array>",
        "<plist version=\"1.0\"><array/></plist>"}) {
    const auto file = read(text);
    EXPECT_TRUE(file.specifiers.empty()) << text;
    EXPECT_THAT(file.problem.value_or(""), StartsWith("Main.plist cannot be loaded: ")) << text;
  }
}

TEST_F(PSSpecifierFileTest, ItemsThatAreNoListAreAProblemOfThePage) {
  EXPECT_EQ(read("<plist version=\"1.0\"><dict/></plist>").problem,
            "Main.plist: \"items\" is missing (expected an array)");
  EXPECT_EQ(read("<plist version=\"1.0\"><dict><key>items</key><true/></dict></plist>").problem,
            "Main.plist: \"items\" must be an array, not a boolean");
}

TEST_F(PSSpecifierFileTest, ItemThatIsNoDictionaryIsARowThatSaysSo) {
  const auto file = read(
      "<plist version=\"1.0\"><dict><key>items</key><array><string>row</string>"
      "<dict><key>cell</key><string>PSButtonCell</string></dict></array></dict></plist>");
  ASSERT_EQ(file.specifiers.size(), 2U);
  EXPECT_EQ(file.specifiers[0]->problem(), "Main.plist, row 1: must be a dictionary, not a string");
  EXPECT_EQ(file.specifiers[0]->cellType(), PSStaticTextCell);
  EXPECT_FALSE(file.specifiers[0]->isEnabled());
  EXPECT_EQ(file.specifiers[1]->problem(), std::nullopt);
}

TEST_F(PSSpecifierFileTest, UnknownOrMissingCellIsARowThatSaysSo) {
  EXPECT_THAT(problemOf(row("PSSwichCell", "Reverse")),
              AllOf(StartsWith("Main.plist, row 1 (\"Reverse\"): unknown cell \"PSSwichCell\""),
                    HasSubstr("PSSwitchCell")));
  EXPECT_THAT(problemOf(textEntry("label", "A")), HasSubstr("\"cell\" is missing"));
}

TEST_F(PSSpecifierFileTest, RowWithAProblemKeepsNameAndIdentifier) {
  const auto specifier =
      only(row("PSSwichCell", "Reverse", textEntry("id", "reverse") + textEntry("key", "k")));
  EXPECT_EQ(specifier->name(), "Reverse");
  EXPECT_EQ(specifier->identifier(), "reverse");
  EXPECT_EQ(specifier->propertyForKey("key"), Value("k"));
}

TEST_F(PSSpecifierFileTest, GroupWithAProblemStillStartsItsSection) {
  const auto file = read(listOf(
      {row("PSGroupCell", "Look", textEntry("id", "look") + "<key>footerText</key><true/>")}));
  ASSERT_EQ(file.specifiers.size(), 2U);
  EXPECT_EQ(file.specifiers[0]->cellType(), PSGroupCell);
  EXPECT_EQ(file.specifiers[0]->identifier(), "look");
  EXPECT_THAT(file.specifiers[1]->problem().value_or(""),
              HasSubstr("\"footerText\" must be a string, not a boolean"));
}

// Each key with a value of the wrong type.
TEST_F(PSSpecifierFileTest, ValueOfAnotherTypeIsARowThatSaysWhich) {
  const std::string number = "<integer>1</integer>";
  const std::string text = "<string>1</string>";
  for (const std::string key :
       {"label", "title", "id", "key", "defaults", "action", "get", "set", "detail", "cellClass",
        "icon", "footerText", "keyboard", "placeholder", "PostNotification"}) {
    EXPECT_THAT(problemOf(textEntry("cell", "PSButtonCell") + "<key>" + key + "</key>" + number),
                HasSubstr("\"" + key + "\" must be a string, not a number"));
  }
  for (const std::string key : {"min", "max", "height", "segmentCount"}) {
    EXPECT_THAT(problemOf(row("PSButtonCell", "A", "<key>" + key + "</key>" + text)),
                HasSubstr("\"" + key + "\" must be a number, not a string"));
    EXPECT_THAT(problemOf(row("PSButtonCell", "A", "<key>" + key + "</key><true/>")),
                HasSubstr("\"" + key + "\" must be a number, not a boolean"));
  }
  for (const std::string key : {"showValue", "isSegmented", "isContinuous", "enabled"}) {
    EXPECT_THAT(problemOf(row("PSButtonCell", "A", "<key>" + key + "</key>" + text)),
                HasSubstr("\"" + key + "\" must be a boolean, not a string"));
  }
  for (const std::string key : {"validValues", "validTitles"}) {
    EXPECT_THAT(problemOf(row("PSSegmentCell", "A", "<key>" + key + "</key><dict/>")),
                HasSubstr("\"" + key + "\" must be an array, not a dictionary"));
  }
  EXPECT_THAT(problemOf(row("PSButtonCell", "A", "<key>confirmation</key>" + text)),
              HasSubstr("\"confirmation\" must be a dictionary, not a string"));
  EXPECT_THAT(problemOf(row("PSButtonCell", "A",
                            "<key>confirmation</key><dict><key>prompt</key><array/></dict>")),
              HasSubstr("in \"confirmation\", \"prompt\" must be a string, not an array"));
}

TEST_F(PSSpecifierFileTest, ChoicesThatDoNotFitAreARowThatSaysSo) {
  const std::string two =
      "<key>validValues</key><array><integer>0</integer><integer>1</integer></array>";
  const std::string one = "<key>validTitles</key><array><string>A</string></array>";
  EXPECT_THAT(problemOf(row("PSSegmentCell", "A", two + one)),
              HasSubstr("\"validTitles\" has 1 elements, \"validValues\" has 2"));
  EXPECT_THAT(problemOf(row("PSSegmentCell", "A")), HasSubstr("\"validValues\" is missing"));
  EXPECT_THAT(problemOf(row("PSLinkListCell", "A", "<key>validValues</key><array/>")),
              HasSubstr("\"validValues\" is missing or empty"));
  EXPECT_THAT(problemOf(row("PSSegmentCell", "A",
                            two + "<key>validTitles</key><array><true/>"
                                  "<string>B</string></array>")),
              HasSubstr("\"validTitles\" must contain only strings, not a boolean"));
  EXPECT_EQ(problemOf(row("PSSegmentCell", "A", two)), "no problem");
}

TEST_F(PSSpecifierFileTest, NumbersOutOfRangeAreARowThatSaysSo) {
  const auto number = [](const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><real>" + value + "</real>";
  };
  EXPECT_THAT(problemOf(row("PSSliderCell", "A", number("min", "2") + number("max", "2"))),
              HasSubstr("\"min\" must be below \"max\""));
  for (const std::string value : {"nan", "inf", "1e-60"}) {
    EXPECT_THAT(problemOf(row("PSSliderCell", "A", number("max", value))), HasSubstr("below"));
  }
  EXPECT_THAT(problemOf(row("PSSliderCell", "A", number("segmentCount", "0"))),
              HasSubstr("\"segmentCount\" must be 1 or more"));
  EXPECT_THAT(problemOf(row("PSButtonCell", "A", number("height", "-1"))), HasSubstr("\"height\""));
  EXPECT_THAT(problemOf(row("PSButtonCell", "A", number("height", "nan"))),
              HasSubstr("\"height\""));
  EXPECT_THAT(problemOf(row("PSEditTextCell", "A", textEntry("keyboard", "piano"))),
              HasSubstr("unknown keyboard \"piano\" (expected one of default, number"));
}

TEST_F(PSSpecifierFileTest, OperationThatTheTargetLacksIsARowThatSaysSo) {
  EXPECT_EQ(problemOf(row("PSButtonCell", "Go", textEntry("action", "resprung"))),
            "Main.plist, row 1 (\"Go\"): the action \"resprung\" does not exist in TestPage");
  EXPECT_THAT(problemOf(row("PSSwitchCell", "A", textEntry("get", "nothing:"))),
              HasSubstr("the getter \"nothing:\" does not exist in TestPage"));
  EXPECT_THAT(problemOf(row("PSSwitchCell", "A", textEntry("set", "nothing:specifier:"))),
              HasSubstr("the setter \"nothing:specifier:\" does not exist in TestPage"));
}

TEST_F(PSSpecifierFileTest, ClassThatIsNotThereIsARowThatSaysSo) {
  EXPECT_THAT(problemOf(row("PSLinkCell", "A", textEntry("detail", "NoSuchPage"))),
              HasSubstr("the page class \"NoSuchPage\" does not exist"));
  EXPECT_THAT(problemOf(row("PSLinkCell", "A", textEntry("detail", "PSTableCell"))),
              HasSubstr("the class \"PSTableCell\" is not a page"));
  EXPECT_THAT(problemOf(row("PSLinkCell", "A", textEntry("cellClass", "NoSuchCell"))),
              HasSubstr("the cell class \"NoSuchCell\" does not exist"));
  EXPECT_THAT(problemOf(row("PSLinkCell", "A", textEntry("cellClass", "UITableViewCell"))),
              HasSubstr("the class \"UITableViewCell\" is not a settings cell"));
}

// A disabled row uses neither its action nor its classes, so that a page can announce features.
TEST_F(PSSpecifierFileTest, DisabledRowMayNameWhatIsNotThere) {
  EXPECT_EQ(problemOf(row("PSButtonCell", "A",
                          textEntry("action", "later") + textEntry("cellClass", "LaterCell") +
                              textEntry("detail", "LaterPage") + "<key>enabled</key><false/>")),
            "no problem");
}

TEST_F(PSSpecifierFileTest, IconIsLoadedFromTheBundle) {
  // The smallest PNG: one pixel.
  const std::string png(
      "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x01\0\0\0\x01\x08\x06\0\0\0\x1f\x15\xc4\x89"
      "\0\0\0\rIDATx\x9c\x63\xf8\xcf\xc0\xf0\x1f\0\x05\0\x01\xff\x89\x99\x3d\x1d\0\0\0\0IEND\xae"
      "B`\x82",
      70);
  test.tree().write(std::string(bundle) + "/look.png", png);
  const auto shown = only(row("PSButtonCell", "A", textEntry("icon", "look.png")));
  EXPECT_NE(shown->propertyForKey("iconImage").as<UIImage>(), nullptr);
  const auto missing = only(row("PSButtonCell", "A", textEntry("icon", "none.png")));
  EXPECT_TRUE(missing->propertyForKey("iconImage").isNone());
  EXPECT_EQ(missing->problem(), std::nullopt);
}

TEST_F(PSSpecifierFileTest, BinaryListIsReadToo) {
  const Value list = Dictionary{
      {"title", "Binary"},
      {"items", Array{Dictionary{{"cell", "PSSwitchCell"}, {"key", "a"}, {"default", true}}}}};
  test.tree().write(std::string(bundle) + "/Main.plist", writeBinaryPropertyList(list).bytes);
  const auto file = readSpecifierFile("Main", bundle, target);
  EXPECT_EQ(file.title, "Binary");
  ASSERT_EQ(file.specifiers.size(), 1U);
  EXPECT_EQ(file.specifiers[0]->identifier(), "a");
}

}  // namespace preferences_test

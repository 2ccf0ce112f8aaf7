#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "platform/foundation/propertylist/PropertyList.h"

namespace platform {
namespace {

using namespace std::string_literals;

std::string document(std::string_view content) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\">\n" +
         std::string(content) + "\n</plist>\n";
}

Value read(std::string_view text) {
  const PropertyListResult result = readPropertyList(text);
  EXPECT_FALSE(result.error) << result.error->text() << "\nin " << text;
  EXPECT_EQ(result.format, PropertyListFormat::xml1);
  return result.value;
}

Value content(std::string_view text) {
  return read(document(text));
}

// Returns the error for a text that is refused.
std::string xmlRefusal(std::string_view text, const PropertyListLimits& limits = {}) {
  const PropertyListResult result = readPropertyList(text, limits);
  EXPECT_EQ(result.value.isNone(), result.error.has_value());
  if (result.error) {
    EXPECT_NE(result.error->accepted, "") << result.error->text();
  }
  return result.error ? result.error->text() : "accepted";
}

TEST(PropertyListXml, ReadsEveryKind) {
  const Value value = content(
      "<dict>\n\t<key>array</key>\n\t<array>\n\t\t<string>a</string>\n\t\t<array/>\n\t</array>\n"
      "\t<key>data</key>\n\t<data>\n\tAQID\n\t</data>\n"
      "\t<key>date</key>\n\t<date>2001-01-01T00:00:01Z</date>\n"
      "\t<key>dict</key>\n\t<dict/>\n"
      "\t<key>false</key>\n\t<false/>\n\t<key>integer</key>\n\t<integer>-5</integer>\n"
      "\t<key>real</key>\n\t<real>0.5</real>\n\t<key>true</key>\n\t<true/>\n</dict>");
  EXPECT_EQ(value, Value(Dictionary{{"array", Array{"a", Array{}}},
                                    {"data", Data("\1\2\3")},
                                    {"date", Date{1}},
                                    {"dict", Dictionary{}},
                                    {"false", false},
                                    {"integer", -5},
                                    {"real", 0.5},
                                    {"true", true}}));
  EXPECT_EQ(value.asDictionary()->valueForKey("true").kind(), ValueKind::boolean);
  EXPECT_EQ(value.asDictionary()->valueForKey("integer").kind(), ValueKind::integer);
  EXPECT_EQ(value.asDictionary()->valueForKey("real").kind(), ValueKind::real);
}

TEST(PropertyListXml, TheWrapperAndTheDeclarationMayBeMissing) {
  EXPECT_EQ(read("<dict><key>a</key><true/></dict>"), Value(Dictionary{{"a", true}}));
  EXPECT_EQ(read("<plist><string>x</string></plist>"), Value("x"));
  EXPECT_EQ(read("  <string/>  "), Value(""));
}

TEST(PropertyListXml, EmptyElementsHaveTwoForms) {
  EXPECT_EQ(content("<array></array>"), Value(Array{}));
  EXPECT_EQ(content("<dict>  </dict>"), Value(Dictionary{}));
  EXPECT_EQ(content("<string/>"), Value(""));
  EXPECT_EQ(content("<string></string>"), Value(""));
  EXPECT_EQ(content("<true></true>"), Value(true));
  EXPECT_EQ(content("<false> </false>"), Value(false));
  EXPECT_EQ(content("<data/>"), Value(Data()));
  EXPECT_EQ(content("<data></data>"), Value(Data()));
  EXPECT_EQ(content("<dict><key/><true/></dict>"), Value(Dictionary{{"", true}}));
}

TEST(PropertyListXml, TagsMayHaveSpaceAndAttributes) {
  EXPECT_EQ(content("<dict ><key id = 'a'>k</key ><integer a=\"1\" b='2'>3</integer\n></dict>"),
            Value(Dictionary{{"k", 3}}));
  EXPECT_EQ(content("<true />"), Value(true));
  EXPECT_NE(xmlRefusal(document("<string a>x</string>")), "accepted");
  EXPECT_NE(xmlRefusal(document("<string a=b>x</string>")), "accepted");
  EXPECT_NE(xmlRefusal(document("<string a=\"<\">x</string>")), "accepted");
  EXPECT_NE(xmlRefusal(document("<true/ >")), "accepted");
}

TEST(PropertyListXml, UnderstandsCommentsInstructionsAndCdata) {
  EXPECT_EQ(content("<!-- a -->\n<?name text?><dict><!-- b --><key>a<!-- c -->b</key>"
                    "<?x?><string>1 <![CDATA[<&>]]><?y?> 2</string></dict><!-- d -->"),
            Value(Dictionary{{"ab", "1 <&> 2"}}));
  EXPECT_EQ(read("<!-- before --><true/><!-- after --><?end?>"), Value(true));
  EXPECT_NE(xmlRefusal(document("<!-- a -- b --><true/>")), "accepted");
  EXPECT_NE(xmlRefusal(document("<!-- a <true/>")), "accepted");
  EXPECT_NE(xmlRefusal(document("<string><![CDATA[a</string>")), "accepted");
  EXPECT_NE(xmlRefusal(document("<?xml version=\"1.0\"?><true/>")), "accepted");
}

TEST(PropertyListXml, ResolvesReferences) {
  EXPECT_EQ(content("<string>&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#x1F600;&#10;</string>"),
            Value("<>&\"'AB\xF0\x9F\x98\x80\n"));
  for (const char* bad : {"&nbsp;", "&", "&lt", "&#;", "&#x;", "&#0;", "&#xD800;", "&#x110000;",
                          "&#xFFFF;", "&#1;", "&#99999999999999;", "&#-1;", "&#X41;"}) {
    EXPECT_NE(xmlRefusal(document("<string>" + std::string(bad) + "</string>")), "accepted") << bad;
  }
}

TEST(PropertyListXml, KeepsTextAsItIs) {
  EXPECT_EQ(content("<string>  a\t\n\r b  </string>"), Value("  a\t\n\r b  "));
  EXPECT_EQ(content("<string>]]></string>"), Value("]]>"));
  EXPECT_EQ(content("<string>a > b</string>"), Value("a > b"));
  const std::string text(5000, 'x');
  EXPECT_EQ(content("<string>" + text + "</string>"), Value(text));
}

TEST(PropertyListXml, ReadsIntegersAsThePlatformDoes) {
  EXPECT_EQ(content("<integer>0x1F</integer>"), Value(31));
  EXPECT_EQ(content("<integer>0XfF</integer>"), Value(255));
  EXPECT_EQ(content("<integer>-0x10</integer>"), Value(-16));
  EXPECT_EQ(content("<integer>+12</integer>"), Value(12));
  EXPECT_EQ(content("<integer>\n 007 </integer>"), Value(7));
  EXPECT_EQ(content("<integer>-9223372036854775808</integer>"),
            Value(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ(content("<integer>18446744073709551615</integer>"),
            Value(std::numeric_limits<std::uint64_t>::max()));
  EXPECT_EQ(content("<integer>0xFFFFFFFFFFFFFFFF</integer>").kind(), ValueKind::unsignedInteger);
  EXPECT_EQ(content("<integer>-0</integer>"), Value(0));
}

TEST(PropertyListXml, RefusesIntegersOutsideTheirRange) {
  for (const char* bad : {"18446744073709551616", "-9223372036854775809", "0x10000000000000000",
                          "-0x8000000000000001", "999999999999999999999999"}) {
    EXPECT_NE(xmlRefusal(document("<integer>" + std::string(bad) + "</integer>"))
                  .find("outside -2^63 to 2^64-1"),
              std::string::npos)
        << bad;
  }
}

TEST(PropertyListXml, RefusesWhatIsNoInteger) {
  for (const char* bad : {"", " ", "a", "1.5", "1 2", "0x", "--1", "+-1", "1_0", "12a", "- 1"}) {
    EXPECT_NE(xmlRefusal(document("<integer>" + std::string(bad) + "</integer>"))
                  .find("does not contain an integer"),
              std::string::npos)
        << bad;
  }
  EXPECT_NE(xmlRefusal(document("<integer/>")), "accepted");
}

TEST(PropertyListXml, ReadsReals) {
  EXPECT_EQ(content("<real>1</real>").kind(), ValueKind::real);
  EXPECT_EQ(content("<real> -1.5e-3 </real>"), Value(-0.0015));
  EXPECT_EQ(content("<real>+.5</real>"), Value(0.5));
  EXPECT_EQ(content("<real>5.</real>"), Value(5.0));
  EXPECT_EQ(content("<real>5e-324</real>"), Value(5e-324));
  EXPECT_EQ(content("<real>1e999</real>"), Value(std::numeric_limits<double>::infinity()));
  EXPECT_EQ(content("<real>-1e-999</real>"), Value(0.0));
  for (const char* text : {"inf", "INF", "+infinity", "Infinity"}) {
    EXPECT_EQ(content("<real>" + std::string(text) + "</real>"),
              Value(std::numeric_limits<double>::infinity()));
  }
  EXPECT_EQ(content("<real>-inf</real>"), Value(-std::numeric_limits<double>::infinity()));
  EXPECT_TRUE(std::isnan(content("<real>NaN</real>").doubleValue()));
  EXPECT_TRUE(std::isnan(content("<real>+nan</real>").doubleValue()));
}

TEST(PropertyListXml, NanOfEitherSignIsTheOneThatIsWritten) {
  const Value negative = content("<real>-nan</real>");
  EXPECT_EQ(negative, content("<real>nan</real>"));
  EXPECT_EQ(readPropertyList(writeXmlPropertyList(negative).bytes).value, negative);
}

TEST(PropertyListXml, RefusesWhatIsNoReal) {
  for (const char* bad : {"", "x", "1,5", "1.5 2", "0x1p3", "nan(1)", ".", "e5", "1e", "--1"}) {
    EXPECT_NE(xmlRefusal(document("<real>" + std::string(bad) + "</real>")), "accepted") << bad;
  }
}

TEST(PropertyListXml, ReadsDates) {
  EXPECT_EQ(content("<date>2001-01-01T00:00:00Z</date>"), Value(Date{0}));
  EXPECT_EQ(content("<date>1970-01-01T00:00:00Z</date>"), Value(Date{-978307200}));
  EXPECT_EQ(content("<date>2024-02-29T23:59:59Z</date>"), Value(Date{730943999}));
  EXPECT_EQ(content("<date>0001-01-01T00:00:00Z</date>"), Value(Date{-63113904000}));
  EXPECT_EQ(content("<date>9999-12-31T23:59:59Z</date>"), Value(Date{252423993599}));
  for (const char* bad :
       {"", "2023-02-29T00:00:00Z", "2023-13-01T00:00:00Z", "2023-00-01T00:00:00Z",
        "2023-01-32T00:00:00Z", "2023-01-01T24:00:00Z", "2023-01-01T00:60:00Z",
        "2023-01-01T00:00:61Z", "2023-01-01T00:00:00", "2023-01-01", "2023-1-1T00:00:00Z",
        "0000-01-01T00:00:00Z", "20230101T000000Z", "x023-01-01T00:00:00Z"}) {
    EXPECT_NE(xmlRefusal(document("<date>" + std::string(bad) + "</date>")), "accepted") << bad;
  }
}

TEST(PropertyListXml, RefusesDataThatIsNoBase64) {
  EXPECT_EQ(xmlRefusal("<plist><data>AQ*D</data></plist>"),
            "line 1, column 16: only base64 text is allowed in <data>");
  for (const char* bad : {"AQI", "A", "AQ=D", "=", "AQID=", "&#65;QID", "<!-- -->AQID"}) {
    EXPECT_NE(xmlRefusal(document("<data>" + std::string(bad) + "</data>")), "accepted") << bad;
  }
  EXPECT_EQ(xmlRefusal("<plist><data>AQID<!-- --></data></plist>"),
            "line 1, column 18: markup such as a comment or CDATA where only a tag is allowed");
  EXPECT_EQ(xmlRefusal("<plist><data>AQID< /data></plist>"),
            "line 1, column 18: a tag has no name");
  EXPECT_EQ(xmlRefusal("<plist><data>AQID</"), "line 1, column 20: the text ends inside a tag");
}

TEST(PropertyListXml, OfDuplicateKeysTheLastWins) {
  EXPECT_EQ(content("<dict><key>b</key><integer>1</integer><key>a</key><integer>2</integer>"
                    "<key>b</key><integer>3</integer></dict>"),
            Value(Dictionary{{"a", 2}, {"b", 3}}));
}

TEST(PropertyListXml, KeysInAnyOrderAreFound) {
  std::string text = "<dict>";
  for (int i = 499; i >= 0; --i) {
    text += "<key>key " + std::to_string(i) + "</key><integer>" + std::to_string(i) + "</integer>";
  }
  const Value value = content(text + "</dict>");
  ASSERT_EQ(value.asDictionary()->size(), 500U);
  for (int i = 0; i < 500; ++i) {
    ASSERT_EQ(value.asDictionary()->valueForKey("key " + std::to_string(i)), Value(i));
  }
}

TEST(PropertyListXml, RefusesBrokenStructureWithLineAndColumn) {
  struct Case {
    const char* text;
    const char* says;
  };
  for (const Case& bad : {
           Case{"<plist>\n<dict>\n\t<key>a</key>\n</dict>\n</plist>",
                "line 4, column 1: the last key of <dict> has no value"},
           Case{"<plist>\n<dict>\n\t<true/>\n</dict></plist>",
                "line 3, column 2: a value without a key: <true>"},
           Case{"<plist><dict><key>a</key><key>b</key></dict></plist>",
                "line 1, column 26: a key without a value is followed by another"},
           Case{"<plist><array><key>a</key></array></plist>",
                "line 1, column 15: <key> is allowed only in <dict>"},
           Case{"<plist><true/></plist>\nmore",
                "line 2, column 1: unexpected content after the end of the property list"},
           Case{"<plist><true/><false/></plist>",
                "line 1, column 15: expected </plist>, found <false>"},
           Case{"<true/><false/>",
                "line 1, column 8: unexpected content after the end of the property list"},
           Case{"<plist><array><string>a</array></plist>",
                "line 1, column 24: expected </string>, found </array>"},
           Case{"<plist><array><true/></dict></plist>",
                "line 1, column 22: expected </array>, found </dict>"},
           Case{"<plist><dict>", "line 1, column 14: the text ends too early"},
           Case{"<plist><string>ab", "line 1, column 18: the text ends before </string>"},
           Case{"<plist><data>AQID", "line 1, column 18: the text ends before </data>"},
           Case{"<plist><true/>", "line 1, column 15: the text ends before </plist>"},
           Case{"<plist></plist>", "line 1, column 8: the property list holds no value"},
           Case{"<plist/>", "line 1, column 1: the property list holds no value"},
           Case{"", "line 1, column 1: there is no property list"},
           Case{" \n ", "line 2, column 2: there is no property list"},
           Case{"{ a = b; }", "line 1, column 1: text where only a tag is allowed"},
           Case{"<plist><dict>x</dict></plist>",
                "line 1, column 14: text where only a tag is allowed"},
           Case{"<plist><set></set></plist>",
                "line 1, column 8: <set> is not an element of a property list"},
           Case{"<plist><plist><true/></plist></plist>",
                "line 1, column 8: <plist> is allowed only around the root"},
           Case{"</dict>", "line 1, column 1: </dict> has no start tag"},
           Case{"<plist>\n\xC3\xA9<true/></plist>",
                "line 2, column 1: text where only a tag is allowed"},
           Case{"<dict><key>\xC3\xA9</key>x</dict>",
                "line 1, column 19: text where only a tag is allowed"},
       }) {
    EXPECT_EQ(xmlRefusal(bad.text), bad.says) << bad.text;
  }
}

TEST(PropertyListXml, SaysWhatWouldBeAccepted) {
  const auto accepted = [](std::string_view text) {
    const PropertyListResult result = readPropertyList(text);
    return result.error ? result.error->accepted : "";
  };
  EXPECT_EQ(accepted("<plist><dict><true/></dict></plist>"), "<key> or </dict>");
  EXPECT_EQ(accepted("<plist><array><string>a</array></plist>"), "</string>");
  EXPECT_EQ(accepted("<plist><date>now</date></plist>"), "YYYY-MM-DDTHH:MM:SSZ");
  EXPECT_NE(accepted("<plist><set/></plist>").find("<dict>"), std::string::npos);
}

TEST(PropertyListXml, EveryTruncationIsRefused) {
  const std::string whole = document(
      "<dict><!-- c --><key>a&amp;</key><array><real>1</real><data>AQID</data>"
      "<date>2001-01-01T00:00:00Z</date></array><key>b</key><string><![CDATA[x]]></string></dict>");
  const std::size_t end = whole.find("</plist>") + 8;
  for (std::size_t size = 0; size < end; ++size) {
    const PropertyListResult result = readPropertyList(std::string_view(whole).substr(0, size));
    ASSERT_TRUE(result.error) << size;
    ASSERT_LE(*result.error->offset, size);
    ASSERT_TRUE(result.error->line && result.error->column);
    ASSERT_NE(result.error->accepted, "") << size << ": " << result.error->text();
  }
  EXPECT_FALSE(readPropertyList(std::string_view(whole).substr(0, end)).error);
}

TEST(PropertyListXml, EntityDeclarationsAreRefused) {
  const std::string bomb =
      "<!DOCTYPE plist [\n<!ENTITY a \"ha\">\n<!ENTITY b \"&a;&a;\">\n]>"
      "<plist><string>&b;</string></plist>";
  EXPECT_EQ(xmlRefusal(bomb), "line 2, column 1: entity declarations are refused");
  EXPECT_NE(xmlRefusal("<!DOCTYPE plist [<!ENTITY % p SYSTEM \"file:///etc/passwd\"> %p;]><true/>"),
            "accepted");
  EXPECT_NE(xmlRefusal("<!DOCTYPE plist [%p;]><true/>"), "accepted");
  EXPECT_EQ(xmlRefusal("<!DOCTYPE plist [<![INCLUDE[<!ENTITY a \"x\">]><true/>"),
            "line 1, column 29: the declaration is not closed");
}

TEST(PropertyListXml, OtherDeclarationsArePassedOver) {
  EXPECT_EQ(read("<!DOCTYPE plist [ <!ELEMENT plist ANY> <!-- ]> -->"
                 "<!ATTLIST plist version CDATA \"1.0>\"> ]>\n<plist><true/></plist>"),
            Value(true));
  EXPECT_EQ(read("<!DOCTYPE plist SYSTEM \"a>b\"><true/>"), Value(true));
  EXPECT_NE(xmlRefusal("<!DOCTYPE plist"), "accepted");
  EXPECT_NE(xmlRefusal("<!DOCTYPE plist [<!ELEMENT"), "accepted");
  EXPECT_NE(xmlRefusal("<!DOCTYPE plist ["), "accepted");
  EXPECT_NE(xmlRefusal("<true/><!DOCTYPE plist>"), "accepted");
}

TEST(PropertyListXml, Encodings) {
  const std::string text = "<string>caf\xC3\xA9 \xF0\x9F\x98\x80</string>";
  const Value expected("caf\xC3\xA9 \xF0\x9F\x98\x80");
  EXPECT_EQ(read("\xEF\xBB\xBF" + text), expected);
  EXPECT_EQ(read("<?xml version='1.0' encoding='utf-8'?>" + text), expected);
  EXPECT_EQ(read("<?xml version=\"1.0\"?>" + text), expected);
  EXPECT_NE(xmlRefusal("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + text)
                .find("the encoding ISO-8859-1 is not supported"),
            std::string::npos);
}

std::string utf16(std::u16string_view text, bool bigEndian) {
  std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : text) {
    const char high = static_cast<char>(unit >> 8U);
    const char low = static_cast<char>(unit & 0xFFU);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

TEST(PropertyListXml, ReadsUtf16WithAMark) {
  const std::u16string text =
      u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<string>caf\u00E9 \U0001F600</string>";
  for (const bool bigEndian : {false, true}) {
    EXPECT_EQ(read(utf16(text, bigEndian)), Value("caf\xC3\xA9 \xF0\x9F\x98\x80"));
    EXPECT_NE(xmlRefusal(utf16(u"<string>\xD83D</string>", bigEndian)).find("unpaired surrogate"),
              std::string::npos);
    EXPECT_NE(xmlRefusal(utf16(u"<true/>", bigEndian) + "x"), "accepted");
  }
}

TEST(PropertyListXml, OffsetsInUtf16CountItsBytes) {
  const PropertyListResult result = readPropertyList(utf16(u"<!--\u00E9-->\n<set/>", true));
  ASSERT_TRUE(result.error);
  EXPECT_EQ(result.error->offset, 2U + 2 * 9);
  EXPECT_EQ(result.error->line, 2U);
  EXPECT_EQ(result.error->column, 1U);
}

TEST(PropertyListXml, RefusesForbiddenCharacters) {
  struct Case {
    std::string bytes;
    std::string says;
  };
  for (const Case& bad : std::vector<Case>{{"\xFF", "a byte that is not valid UTF-8"},
                                           {"\xC3", "a byte that is not valid UTF-8"},
                                           {"\xC0\xAF", "a byte that is not valid UTF-8"},
                                           {"\xED\xA0\x80", "U+D800 is not allowed in XML"},
                                           {"\x01", "U+0001 is not allowed in XML"},
                                           {"\0"s, "U+0000 is not allowed in XML"},
                                           {"\xEF\xBF\xBF", "U+FFFF is not allowed in XML"}}) {
    for (const std::string& before : {""s, "0123456789abcdef"s}) {
      const std::string where =
          "line 1, column " + std::to_string(9 + before.size()) + ": " + bad.says;
      EXPECT_EQ(xmlRefusal("<string>" + before + bad.bytes + "</string>"), where);
    }
    EXPECT_NE(xmlRefusal("<!-- " + bad.bytes + " --><true/>"), "accepted");
    EXPECT_NE(xmlRefusal("<?a " + bad.bytes + " ?><true/>"), "accepted");
    EXPECT_NE(xmlRefusal("<true a=\"" + bad.bytes + "\"/>"), "accepted");
    EXPECT_NE(xmlRefusal("<true a" + bad.bytes + "=\"\"/>"), "accepted");
    EXPECT_NE(xmlRefusal("<!DOCTYPE plist [<!ATTLIST a b \"" + bad.bytes + "\">]><true/>"),
              "accepted");
    EXPECT_NE(xmlRefusal("<string><![CDATA[" + bad.bytes + "]]></string>"), "accepted");
    EXPECT_NE(xmlRefusal("<!DOCTYPE plist \"" + bad.bytes + "\"><true/>"), "accepted");
  }
}

TEST(PropertyListXml, TheLimitOfDepthIsToldAndKept) {
  const auto nested = [](std::size_t depth) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) text += "<array>";
    for (std::size_t i = 0; i < depth; ++i) text += "</array>";
    return text;
  };
  EXPECT_EQ(xmlRefusal(nested(512)), "accepted");
  EXPECT_EQ(xmlRefusal(nested(513)),
            "line 1, column 3585: containers are nested more than 512 deep, which is the limit");
  EXPECT_NE(xmlRefusal(nested(100000)), "accepted");
  std::string empty = nested(512);
  empty.insert(empty.size() / 2 - 4, "<dict/>");
  EXPECT_NE(xmlRefusal(empty), "accepted");
}

TEST(PropertyListXml, TheLimitOfObjectsIsToldAndKept) {
  PropertyListLimits limits;
  limits.objects = 3;
  EXPECT_EQ(xmlRefusal("<array><true/><true/></array>", limits), "accepted");
  EXPECT_EQ(xmlRefusal("<array><true/><true/><true/></array>", limits),
            "line 1, column 22: more than 3 values, which is the limit");
}

TEST(PropertyListXml, TheLimitOfBytesIsToldAndKept) {
  PropertyListLimits limits;
  limits.bytes = 7;
  EXPECT_EQ(xmlRefusal("<true/>", limits), "accepted");
  EXPECT_EQ(xmlRefusal("<false/>", limits), "byte 7: more than 7 bytes, which is the limit");
}

TEST(PropertyListXml, DataSharesTheTextThatItWasReadFrom) {
  const std::string lines = "\n\t" + std::string(68, 'A') + "\n\t";
  std::string many;
  for (int i = 0; i < 1000; ++i) many += lines.substr(0, 70);
  auto bytes = std::make_shared<const std::string>(
      document("<dict>\n\t<key>d</key>\n\t<data>" + many + "\n\t</data>\n</dict>"));
  const char* const begin = bytes->data();
  const char* const end = begin + bytes->size();
  const PropertyListResult result = readSharedPropertyList(*bytes, bytes);
  bytes.reset();
  ASSERT_FALSE(result.error);
  std::shared_ptr<const void> keeper;
  const Value data = result.value.asDictionary()->valueForKey("d");
  const std::string_view text = data.asData()->base64Lines(1, keeper);
  EXPECT_TRUE(text.data() >= begin && text.data() < end);
  EXPECT_EQ(data.asData()->size(), 51000U);
}

}  // namespace
}  // namespace platform

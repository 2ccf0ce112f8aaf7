#include "tests/settings/application/RootPageFixture.h"

namespace settings::test {
namespace {

using Texts = std::vector<std::string>;

// The label below the rows in which the page shows the product's version.
class Version : public RootPageTest {
 protected:
  static constexpr const char* shell = "/bin/bash";

  void SetUp() override {
    putProgram(shell, "printf 'Package: com.hollowmere.zentrova\\nVersion: 1.0.0\\n'");
    open();
  }
  // The texts of the visible labels below the rows.
  std::vector<std::string> shown() {
    std::vector<std::string> texts;
    const Json view = footer();
    if (view.is_null()) return texts;
    for (const Json& child : view["children"]) {
      const Json& label = *query().find(child.get<std::string>()).node;
      if (!label.value("hidden", false)) texts.push_back(label.value("string", ""));
    }
    return texts;
  }
  double tableNumber(const char* member) { return query().table().node->value(member, 0.0); }
};

TEST_F(Version, NothingIsShownUntilItIsAskedFor) {
  EXPECT_TRUE(footer().is_null());
  EXPECT_TRUE(application().programRecords().empty());
}

TEST_F(Version, RowShowsTheRecordBelowTheRows) {
  ASSERT_TRUE(tap("version"));
  EXPECT_EQ(shown(), Texts{"Package: com.hollowmere.zentrova\n1.0.0\n"});
}

TEST_F(Version, EveryLineHasItsRoomAndIsInSight) {
  putProgram(shell, "printf '1\\n'");
  ASSERT_TRUE(tap("version"));
  const double one = footer()["frame"][3];
  putProgram(shell, "printf '1\\n2\\n3\\n4\\n'");
  ASSERT_TRUE(tap("version"));
  EXPECT_GT(footer()["frame"][3], one);
  const double bottom = footer()["frame"][1].get<double>() + footer()["frame"][3].get<double>();
  EXPECT_EQ(tableNumber("contentHeight"), bottom);
  const double height = (*query().table().node)["frame"][3];
  EXPECT_LE(bottom, tableNumber("offset") + height);
}

TEST_F(Version, AnswerWithoutTextIsSaid) {
  for (const char* script : {"exit 1", "printf '\\n'", "printf 'Version: '"}) {
    putProgram(shell, script);
    ASSERT_TRUE(tap("version"));
    EXPECT_EQ(shown(), Texts{"No version was printed."}) << script;
  }
}

TEST_F(Version, MissingShellIsSaid) {
  EXPECT_FALSE(application().device().remove(shell));
  ASSERT_TRUE(tap("version"));
  EXPECT_EQ(shown(), Texts{"No version was printed."});
  EXPECT_FALSE(application().crash());
}

TEST_F(Version, NextAnswerTakesThePlaceOfTheLast) {
  for (const char* version : {"1", "2"}) {
    putProgram(shell, "printf 'Version: " + std::string(version) + "'");
    ASSERT_TRUE(tap("version"));
    EXPECT_EQ(shown(), Texts{version});
  }
}

TEST_F(Version, TextThatIsTakenAwayLeavesNoRoom) {
  ASSERT_TRUE(tap("version"));
  const double before = tableNumber("contentHeight");
  const double room = footer()["frame"][3];
  putProgram(shell, "printf '\\377'");
  ASSERT_TRUE(tap("version"));
  EXPECT_TRUE(footer().is_null());
  EXPECT_EQ(tableNumber("contentHeight"), before - room);
}

TEST_F(Version, LongAnswerStaysShort) {
  putProgram(shell, "yes line | head -n 5000");
  ASSERT_TRUE(tap("version"));
  EXPECT_EQ(shown().size(), 1U);
  EXPECT_LT(footer()["frame"][3], 1000);
}

TEST_F(Version, RoomFollowsTheWidthOfTheScreen) {
  putProgram(shell, "printf 'one line that is longer than a narrow screen is wide, by far'");
  ASSERT_TRUE(tap("version"));
  const double narrow = footer()["frame"][3];
  ASSERT_TRUE(application().perform({{"action", "bounds"}, {"width", 1000}, {"height", 800}}));
  EXPECT_LT(footer()["frame"][3], narrow);
  EXPECT_EQ(footer()["frame"][2], 1000);
}

TEST_F(Version, EveryNewPageHasALabelOfItsOwn) {
  ASSERT_TRUE(tap("version"));
  ASSERT_TRUE(back());
  ASSERT_TRUE(tap("Bundle"));
  EXPECT_TRUE(footer().is_null());
  ASSERT_TRUE(tap("version"));
  EXPECT_EQ(shown().size(), 1U);
}

TEST_F(Version, LabelStaysWhileAnotherPageIsOpen) {
  ASSERT_TRUE(tap("version"));
  const Texts before = shown();
  ASSERT_TRUE(tap("vibration"));
  EXPECT_TRUE(footer().is_null());
  ASSERT_TRUE(back());
  EXPECT_EQ(shown(), before);
}

}  // namespace
}  // namespace settings::test

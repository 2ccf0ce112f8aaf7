#include "platform/preferences/PSSpecifier.h"
#include "tests/platform/preferences/PreferencesTest.h"

namespace preferences_test {

using namespace platform;

class PSSpecifierTest : public PreferencesTest {
 protected:
  std::shared_ptr<TestPage> target = make<TestPage>();
  std::shared_ptr<PSSpecifier> specifier = PSSpecifier::preferenceSpecifierNamed(
      "Reverse", target, "setPreferenceValue:specifier:", "readPreferenceValue:", std::nullopt,
      PSSwitchCell, std::nullopt);
};

TEST_F(PSSpecifierTest, IsWhatItWasMadeAs) {
  EXPECT_EQ(specifier->name(), "Reverse");
  EXPECT_EQ(specifier->target(), target);
  EXPECT_EQ(specifier->setter(), "setPreferenceValue:specifier:");
  EXPECT_EQ(specifier->getter(), "readPreferenceValue:");
  EXPECT_EQ(specifier->detailControllerClass(), std::nullopt);
  EXPECT_EQ(specifier->editPaneClass(), std::nullopt);
  EXPECT_EQ(specifier->cellType(), PSSwitchCell);
  EXPECT_EQ(specifier->buttonAction(), std::nullopt);
  EXPECT_EQ(specifier->properties()->count(), 0U);
}

TEST_F(PSSpecifierTest, IdentifierIsIdThenKeyThenName) {
  EXPECT_EQ(specifier->identifier(), "Reverse");
  specifier->setProperty("aKey", "key");
  EXPECT_EQ(specifier->identifier(), "aKey");
  specifier->setProperty("anID", "id");
  EXPECT_EQ(specifier->identifier(), "anID");
  specifier->setIdentifier("another");
  EXPECT_EQ(specifier->propertyForKey("id"), Value("another"));
  EXPECT_EQ(PSSpecifier::emptyGroupSpecifier()->identifier(), std::nullopt);
}

TEST_F(PSSpecifierTest, TitleIsTheNameElseThePropertyTitle) {
  specifier->setProperty("Own", "title");
  EXPECT_EQ(specifier->title(), "Reverse");
  specifier->setName(std::nullopt);
  EXPECT_EQ(specifier->title(), "Own");
}

TEST_F(PSSpecifierTest, NoneRemovesAProperty) {
  specifier->setProperty(3, "default");
  EXPECT_EQ(specifier->propertyForKey("default"), Value(3));
  specifier->setProperty({}, "default");
  EXPECT_TRUE(specifier->propertyForKey("default").isNone());
  specifier->setProperty(3, "default");
  specifier->removePropertyForKey("default");
  EXPECT_EQ(specifier->properties()->count(), 0U);
}

TEST_F(PSSpecifierTest, PropertiesAreOneSharedDictionary) {
  const auto properties = specifier->properties();
  properties->setValueForKey(true, std::string_view("iconCircular"));
  EXPECT_EQ(specifier->propertyForKey("iconCircular"), Value(true));
  specifier->setProperties(nullptr);
  EXPECT_EQ(specifier->properties()->count(), 0U);
  EXPECT_EQ(properties->count(), 1U);
}

TEST_F(PSSpecifierTest, TargetIsHeldWeakly) {
  target.reset();
  EXPECT_EQ(specifier->target(), nullptr);
  EXPECT_TRUE(specifier->performGetter().isNone());
  specifier->performSetterWithValue(true);  // no target
}

TEST_F(PSSpecifierTest, GetterAndSetterGoToTheTargetWithTheSpecifier) {
  specifier->setProperty("reverse", "key");
  target->values["reverse"] = "a string under a switch";
  EXPECT_EQ(specifier->performGetter(), Value("a string under a switch"));
  specifier->performSetterWithValue(true);
  ASSERT_EQ(target->written.size(), 1U);
  EXPECT_EQ(target->written[0].first, "reverse");
  EXPECT_EQ(target->written[0].second.kind(), ValueKind::boolean);
}

TEST_F(PSSpecifierTest, GetterThatTheTargetDoesNotOfferAnswersNone) {
  specifier->setGetter("noSuchGetter:");
  EXPECT_TRUE(specifier->performGetter().isNone());
  specifier->setGetter(std::nullopt);
  EXPECT_TRUE(specifier->performGetter().isNone());
}

TEST_F(PSSpecifierTest, SetterThatTheTargetDoesNotOfferRaises) {
  specifier->setSetter("noSuchSetter:");
  try {
    specifier->performSetterWithValue(1);
    FAIL() << "nothing was raised";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), invalidArgumentException);
    EXPECT_EQ(exception.reason(),
              "-[TestPage noSuchSetter:]: unrecognized selector sent to instance");
  }
}

TEST_F(PSSpecifierTest, SelectorWithoutColonGetsNoArgument) {
  EXPECT_TRUE(performAction(*target, "restart", {Value(specifier)}).isNone());
  performAction(*target, "openRow:", {Value(specifier)});
  EXPECT_THAT(target->performed, testing::ElementsAre("restart", "openRow Reverse"));
}

TEST_F(PSSpecifierTest, TitlesBelongToValuesByPosition) {
  specifier->setProperty(Array{Value(0), Value(1), Value("x")}, "validValues");
  specifier->setProperty(Array{Value("Off"), Value("On")}, "validTitles");
  EXPECT_EQ(specifier->titleForValue(1), "On");
  EXPECT_EQ(specifier->titleForValue("x"), "x");
  EXPECT_EQ(specifier->titleForValue(7), std::nullopt);
  EXPECT_EQ(specifier->indexOfValue(0), 0U);
  EXPECT_EQ(specifier->indexOfValue("1"), std::nullopt);
  specifier->setProperty("no array", "validValues");
  EXPECT_TRUE(specifier->validValues().empty());
}

TEST_F(PSSpecifierTest, IsEnabledUnlessTheNumberSaysNo) {
  EXPECT_TRUE(specifier->isEnabled());
  specifier->setProperty(false, "enabled");
  EXPECT_FALSE(specifier->isEnabled());
  specifier->setProperty(0, "enabled");
  EXPECT_FALSE(specifier->isEnabled());
  specifier->setProperty("no", "enabled");
  EXPECT_TRUE(specifier->isEnabled());
}

TEST_F(PSSpecifierTest, OffersItsOperationsByName) {
  specifier->perform("setProperty:forKey:", {Value("text"), Value("footerText")});
  EXPECT_EQ(specifier->perform("propertyForKey:", {Value("footerText")}), Value("text"));
  specifier->perform("setButtonAction:", {Value("restart")});
  EXPECT_EQ(specifier->buttonAction(), "restart");
  specifier->perform("setTarget:", {Value(specifier)});
  EXPECT_EQ(specifier->target(), specifier);
  EXPECT_EQ(specifier->valueForKey("identifier"), Value("Reverse"));
  EXPECT_EQ(specifier->valueForKeyPath("properties.footerText"), Value("text"));
}

TEST_F(PSSpecifierTest, DescriptionSaysIdentifierAndName) {
  specifier->setProperty("anID", "id");
  EXPECT_THAT(specifier->description(),
              testing::AllOf(testing::StartsWith("<PSSpecifier: 0x"),
                             testing::EndsWith(" ID: anID, name: Reverse>")));
}

}  // namespace preferences_test

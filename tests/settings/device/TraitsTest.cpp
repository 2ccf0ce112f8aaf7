#include <algorithm>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>

#include "settings/device/Traits.h"

namespace settings::tests {
namespace {

TEST(Traits, EachHasANameAndAnOptionOfItsOwn) {
  std::set<std::string> names;
  std::set<std::string> options;
  for (const Trait& trait : traitTable()) {
    EXPECT_TRUE(names.insert(trait.name).second) << trait.name;
    EXPECT_TRUE(options.insert(trait.option).second) << trait.option;
  }
}

// Each choice of a trait can be set, and is then shown as this choice.
TEST(Traits, EveryChoiceIsAValueAndShownAsItIsWritten) {
  for (const Trait& trait : traitTable()) {
    for (const TraitChoice& choice : trait.choices) {
      platform::DeviceTraits traits;
      EXPECT_EQ(changeTrait(traits, trait.name, choice.value), std::nullopt);
      EXPECT_EQ(trait.text(traits), choice.value) << trait.name;
    }
  }
}

TEST(Traits, TheTextOfATraitSetsItAgain) {
  platform::DeviceTraits odd;
  odd.screenWidth = 390.5;
  odd.screenHeight = 10000;
  odd.screenScale = 2.25;
  odd.systemVersion = {15, 4, 1};
  odd.textScale = 0.75;
  odd.tint = "01020304";
  for (const Trait& trait : traitTable()) {
    platform::DeviceTraits traits;
    EXPECT_EQ(changeTrait(traits, trait.name, trait.text(odd)), std::nullopt);
    EXPECT_EQ(trait.text(traits), trait.text(odd)) << trait.name;
  }
}

TEST(Traits, JsonOffersTheChoicesWithTheValueOfNow) {
  platform::DeviceTraits traits;
  traits.appearance = platform::UserInterfaceStyle::dark;
  const nlohmann::json all = jsonFromTraits(traits);
  ASSERT_EQ(all.size(), traitTable().size());
  const nlohmann::json expected = nlohmann::json::parse(R"({"name": "appearance",
      "label": "Appearance", "value": "dark", "choices": [["light", "Light"], ["dark", "Dark"]]})");
  EXPECT_NE(std::find(all.begin(), all.end(), expected), all.end()) << all;
}

}  // namespace
}  // namespace settings::tests

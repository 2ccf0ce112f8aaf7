#pragma once

#include "tests/modules/ModulesFixture.h"

namespace zentrova::tests {

inline const std::string pinned(connectivityEntry);
inline const std::string brightness(displaySliderEntry);
inline const std::string audio(audioSliderEntry);
inline const std::string media(mediaEntry);
inline const std::string power(powerEntry);

// The page that enables and orders modules.
class ArrangeTest : public EditingPageTest<ZVRArrangeModulesViewController> {
 protected:
  void openWith(const platform::Value& moduleConfig) {
    store("moduleConfig", moduleConfig);
    open();
  }
  static Texts textsOf(const platform::Value& list) {
    Texts texts;
    for (const auto& each : *list.asArray()) texts.push_back(each.description());
    return texts;
  }
  Texts enabled() { return textsOf(page->enabledModuleIdentifiers()); }
  Texts disabled() { return textsOf(page->disabledModuleIdentifiers()); }
  // Checks that nothing has changed since the page was opened and nothing was written.
  void expectUntouched(const Texts& enabledBefore, const Texts& disabledBefore) {
    EXPECT_EQ(enabled(), enabledBefore);
    EXPECT_EQ(disabled(), disabledBefore);
    EXPECT_EQ(writes(), Texts());
  }
  void expectSaved() {
    EXPECT_EQ(writes(), Texts{std::string(test_support::TestProcess::preferencePath)});
    EXPECT_EQ(stored("moduleConfig"), platform::Value(arrayOf(enabled())));
  }
};

}  // namespace zentrova::tests

#pragma once

#include "tests/modules/ModulesFixture.h"
#include "tests/modules/Neighbours.h"

namespace zentrova::tests {

// The favourites page with the installed modules "a" to "f" ("A" to "F"), of which "x" is
// forbidden.
class FavoritesTest : public EditingPageTest<ZVRFavoriteModules> {
 protected:
  static constexpr std::string_view configurationPath =
      "/var/jb/var/mobile/Library/ControlCenter/ModuleConfiguration_CCSupport.plist";

  FavoritesTest() {
    registerNeighbours(process.classes());
    neighbours->loadable = arrayOf({"f", "e", "x", "d", "c", "b", "a"});
    neighbours->forbidden = arrayOf({"x"});
    for (const char* name : {"a", "b", "c", "d", "e", "f"}) {
      const std::string shown(1, static_cast<char>(*name - 'a' + 'A'));
      neighbours->descriptions =
          neighbours->descriptions.with(name, std::make_shared<ModuleDescription>(shown));
    }
    process.process().provide(neighbours);
    configure(arrayOf({"b"}));
  }
  void configure(const platform::Value& identifiers) {
    writeList(configurationPath, {{"module-identifiers", identifiers}, {"version", 3}});
  }
  static platform::Value configured() { return inList(configurationPath, "module-identifiers"); }

  void openWith(const platform::Value& favorites) {
    store("groupedIdentifiers", favorites);
    open();
  }
  void expectStored(const Texts& favorites) {
    EXPECT_EQ(stored("groupedIdentifiers"), platform::Value(arrayOf(favorites)));
  }
  Texts active() { return rowsOf(table, 0); }
  Texts available() { return rowsOf(table, 1); }
  // The lines since the last call.
  Texts logLines() {
    Texts lines;
    const auto entries = process.log().entries();
    for (; _linesSeen < entries.size(); ++_linesSeen) lines.push_back(entries[_linesSeen].message);
    return lines;
  }

  const Texts savedFiles{std::string(test_support::TestProcess::preferencePath),
                         std::string(configurationPath)};
  std::shared_ptr<Neighbours> neighbours = std::make_shared<Neighbours>();

 private:
  std::size_t _linesSeen = 0;
};

}  // namespace zentrova::tests

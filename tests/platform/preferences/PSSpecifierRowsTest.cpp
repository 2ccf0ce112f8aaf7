#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "platform/preferences/PSSpecifierRows.h"

namespace platform {

namespace {

std::shared_ptr<PSSpecifier> named(const std::string& identifier) {
  auto specifier =
      PSSpecifier::preferenceSpecifierNamed(identifier, nullptr, {}, {}, {}, PSSwitchCell, {});
  specifier->setIdentifier(identifier);
  return specifier;
}

std::vector<std::string> identifiers(const PSSpecifiers& rows) {
  std::vector<std::string> found;
  for (const auto& row : *rows) found.push_back(row->identifier().value_or(""));
  return found;
}

class PSSpecifierRowsTest : public ::testing::Test {
 protected:
  PSSpecifierRowsTest() { rows.assign(makeSpecifiers({a, b, c})); }
  std::vector<std::string> now() { return identifiers(rows.snapshot()); }

  std::shared_ptr<PSSpecifier> a = named("a");
  std::shared_ptr<PSSpecifier> b = named("b");
  std::shared_ptr<PSSpecifier> c = named("c");
  std::shared_ptr<PSSpecifier> x = named("x");
  PSSpecifierRows rows;
};

using ::testing::ElementsAre;

TEST_F(PSSpecifierRowsTest, NoListIsNotAnEmptyList) {
  PSSpecifierRows fresh;
  EXPECT_EQ(fresh.snapshot(), nullptr);
  EXPECT_FALSE(fresh.insert({x}, 0));
  EXPECT_FALSE(fresh.insertAtEnd({x}));
  fresh.assign(makeSpecifiers({}));
  EXPECT_TRUE(fresh.insert({x}, 0));
  EXPECT_EQ(identifiers(fresh.snapshot()), std::vector<std::string>{"x"});
}

TEST_F(PSSpecifierRowsTest, InsertsWhereItIsTold) {
  EXPECT_TRUE(rows.insertAfter({x}, a.get()));
  EXPECT_THAT(now(), ElementsAre("a", "x", "b", "c"));
  EXPECT_TRUE(rows.insertAfterID({named("y")}, "c"));
  EXPECT_TRUE(rows.insert({named("z")}, 0));
  EXPECT_TRUE(rows.insertAtEnd({named("e")}));
  EXPECT_THAT(now(), ElementsAre("z", "a", "x", "b", "c", "y", "e"));
}

TEST_F(PSSpecifierRowsTest, SaysWhatItChanged) {
  const auto before = rows.snapshot();
  const auto change = rows.insertAfter({x, named("y")}, b.get());
  EXPECT_EQ(change.before, before);
  EXPECT_EQ(change.after, rows.snapshot());
  EXPECT_EQ(change.index, 2U);
  EXPECT_EQ(change.inserted, 2U);
  EXPECT_EQ(change.removed, 0U);
  EXPECT_THAT(identifiers(before), ElementsAre("a", "b", "c"));
}

TEST_F(PSSpecifierRowsTest, WhatIsNotThereChangesNothing) {
  EXPECT_FALSE(rows.insertAfter({x}, x.get()));
  EXPECT_FALSE(rows.insertAfter({x}, nullptr));
  EXPECT_FALSE(rows.insertAfterID({x}, "nobody"));
  EXPECT_FALSE(rows.insert({x}, 4));
  EXPECT_FALSE(rows.insert({}, 1));
  EXPECT_FALSE(rows.remove(x.get()));
  EXPECT_FALSE(rows.removeID("nobody"));
  EXPECT_THAT(now(), ElementsAre("a", "b", "c"));
}

TEST_F(PSSpecifierRowsTest, IdentifierFindsItsFirstRow) {
  rows.insertAtEnd({named("a")});
  EXPECT_EQ(indexOfSpecifierID(rows.snapshot(), "a"), 0U);
  EXPECT_TRUE(rows.removeID("a"));
  EXPECT_THAT(now(), ElementsAre("b", "c", "a"));
  EXPECT_EQ(indexOfSpecifier(rows.snapshot(), a.get()), std::nullopt);
}

TEST_F(PSSpecifierRowsTest, ReplacesRowsThatStandTogether) {
  EXPECT_FALSE(rows.replaceContiguous({a, c}, {x}));
  EXPECT_FALSE(rows.replaceContiguous({c, x}, {x}));
  EXPECT_FALSE(rows.replaceContiguous({}, {x}));
  EXPECT_TRUE(rows.replaceContiguous({b, c}, {x}));
  EXPECT_THAT(now(), ElementsAre("a", "x"));
  EXPECT_TRUE(rows.replaceContiguous({a, x}, {}));
  EXPECT_THAT(now(), ElementsAre());
}

// A reader sees the rows before or after an operation.
TEST_F(PSSpecifierRowsTest, ReadersOfAnotherThreadSeeWholeOperations) {
  constexpr int rounds = 2000;
  const PSSpecifierList pair{named("one"), named("two")};
  std::atomic<bool> done = false;
  std::thread writer([&] {
    for (int round = 0; round < rounds; ++round) {
      rows.insertAfter(pair, a.get());
      rows.replaceContiguous(pair, {});
    }
    done = true;
  });
  std::size_t partial = 0;
  while (!done) {
    const auto seen = rows.snapshot();
    if (seen->size() != 3 && seen->size() != 5) ++partial;
    if (indexOfSpecifierID(seen, "c") != seen->size() - 1) ++partial;
  }
  writer.join();
  EXPECT_EQ(partial, 0U);
  EXPECT_THAT(now(), ElementsAre("a", "b", "c"));
}

TEST_F(PSSpecifierRowsTest, TwoThreadsThatInsertLoseNothing) {
  constexpr int rounds = 500;
  const auto insert = [&](const std::string& prefix) {
    for (int round = 0; round < rounds; ++round) rows.insertAfterID({named(prefix)}, "a");
  };
  std::thread other(insert, "other");
  insert("own");
  other.join();
  EXPECT_EQ(rows.snapshot()->size(), 3U + 2U * rounds);
}

// A background thread sets a row's name and properties while the main thread reads them.
TEST(PSSpecifierThreads, NameAndPropertiesMeetTwoThreads) {
  const auto specifier = named("row");
  constexpr int rounds = 2000;
  std::thread writer([&] {
    for (int round = 0; round < rounds; ++round) {
      specifier->setName(round % 2 == 0 ? "Change background image" : "Set background image");
      specifier->setProperty(round, "value");
      specifier->setTarget(round % 2 == 0 ? specifier : nullptr);
    }
  });
  std::int64_t last = -1;
  bool wentBack = false;
  for (int round = 0; round < rounds; ++round) {
    const Value value = specifier->propertyForKey("value");
    wentBack = wentBack || (value && value.integerValue() < last);
    if (value) last = value.integerValue();
    EXPECT_THAT(*specifier->name(),
                testing::AnyOf("row", "Change background image", "Set background image"));
    EXPECT_EQ(specifier->identifier(), "row");
    const auto target = specifier->target();
    EXPECT_TRUE(!target || target == specifier);
  }
  writer.join();
  EXPECT_FALSE(wentBack);
  EXPECT_EQ(specifier->propertyForKey("value"), Value(rounds - 1));
}

}  // namespace

}  // namespace platform

#include <gtest/gtest.h>

#include "platform/preferences/PSSections.h"

namespace platform {

namespace {

std::shared_ptr<PSSpecifier> rowOf(PSCellType type) {
  return PSSpecifier::preferenceSpecifierNamed({}, nullptr, {}, {}, {}, type, {});
}

const auto group = [] { return rowOf(PSGroupCell); };
const auto plain = [] { return rowOf(PSSwitchCell); };

TEST(PSSections, NoListHasNoSections) {
  const PSSections sections(nullptr);
  EXPECT_EQ(sections.count(), 0U);
  EXPECT_EQ(sections.specifierAt(0, 0), nullptr);
  EXPECT_EQ(sections.positionOf(0), std::nullopt);
}

TEST(PSSections, GroupStartsASection) {
  const auto rows = makeSpecifiers({group(), plain(), plain(), group(), group(), plain()});
  const PSSections sections(rows);
  ASSERT_EQ(sections.count(), 3U);
  EXPECT_EQ(sections[0].rowCount, 2U);
  EXPECT_EQ(sections[1].rowCount, 0U);
  EXPECT_EQ(sections[2].rowCount, 1U);
  EXPECT_EQ(sections.groupAt(1), (*rows)[3]);
  EXPECT_EQ(sections.specifierAt(2, 0), (*rows)[5]);
  EXPECT_EQ(sections.specifierAt(2, 1), nullptr);
  EXPECT_EQ(sections.specifierAt(3, 0), nullptr);
}

TEST(PSSections, RowsBeforeTheFirstGroupHaveASectionWithoutGroup) {
  const auto rows = makeSpecifiers({plain(), group(), plain()});
  const PSSections sections(rows);
  ASSERT_EQ(sections.count(), 2U);
  EXPECT_EQ(sections.groupAt(0), nullptr);
  EXPECT_EQ(sections.specifierAt(0, 0), (*rows)[0]);
}

TEST(PSSections, EveryPositionLeadsBackToItsRow) {
  const auto rows = makeSpecifiers({plain(), plain(), group(), group(), plain(), group(), plain()});
  const PSSections sections(rows);
  for (std::size_t index = 0; index < rows->size(); ++index) {
    const auto position = sections.positionOf(index);
    const auto& specifier = (*rows)[index];
    if (specifier->cellType() == PSGroupCell) {
      EXPECT_EQ(position, std::nullopt) << index;
      EXPECT_EQ(sections.groupAt(*sections.sectionOf(index)), specifier) << index;
    } else {
      ASSERT_TRUE(position) << index;
      EXPECT_EQ(sections.specifierAt(position->section, position->row), specifier) << index;
      EXPECT_EQ(sections.sectionOf(index), position->section);
    }
  }
  EXPECT_EQ(sections.sectionOf(rows->size()), std::nullopt);
}

}  // namespace

}  // namespace platform

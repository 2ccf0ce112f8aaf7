#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include "platform/preferences/PSCellType.h"

namespace platform {

// The platform's numbers, used by pages that build rows themselves.
TEST(PSCellType, NamesAndNumbersBelongTogether) {
  const std::vector<std::pair<int, std::string_view>> table{
      {0, "PSGroupCell"},        {1, "PSLinkCell"},
      {2, "PSLinkListCell"},     {3, "PSListItemCell"},
      {4, "PSTitleValueCell"},   {5, "PSSliderCell"},
      {6, "PSSwitchCell"},       {7, "PSStaticTextCell"},
      {8, "PSEditTextCell"},     {9, "PSSegmentCell"},
      {10, "PSGiantIconCell"},   {11, "PSGiantCell"},
      {13, "PSButtonCell"},      {12, "PSSecureEditTextCell"},
      {14, "PSEditTextViewCell"}};
  for (const auto& [number, name] : table) {
    EXPECT_EQ(cellTypeNamed(name), static_cast<PSCellType>(number)) << name;
    EXPECT_EQ(nameOfCellType(static_cast<PSCellType>(number)), name);
    EXPECT_NE(cellTypeNames().find(name), std::string::npos);
  }
}

TEST(PSCellType, UnknownNamesAndNumbersStandForNone) {
  EXPECT_EQ(cellTypeNamed("PSSwichCell"), std::nullopt);
  EXPECT_EQ(cellTypeNamed("psswitchcell"), std::nullopt);
  EXPECT_EQ(cellTypeNamed(""), std::nullopt);
  EXPECT_EQ(nameOfCellType(static_cast<PSCellType>(99)), "");
  EXPECT_FALSE(cellTypeShowsValue(static_cast<PSCellType>(99)));
  EXPECT_EQ(cellClassNameForCellType(static_cast<PSCellType>(99)), "PSTableCell");
}

TEST(PSCellType, OnlyRowsWithAValueAskForIt) {
  for (const auto type : {PSSwitchCell, PSSliderCell, PSSegmentCell, PSEditTextCell,
                          PSSecureEditTextCell, PSTitleValueCell, PSLinkListCell}) {
    EXPECT_TRUE(cellTypeShowsValue(type)) << nameOfCellType(type);
  }
  for (const auto type : {PSGroupCell, PSLinkCell, PSButtonCell, PSStaticTextCell}) {
    EXPECT_FALSE(cellTypeShowsValue(type)) << nameOfCellType(type);
  }
}

}  // namespace platform

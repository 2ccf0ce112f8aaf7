#include "platform/preferences/PSCellType.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

struct Kind {
  PSCellType type;
  std::string_view name;
  std::string_view className;
  bool showsValue;
};

constexpr std::array<Kind, 15> kinds{{
    {PSGroupCell, "PSGroupCell", "PSTableCell", false},
    {PSLinkCell, "PSLinkCell", "PSTableCell", false},
    {PSLinkListCell, "PSLinkListCell", "PSValueTableCell", true},
    {PSListItemCell, "PSListItemCell", "PSListItemTableCell", false},
    {PSTitleValueCell, "PSTitleValueCell", "PSValueTableCell", true},
    {PSSliderCell, "PSSliderCell", "PSSliderTableCell", true},
    {PSSwitchCell, "PSSwitchCell", "PSSwitchTableCell", true},
    {PSStaticTextCell, "PSStaticTextCell", "PSTableCell", false},
    {PSEditTextCell, "PSEditTextCell", "PSEditableTableCell", true},
    {PSSegmentCell, "PSSegmentCell", "PSSegmentTableCell", true},
    {PSGiantIconCell, "PSGiantIconCell", "PSTableCell", false},
    {PSGiantCell, "PSGiantCell", "PSTableCell", false},
    {PSSecureEditTextCell, "PSSecureEditTextCell", "PSEditableTableCell", true},
    {PSButtonCell, "PSButtonCell", "PSTableCell", false},
    {PSEditTextViewCell, "PSEditTextViewCell", "PSEditableTableCell", true},
}};

const Kind* findKind(PSCellType type) noexcept {
  const auto* found =
      std::ranges::find_if(kinds, [&](const Kind& kind) { return kind.type == type; });
  return found == kinds.end() ? nullptr : found;
}

}  // namespace

std::optional<PSCellType> cellTypeNamed(std::string_view name) noexcept {
  const auto* found =
      std::ranges::find_if(kinds, [&](const Kind& kind) { return kind.name == name; });
  if (found == kinds.end()) return std::nullopt;
  return found->type;
}

std::string_view nameOfCellType(PSCellType type) noexcept {
  const Kind* kind = findKind(type);
  return kind ? kind->name : std::string_view();
}

std::string cellTypeNames() {
  std::string names;
  for (const Kind& kind : kinds) {
    if (!names.empty()) names += ", ";
    names += kind.name;
  }
  return names;
}

bool cellTypeShowsValue(PSCellType type) noexcept {
  const Kind* kind = findKind(type);
  return kind && kind->showsValue;
}

std::string_view cellClassNameForCellType(PSCellType type) noexcept {
  const Kind* kind = findKind(type);
  return kind ? kind->className : std::string_view("PSTableCell");
}

}  // namespace platform

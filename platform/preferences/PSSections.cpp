#include "platform/preferences/PSSections.h"

#include <utility>

namespace platform {

namespace {

// The position where the section begins in the list: its group, if it has one.
std::size_t startOf(const PSSections::Section& section) {
  return section.group ? section.firstRow - 1 : section.firstRow;
}

}  // namespace

PSSections::PSSections(PSSpecifiers rows) : _rows(std::move(rows)) {
  if (!_rows) return;
  for (std::size_t index = 0; index < _rows->size(); ++index) {
    const auto& specifier = (*_rows)[index];
    if (specifier->cellType() == PSGroupCell) {
      _sections.push_back({specifier, index + 1, 0});
      continue;
    }
    if (_sections.empty()) _sections.push_back({nullptr, index, 0});
    ++_sections.back().rowCount;
  }
}

std::shared_ptr<PSSpecifier> PSSections::specifierAt(std::size_t section, std::size_t row) const {
  if (section >= _sections.size() || row >= _sections[section].rowCount) return nullptr;
  return (*_rows)[_sections[section].firstRow + row];
}

std::shared_ptr<PSSpecifier> PSSections::groupAt(std::size_t section) const {
  return section < _sections.size() ? _sections[section].group : nullptr;
}

std::optional<std::size_t> PSSections::sectionOf(std::size_t index) const {
  if (!_rows || index >= _rows->size()) return std::nullopt;
  std::size_t section = _sections.size() - 1;
  while (startOf(_sections[section]) > index) --section;
  return section;
}

std::optional<PSSections::Position> PSSections::positionOf(std::size_t index) const {
  const auto section = sectionOf(index);
  if (!section || index < _sections[*section].firstRow) return std::nullopt;
  return Position{*section, index - _sections[*section].firstRow};
}

}  // namespace platform

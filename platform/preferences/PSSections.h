#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "platform/preferences/PSSpecifierRows.h"

namespace platform {

// The sections of a list of specifiers: each group starts a section, and rows before the first
// group have a section without header and footer.
class PSSections {
 public:
  struct Section {
    std::shared_ptr<PSSpecifier> group;  // empty: the section before the first group
    std::size_t firstRow = 0;            // position of the first row in the list
    std::size_t rowCount = 0;
  };
  struct Position {
    std::size_t section = 0;
    std::size_t row = 0;
    friend bool operator==(const Position&, const Position&) = default;
  };

  explicit PSSections(PSSpecifiers rows);

  const PSSpecifiers& rows() const noexcept { return _rows; }
  std::size_t count() const noexcept { return _sections.size(); }
  const Section& operator[](std::size_t index) const noexcept { return _sections[index]; }

  // Empty if there is no such section or row.
  std::shared_ptr<PSSpecifier> specifierAt(std::size_t section, std::size_t row) const;
  std::shared_ptr<PSSpecifier> groupAt(std::size_t section) const;
  // The index path of the row at a position of the list. Empty for a group or beyond the end.
  std::optional<Position> positionOf(std::size_t index) const;
  // The section of the group or row at a position of the list.
  std::optional<std::size_t> sectionOf(std::size_t index) const;

 private:
  PSSpecifiers _rows;
  std::vector<Section> _sections;
};

}  // namespace platform

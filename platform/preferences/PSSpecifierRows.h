#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/preferences/PSSpecifier.h"

namespace platform {

using PSSpecifierList = std::vector<std::shared_ptr<PSSpecifier>>;

// A list of specifiers that does not change; empty pointer: there is no list (yet), which is not
// the same as a list without rows.
using PSSpecifiers = std::shared_ptr<const PSSpecifierList>;

PSSpecifiers makeSpecifiers(PSSpecifierList list);

// The same as an array of objects; none for no list.
Value valueOfSpecifiers(const PSSpecifiers& specifiers);

// The rows of a page: a list that changes, and that two threads may meet in. Each operation is
// whole by itself: a reader sees the rows before or after, never between.
class PSSpecifierRows {
 public:
  // A change of the rows: how they were, how they are, and where the two differ.
  struct Change {
    PSSpecifiers before;
    PSSpecifiers after;
    std::size_t index = 0;
    std::size_t removed = 0;
    std::size_t inserted = 0;
    explicit operator bool() const noexcept { return before != after; }
  };

  PSSpecifiers snapshot() const;
  void assign(PSSpecifiers rows);

  // Each gives what it changed, and changes nothing where a position or an anchor is not there.
  Change insert(const PSSpecifierList& added, std::size_t index);
  Change insertAfter(const PSSpecifierList& added, const PSSpecifier* anchor);
  Change insertAfterID(const PSSpecifierList& added, std::string_view identifier);
  Change insertAtEnd(const PSSpecifierList& added);
  Change remove(const PSSpecifier* specifier);
  Change removeID(std::string_view identifier);
  // Where the given rows stand together, in this order, puts the added ones in their place.
  Change replaceContiguous(const PSSpecifierList& removed, const PSSpecifierList& added);

 private:
  Change splice(std::size_t index, std::size_t removed, const PSSpecifierList& added);

  mutable std::mutex _mutex;
  PSSpecifiers _rows;
};

// The position of a specifier, or of the first one that bears the identifier.
std::optional<std::size_t> indexOfSpecifier(const PSSpecifiers& rows, const PSSpecifier* specifier);
std::optional<std::size_t> indexOfSpecifierID(const PSSpecifiers& rows,
                                              std::string_view identifier);

}  // namespace platform

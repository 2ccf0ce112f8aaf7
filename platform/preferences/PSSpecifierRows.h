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

// An immutable list of specifiers. An empty pointer means that there is no list (yet), which
// differs from a list without rows.
using PSSpecifiers = std::shared_ptr<const PSSpecifierList>;

PSSpecifiers makeSpecifiers(PSSpecifierList list);

// The list as an array of objects; none if there is no list.
Value valueOfSpecifiers(const PSSpecifiers& specifiers);

// The rows of a page: a mutable list that several threads may use. Each operation is atomic: a
// reader sees the rows before or after it.
class PSSpecifierRows {
 public:
  // A change of the rows: the old list, the new list, and where they differ.
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

  // Each returns its change. An unknown position or anchor changes nothing.
  Change insert(const PSSpecifierList& added, std::size_t index);
  Change insertAfter(const PSSpecifierList& added, const PSSpecifier* anchor);
  Change insertAfterID(const PSSpecifierList& added, std::string_view identifier);
  Change insertAtEnd(const PSSpecifierList& added);
  Change remove(const PSSpecifier* specifier);
  Change removeID(std::string_view identifier);
  // Replaces the given rows with the added ones, if they are adjacent and in this order.
  Change replaceContiguous(const PSSpecifierList& removed, const PSSpecifierList& added);

 private:
  Change splice(std::size_t index, std::size_t removed, const PSSpecifierList& added);

  mutable std::mutex _mutex;
  PSSpecifiers _rows;
};

// The position of a specifier, or of the first one with the identifier.
std::optional<std::size_t> indexOfSpecifier(const PSSpecifiers& rows, const PSSpecifier* specifier);
std::optional<std::size_t> indexOfSpecifierID(const PSSpecifiers& rows,
                                              std::string_view identifier);

}  // namespace platform

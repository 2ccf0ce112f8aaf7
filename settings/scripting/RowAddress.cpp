#include "settings/scripting/RowAddress.h"

namespace settings {

std::string RowAddress::text() const {
  if (by == By::position) return std::to_string(section) + " " + std::to_string(row);
  const std::string base = by == By::identifier ? "#" + name : "\"" + name + "\"";
  return occurrence == 1 ? base : base + "~" + std::to_string(occurrence);
}

}  // namespace settings

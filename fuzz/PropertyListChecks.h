#pragma once

#include <cstddef>

#include "fuzz/FuzzChecks.h"
#include "platform/foundation/propertylist/PropertyList.h"

namespace fuzzing {

// Checks that an error for a file of that many bytes says what is wrong, where, and what is
// accepted.
inline void checkRefusal(const platform::PropertyListResult& result, std::size_t size) {
  require(result.value.isNone(), "a value beside an error");
  require(!result.error->reason.empty(), "an error without a reason");
  require(!result.error->accepted.empty(), "an error that does not say what is accepted");
  require(result.error->offset.has_value() && *result.error->offset <= size, "an error outside");
}

}  // namespace fuzzing

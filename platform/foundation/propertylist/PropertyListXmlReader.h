#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/propertylist/PropertyListTypes.h"

namespace platform {

// Reads the XML form in UTF-8, with or without a byte order mark, in one pass. Error offsets are
// bytes of `text`; the caller computes line and column. `keeper` owns the text and may be empty; if
// set, large data shares it.
PropertyListResult readXmlPropertyList(std::string_view text, std::shared_ptr<const void> keeper,
                                       const PropertyListLimits& limits);

}  // namespace platform

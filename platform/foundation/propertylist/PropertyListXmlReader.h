#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/propertylist/PropertyListTypes.h"

namespace platform {

// Reads the XML form in UTF-8 (with or without a byte order mark) in one pass. The errors' offsets
// count bytes of `text`; line and column are left to the caller. `keeper` owns the text, or is
// empty; large data shares it then.
PropertyListResult readXmlPropertyList(std::string_view text, std::shared_ptr<const void> keeper,
                                       const PropertyListLimits& limits);

}  // namespace platform

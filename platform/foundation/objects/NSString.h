#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/objects/NSCharacterSet.h"

// Operations of the platform's strings. Texts are UTF-8, as in a Value. Threads: any.
namespace platform {

// The text with the other one behind it. Raises NSInvalidArgumentException,
// "-[__NSCFString stringByAppendingString:]: nil argument", for none.
std::string stringByAppendingString(std::string_view text,
                                    const std::optional<std::string>& appended);

// Every character outside of the set as "%" and two upper-case hexadecimal digits for each byte of
// its UTF-8 form (RFC 3986, section 2.1). Characters beyond ASCII are always written so, whatever
// the set holds. None where the text holds what has no UTF-8 form (a lone surrogate).
std::optional<std::string> stringByAddingPercentEncodingWithAllowedCharacters(
    std::string_view text, const NSCharacterSet& allowed);

// The other way round. None where a "%" is not followed by two hexadecimal digits, or where the
// bytes are not UTF-8.
std::optional<std::string> stringByRemovingPercentEncoding(std::string_view text);

// Whether two hexadecimal digits follow at the offset.
bool isPercentEscape(std::string_view text, std::size_t percentOffset) noexcept;

}  // namespace platform

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/objects/NSCharacterSet.h"

// Operations of the platform's strings. Text is UTF-8, as in a Value. Threads: any.
namespace platform {

// Returns the concatenated text. For none, raises NSInvalidArgumentException, "-[__NSCFString
// stringByAppendingString:]: nil argument".
std::string stringByAppendingString(std::string_view text,
                                    const std::optional<std::string>& appended);

// Replaces each character outside of the set with "%XX" for each byte of its UTF-8 form (RFC 3986,
// section 2.1). Non-ASCII characters are always replaced. Returns none if the text has no UTF-8
// form (a lone surrogate).
std::optional<std::string> stringByAddingPercentEncodingWithAllowedCharacters(
    std::string_view text, const NSCharacterSet& allowed);

// Decodes percent escapes. None if a "%" is not followed by two hexadecimal digits or the result is
// not UTF-8.
std::optional<std::string> stringByRemovingPercentEncoding(std::string_view text);

// Returns whether two hexadecimal digits follow the offset.
bool isPercentEscape(std::string_view text, std::size_t percentOffset) noexcept;

}  // namespace platform

#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/uikit/drawing/UIColor.h"

// Every colour setting is stored as a short text, its colour value string.
namespace zentrova {

// The colour that a text stands for; never an empty pointer. One of eleven names ("red", "default",
// ...) is that colour of the system. Of anything else the "#" are removed, and what is left is read
// as a hexadecimal number: RGB, RRGGBB or RRGGBBAA. White space in front and a "0x" are passed
// over, reading stops at the first character that is no digit, a number of more than 32 bits counts
// as FFFFFFFF, and a text without a digit is transparent black.
// Threads: any.
std::shared_ptr<platform::UIColor> colorFromValueString(std::string_view text);

// The text under which a colour is stored: RRGGBBAA in upper case. Components are not clamped: one
// above 1 may take more digits, a negative one is written as a 64-bit two's complement.
// Threads: any.
std::string valueStringFromColor(const platform::ColorComponents& color);

}  // namespace zentrova

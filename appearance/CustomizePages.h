#pragma once

#include <memory>
#include <string_view>

#include "platform/uikit/views/UILongPressGestureRecognizer.h"
#include "prefs/HBRootListController.h"

// What the customize page and its colour lists have in common. Threads: main.
namespace zentrova {

// What a colour setting is reset to, whatever its default is. It reads as a transparent colour, and
// the colour picker opens at black for it.
inline constexpr std::string_view resetColorValue = "#FA0000:0.0";

// Asks for a large title always.
void showLargeTitle(platform::UIViewController& page);

// Lets a press of one second on the page's table send "handleLongPress:" to the page, which must be
// loaded.
void addLongPress(const std::shared_ptr<HBRootListController>& page);

// Where a press begins on a colour row: stores the reset value under the row's key, through the
// page's store, and lets the row show it. Everything else is left alone. A colour row without a key
// raises NSInvalidArgumentException.
void resetPressedColor(HBRootListController& page,
                       const std::shared_ptr<platform::UILongPressGestureRecognizer>& press);

}  // namespace zentrova

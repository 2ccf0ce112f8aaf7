#pragma once

#include <memory>
#include <string_view>

#include "platform/uikit/views/UILongPressGestureRecognizer.h"
#include "prefs/HBRootListController.h"

// Shared by the customize page and its colour lists. Threads: main.
namespace zentrova {

// The value that a colour is reset to, regardless of its default. It reads as a transparent colour,
// and the colour picker opens at black for it.
inline constexpr std::string_view resetColorValue = "#FA0000:0.0";

// Gives the page a large title.
void showLargeTitle(platform::UIViewController& page);

// Makes a press of one second on the page's table send "handleLongPress:" to the page. The page
// must be loaded.
void addLongPress(const std::shared_ptr<HBRootListController>& page);

// If a press begins on a colour row, stores the reset value under the row's key, through the page's
// store, and updates the row. Does nothing otherwise. A colour row without a key raises
// NSInvalidArgumentException.
void resetPressedColor(HBRootListController& page,
                       const std::shared_ptr<platform::UILongPressGestureRecognizer>& press);

}  // namespace zentrova

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/uikit/controls/UITextField.h"

namespace platform {

// The keyboard of that name in a specifier list. Empty for an unknown name.
std::optional<UIKeyboardType> keyboardNamed(std::string_view name) noexcept;

// All names, comma-separated, for messages.
std::string keyboardNames();

}  // namespace platform

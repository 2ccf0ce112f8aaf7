#include "platform/preferences/PSKeyboard.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform {

namespace {

constexpr std::array<std::pair<std::string_view, UIKeyboardType>, 8> keyboards{{
    {"default", UIKeyboardType::standard},
    {"number", UIKeyboardType::numberPad},
    {"numbers", UIKeyboardType::numberPad},
    {"numberPad", UIKeyboardType::numberPad},
    {"decimal", UIKeyboardType::decimalPad},
    {"decimalPad", UIKeyboardType::decimalPad},
    {"url", UIKeyboardType::url},
    {"email", UIKeyboardType::emailAddress},
}};

}  // namespace

std::optional<UIKeyboardType> keyboardNamed(std::string_view name) noexcept {
  const auto* found =
      std::ranges::find_if(keyboards, [&](const auto& keyboard) { return keyboard.first == name; });
  if (found == keyboards.end()) return std::nullopt;
  return found->second;
}

std::string keyboardNames() {
  std::string names;
  for (const auto& keyboard : keyboards) {
    if (!names.empty()) names += ", ";
    names += keyboard.first;
  }
  return names;
}

}  // namespace platform

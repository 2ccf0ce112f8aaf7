#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/objects/DeviceTraits.h"

namespace settings {

// A choice in the device pane: the value as users write it, and its label.
struct TraitChoice {
  std::string value;
  std::string title;
};

// A trait of the device. This table is used by everything that takes or shows traits: the script
// command `trait`, the command line options, and the device pane in the browser.
struct Trait {
  std::string name;    // in scripts and actions
  std::string values;  // accepted values, with an example
  std::string option;  // of the command line
  std::string help;    // of the option
  std::string label;   // in the pane
  int place;           // position in the pane, from the top
  // The choices in the pane; empty for a colour, which is chosen freely.
  std::vector<TraitChoice> choices;
  // Sets the trait from the text. Returns false and changes nothing if the text is not valid.
  bool (*set)(platform::DeviceTraits&, std::string_view);
  // The current value, in the form that `set` takes.
  std::string (*text)(const platform::DeviceTraits&);
};

// All traits, in the order of the help and of messages.
const std::vector<Trait>& traitTable();
// "idiom, system"
std::string traitNames();

// Sets the trait with this name from a text: "appearance dark", "screen 390x844@3". Returns an
// empty string on success. Otherwise returns what is wrong and what is accepted, and changes
// nothing.
std::optional<std::string> changeTrait(platform::DeviceTraits& traits, std::string_view name,
                                       std::string_view value);

// The traits as the member `traits` of docs/tree.md.
nlohmann::json jsonFromTraits(const platform::DeviceTraits& traits);

}  // namespace settings

#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/objects/DeviceTraits.h"

namespace settings {

// A value that is offered, as people write it, and what it is called.
struct TraitChoice {
  std::string value;
  std::string title;
};

// A trait of the device. Everything that takes or shows traits goes by this table: the script
// command `trait`, the options of the command line, and the device's pane in the browser.
struct Trait {
  std::string name;    // as scripts and actions say it
  std::string values;  // what is accepted, with an example
  std::string option;  // of the command line
  std::string help;    // of the option
  std::string label;   // in the pane
  int place;           // there, counted from the top
  // What the pane offers; none for a colour, which is chosen freely.
  std::vector<TraitChoice> choices;
  // Takes a value as people write it; false, with the traits as they were, where it is none.
  bool (*set)(platform::DeviceTraits&, std::string_view);
  // The value as `set` takes it.
  std::string (*text)(const platform::DeviceTraits&);
};

// All of them, in the order in which help and messages name them.
const std::vector<Trait>& traitTable();
// "idiom, system"
std::string traitNames();

// Sets the trait of that name, as people write it: "appearance dark", "screen 390x844@3". No text
// where that was done; else what is wrong and what is allowed, and the traits are as they were.
std::optional<std::string> changeTrait(platform::DeviceTraits& traits, std::string_view name,
                                       std::string_view value);

// The traits as the member `traits` of docs/tree.md has them.
nlohmann::json jsonFromTraits(const platform::DeviceTraits& traits);

}  // namespace settings

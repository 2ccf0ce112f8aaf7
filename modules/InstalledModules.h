#pragma once

#include <memory>
#include <optional>
#include <string>

#include "modules/MutableList.h"
#include "platform/foundation/values/Value.h"
#include "platform/uikit/images/UIImage.h"

namespace zentrova {

// The installed Control Center modules, as the neighbours report them. The neighbours' classes are
// looked up by name on every call, so that the bundle works, with empty results, without them.

// The identifiers of all loadable modules except the forbidden ones, in the repository's order.
// An empty list if either class is missing; nothing before system version 15.0.
std::optional<MutableList> usableModuleIdentifiers();

// The system's map from module identifier to description. None if the class is missing. The class
// has another name before system version 14.0.
platform::Value moduleDescriptions();

// The name and the icon of a description object; nothing for any other value.
std::optional<std::string> displayNameOf(const platform::Value& description);
std::shared_ptr<platform::UIImage> iconImageOf(const platform::Value& description);

}  // namespace zentrova

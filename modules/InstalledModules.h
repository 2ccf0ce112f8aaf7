#pragma once

#include <memory>
#include <optional>
#include <string>

#include "modules/MutableList.h"
#include "platform/foundation/values/Value.h"
#include "platform/uikit/images/UIImage.h"

namespace zentrova {

// What the neighbours know of the installed Control Center modules. Their classes are looked up by
// name at every call, so that the bundle works, with empty answers, whether or not they are there.

// The identifiers of all loadable modules but the forbidden ones, in the repository's order. Empty
// where either class is absent; nothing before system version 15.0.
std::optional<MutableList> usableModuleIdentifiers();

// The system's map from module identifier to description; none where there is no such class. The
// class has another name before system version 14.0.
platform::Value moduleDescriptions();

// What a description object answers; nothing for what is no such object.
std::optional<std::string> displayNameOf(const platform::Value& description);
std::shared_ptr<platform::UIImage> iconImageOf(const platform::Value& description);

}  // namespace zentrova

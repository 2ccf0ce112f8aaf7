#pragma once

#include <memory>
#include <optional>
#include <string>

namespace platform {
class UIViewController;
}

namespace settings {

class NodeWriter;
class PhotoLibrary;

// Adds a controller that is no page: an alert, a colour picker, a photo picker. Gives its identity;
// nothing, and adds nothing, for any other controller. A photo picker shows the library.
std::optional<std::string> addPresented(
    NodeWriter& writer, const std::shared_ptr<platform::UIViewController>& controller,
    PhotoLibrary& library);

}  // namespace settings

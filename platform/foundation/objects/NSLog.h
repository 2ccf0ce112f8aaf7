#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/foundation/log/Log.h"
#include "platform/foundation/values/Value.h"

namespace platform {

// The platform's NSLog: formats with formatString and writes one line to the process's log.
void NSLog(std::string_view format, std::initializer_list<Value> arguments = {});

// The platform's unified log at the default level. The message is already formatted.
bool os_log_type_enabled(LogLevel level);
void os_log(LogLevel level, std::string message);

}  // namespace platform

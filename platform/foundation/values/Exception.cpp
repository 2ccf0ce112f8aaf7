#include "platform/foundation/values/Exception.h"

#include <utility>

namespace platform {

namespace {

std::string unrecognized(char kind, std::string_view className, std::string_view selector,
                         std::string_view receiver) {
  std::string reason(1, kind);
  reason.append("[").append(className).append(" ").append(selector);
  return reason.append("]: unrecognized selector sent to ").append(receiver);
}

}  // namespace

Exception::Exception(std::string name, std::string reason)
    : _name(std::move(name)), _reason(std::move(reason)), _what(_name + ": " + _reason) {}

void raiseInvalidArgument(std::string reason) {
  throw Exception(std::string(invalidArgumentException), std::move(reason));
}

void raiseUnrecognizedSelector(std::string_view className, std::string_view selector) {
  raiseInvalidArgument(unrecognized('-', className, selector, "instance"));
}

void raiseUnrecognizedClassSelector(std::string_view className, std::string_view selector) {
  raiseInvalidArgument(unrecognized('+', className, selector, "class"));
}

void raiseUndefinedKey(std::string_view className, std::string_view key, bool writing) {
  std::string reason = "[<";
  reason.append(className);
  reason.append(writing ? "> setValue:forUndefinedKey:]" : "> valueForUndefinedKey:]");
  reason.append(": this class is not key value coding-compliant for the key ").append(key);
  throw Exception(std::string(unknownKeyException), reason + ".");
}

}  // namespace platform

#include "platform/foundation/objects/NSAssertionHandler.h"

#include "platform/foundation/log/LogFormat.h"
#include "platform/foundation/objects/NSLog.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/values/Exception.h"

namespace platform {
namespace {

struct StandardHandler {
  std::shared_ptr<NSAssertionHandler> handler = make<NSAssertionHandler>();
};

}  // namespace

AssertingMethod AssertingMethod::ofObject(std::string_view selector, const Object& object) {
  return {std::string(selector), object.objectClass().name(), false};
}

AssertingMethod AssertingMethod::ofClass(std::string_view selector, const Class& type) {
  return {std::string(selector), type.name(), true};
}

std::string AssertingMethod::text() const {
  return (isClassOperation ? "+[" : "-[") + className + " " + selector + "]";
}

std::shared_ptr<NSAssertionHandler> NSAssertionHandler::currentHandler() {
  Process& process = Process::current();
  if (auto given = process.serviceOrNull<NSAssertionHandler>()) return given;
  return process.once<StandardHandler>().handler;
}

void NSAssertionHandler::handleFailureInMethod(const AssertingMethod& method,
                                               std::string_view fileName, std::int64_t lineNumber,
                                               std::string_view descriptionFormat,
                                               std::initializer_list<Value> arguments) {
  NSLog("*** Assertion failure in %@, %@:%ld", {method.text(), fileName, lineNumber});
  throw Exception(std::string(internalInconsistencyException),
                  formatString(descriptionFormat, arguments));
}

}  // namespace platform

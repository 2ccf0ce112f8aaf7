#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/objects/Class.h"

namespace platform {

// The operation in which an assertion failed, of an object or of a class.
struct AssertingMethod {
  std::string selector;
  std::string className;
  bool isClassOperation = false;

  static AssertingMethod ofObject(std::string_view selector, const Object& object);
  static AssertingMethod ofClass(std::string_view selector, const Class& type);
  // Returns "-[Class selector]" or "+[Class selector]".
  std::string text() const;
};

// Handles failed assertions. The process has one: the handler provided as a service, otherwise the
// standard one. Threads: any.
class NSAssertionHandler : public Object {
  PLATFORM_CLASS(NSAssertionHandler)

 public:
  static std::shared_ptr<NSAssertionHandler> currentHandler();

  // The standard handler logs "*** Assertion failure in +[Class selector], file:line" and raises
  // NSInternalInconsistencyException with the description, formatted by formatString. Another
  // handler may return; the operation then continues.
  virtual void handleFailureInMethod(const AssertingMethod& method, std::string_view fileName,
                                     std::int64_t lineNumber, std::string_view descriptionFormat,
                                     std::initializer_list<Value> arguments);
};

}  // namespace platform

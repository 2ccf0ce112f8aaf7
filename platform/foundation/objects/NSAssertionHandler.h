#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/objects/Class.h"

namespace platform {

// Whose operation made an assertion: an object, or a class itself.
struct AssertingMethod {
  std::string selector;
  std::string className;
  bool isClassOperation = false;

  static AssertingMethod ofObject(std::string_view selector, const Object& object);
  static AssertingMethod ofClass(std::string_view selector, const Class& type);
  // "-[Class selector]", "+[Class selector]"
  std::string text() const;
};

// What becomes of an assertion that does not hold. A process has one: the handler that it was
// given as a service, else the standard one. Threads: any.
class NSAssertionHandler : public Object {
  PLATFORM_CLASS(NSAssertionHandler)

 public:
  static std::shared_ptr<NSAssertionHandler> currentHandler();

  // The standard handler logs "*** Assertion failure in +[Class selector], file:line" and raises
  // NSInternalInconsistencyException with the description, formatted as formatString does. A
  // handler of another class may return: the operation then goes on.
  virtual void handleFailureInMethod(const AssertingMethod& method, std::string_view fileName,
                                     std::int64_t lineNumber, std::string_view descriptionFormat,
                                     std::initializer_list<Value> arguments);
};

}  // namespace platform

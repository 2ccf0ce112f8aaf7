#include "platform/foundation/FoundationClassTables.h"
#include "platform/foundation/network/NSURLComponents.h"
#include "platform/foundation/network/NSURLSession.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/NSAssertionHandler.h"
#include "platform/foundation/objects/NSCharacterSet.h"

namespace platform {
namespace {

std::shared_ptr<NSURL> urlWithString(const std::string& text) {
  return NSURL::URLWithString(text);
}

Value headersOf(NSMutableURLRequest& request) {
  std::vector<std::pair<std::string, Value>> entries;
  for (const auto& [name, value] : request.allHTTPHeaderFields()) entries.emplace_back(name, value);
  return Dictionary(std::move(entries));
}

Class urlClass() {
  return ClassBuilder<NSURL>("NSObject")
      .classOperation("URLWithString:", &urlWithString)
      .property("absoluteString", &NSURL::absoluteString)
      .key("scheme", &NSURL::scheme)
      .key("host", &NSURL::host)
      .key("user", &NSURL::user)
      .key("port", &NSURL::port)
      .key("path", &NSURL::path)
      .key("query", &NSURL::query)
      .key("fragment", &NSURL::fragment)
      .build();
}

Class requestClass() {
  return ClassBuilder<NSMutableURLRequest>("NSObject")
      .classOperation("requestWithURL:", &NSMutableURLRequest::requestWithURL)
      .operation("setValue:forHTTPHeaderField:", &NSMutableURLRequest::setValue)
      .operation("valueForHTTPHeaderField:", &NSMutableURLRequest::valueForHTTPHeaderField)
      .key("URL", &NSMutableURLRequest::URL)
      .key("HTTPMethod", &NSMutableURLRequest::HTTPMethod)
      .key("allHTTPHeaderFields", &headersOf)
      .build();
}

Class dataTaskClass() {
  return ClassBuilder<NSURLSessionDataTask>("NSObject")
      .operation("resume", &NSURLSessionDataTask::resume)
      .operation("suspend", &NSURLSessionDataTask::suspend)
      .operation("cancel", &NSURLSessionDataTask::cancel)
      .key("taskIdentifier", &NSURLSessionDataTask::taskIdentifier)
      .key("originalRequest", &NSURLSessionDataTask::originalRequest)
      .key("state", &NSURLSessionDataTask::state)
      .build();
}

Class httpResponseClass() {
  return ClassBuilder<NSHTTPURLResponse>("NSURLResponse")
      .classOperation("localizedStringForStatusCode:",
                      &NSHTTPURLResponse::localizedStringForStatusCode)
      .property("statusCode", &NSHTTPURLResponse::statusCode)
      .build();
}

}  // namespace

void registerURLClasses(ClassRegistry& registry) {
  registry.add(urlClass());
  registry.add(ClassBuilder<NSURLQueryItem>("NSObject")
                   .classOperation("queryItemWithName:value:", &NSURLQueryItem::queryItemWithName)
                   .key("name", &NSURLQueryItem::name)
                   .key("value", &NSURLQueryItem::value)
                   .build());
  registry.add(ClassBuilder<NSURLComponents>("NSObject").key("URL", &NSURLComponents::URL).build());
  registry.add(ClassBuilder<NSCharacterSet>("NSObject").build());
  registry.add(requestClass());
  registry.add(ClassBuilder<NSURLResponse>("NSObject").key("URL", &NSURLResponse::URL).build());
  registry.add(httpResponseClass());
  registry.add(ClassBuilder<NSError>("NSObject")
                   .key("domain", &NSError::domain)
                   .key("code", &NSError::code)
                   .key("localizedDescription", &NSError::localizedDescription)
                   .build());
  registry.add(dataTaskClass());
  registry.add(ClassBuilder<NSURLSession>("NSObject")
                   .classOperation("sharedSession", &NSURLSession::sharedSession)
                   .build());
  registry.add(ClassBuilder<NSAssertionHandler>("NSObject")
                   .classOperation("currentHandler", &NSAssertionHandler::currentHandler)
                   .build());
}

}  // namespace platform

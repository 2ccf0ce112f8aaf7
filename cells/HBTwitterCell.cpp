#include "cells/HBTwitterCell.h"

#include "cells/SpecifierProperties.h"
#include "platform/foundation/network/NSURLComponents.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/NSAssertionHandler.h"
#include "platform/foundation/objects/NSString.h"
#include "platform/foundation/text/SourceFile.h"

namespace zentrova {

using platform::NSURL;
using platform::NSURLComponents;
using platform::NSURLQueryItem;
using platform::PSSpecifier;
using platform::Value;

namespace {

constexpr const char* root = "https://twitter.com/";
constexpr const char* profileOfID = "https://twitter.com/intent/user";
constexpr const char* urlSelector = "_urlForUsername:userID:";

void assertOneIsGiven(bool given) {
  if (given) return;
  platform::NSAssertionHandler::currentHandler()->handleFailureInMethod(
      {urlSelector, std::string(HBTwitterCell::staticClassName), true},
      platform::sourceFileName(__FILE__), __LINE__, "Invalid parameter not satisfying: %@",
      {"username != nil || userID != nil"});
}

}  // namespace

std::shared_ptr<NSURL> HBTwitterCell::_urlForUsername(const std::optional<std::string>& username,
                                                      const std::optional<std::string>& userID) {
  assertOneIsGiven(username || userID);
  if (username) {
    const auto name = platform::stringByAddingPercentEncodingWithAllowedCharacters(
        *username, *platform::NSCharacterSet::URLPathAllowedCharacterSet());
    return NSURL::URLWithString(platform::stringByAppendingString(root, name));
  }
  const auto components = NSURLComponents::componentsWithString(profileOfID);
  components->setQueryItems(
      NSURLComponents::QueryItems{NSURLQueryItem::queryItemWithName("user_id", userID)});
  return components->URL();
}

bool HBTwitterCell::initWithStyle(platform::UITableViewCellStyle style,
                                  const std::optional<std::string>& reuseIdentifier,
                                  const std::shared_ptr<PSSpecifier>& specifier) {
  const auto user = propertyOf(specifier, "user").text();
  const auto userID = propertyOf(specifier, "userID").text();
  if (specifier && !propertyOf(specifier, "iconCircular")) {
    specifier->setProperty(true, "iconCircular");
  }
  const Value url = objectClass().perform(urlSelector, {user, userID});
  if (specifier) specifier->setProperty(url, "url");
  if (!HBLinkTableCell::initWithStyle(style, reuseIdentifier, specifier)) return false;
  detailTextLabel()->setText(platform::stringByAppendingString("@", user));
  return true;
}

void HBTwitterCell::registerClass(platform::ClassRegistry& registry) {
  registry.add(platform::ClassBuilder<HBTwitterCell>("HBLinkTableCell")
                   .classOperation(urlSelector, &HBTwitterCell::_urlForUsername)
                   .build());
}

}  // namespace zentrova

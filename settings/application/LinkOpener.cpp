#include "settings/application/LinkOpener.h"

#include <algorithm>
#include <cctype>

#include "platform/foundation/objects/NSLog.h"
#include "platform/foundation/objects/NSString.h"
#include "platform/uikit/controllers/UIAlertController.h"

namespace settings {

using platform::NSURL;
using platform::UIAlertAction;
using platform::UIAlertActionStyle;
using platform::UIAlertController;

namespace {

bool isWebAddress(const NSURL& url) {
  std::string scheme = url.scheme().value_or("");
  std::ranges::transform(scheme, scheme.begin(),
                         [](unsigned char each) { return static_cast<char>(std::tolower(each)); });
  return (scheme == "http" || scheme == "https") && !url.host().value_or("").empty();
}

// Removes what could be mistaken for something else: letters beyond ASCII, blanks, line ends.
std::string plainHost(const NSURL& url) {
  return platform::stringByAddingPercentEncodingWithAllowedCharacters(
             url.host().value_or(""), *platform::NSCharacterSet::URLHostAllowedCharacterSet())
      .value_or("");
}

// An address may be longer than any screen. It is ASCII, so it can be cut anywhere.
std::string shortened(const std::string& address) {
  constexpr std::size_t longest = 300;
  return address.size() <= longest ? address : address.substr(0, longest) + "…";
}

}  // namespace

void LinkOpener::openURL(const std::shared_ptr<NSURL>& url) {
  if (isWebAddress(*url)) {
    ask(*url);
  } else {
    refuse(*url);
  }
}

// The host is shown separately: the part before it in an address could imitate a host.
void LinkOpener::ask(const NSURL& url) {
  const std::string& address = url.absoluteString();
  const auto alert = UIAlertController::alertControllerWithTitle(
      "Open “" + shortened(plainHost(url)) + "”?",
      "This leaves Settings for\n" + shortened(address), platform::UIAlertControllerStyle::alert);
  alert->addAction(UIAlertAction::actionWithTitle(
      "Open", UIAlertActionStyle::standard,
      [opened = _opened, address](const std::shared_ptr<UIAlertAction>&) {
        platform::NSLog("[Preferences] opening %@", {address});
        if (opened) opened(address);
      }));
  alert->addAction(UIAlertAction::actionWithTitle("Cancel", UIAlertActionStyle::cancel, nullptr));
  show(alert);
}

void LinkOpener::refuse(const NSURL& url) {
  const auto alert = UIAlertController::alertControllerWithTitle(
      "This link cannot be opened", "It is not a web address:\n" + shortened(url.absoluteString()),
      platform::UIAlertControllerStyle::alert);
  alert->addAction(UIAlertAction::actionWithTitle("OK", UIAlertActionStyle::cancel, nullptr));
  show(alert);
}

void LinkOpener::show(const std::shared_ptr<platform::UIViewController>& alert) {
  if (const auto page = _topPage()) page->presentViewController(alert, true);
}

}  // namespace settings

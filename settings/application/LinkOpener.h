#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/uikit/controllers/UIApplication.h"
#include "platform/uikit/controllers/UIViewController.h"

namespace settings {

// Asks the user before an address is opened outside of the application: an alert over the page
// shows the target, and only "Open" passes the address on. Only web addresses (http and https, with
// a host) can be opened; for any other, the alert says so. Threads: main.
class LinkOpener final : public platform::URLOpener {
 public:
  // Receives each address that the user agreed to open.
  using Opened = std::function<void(const std::string& url)>;

  // Returns the page on top; empty if there is none.
  using TopPage = std::function<std::shared_ptr<platform::UIViewController>()>;

  LinkOpener(TopPage topPage, Opened opened)
      : _topPage(std::move(topPage)), _opened(std::move(opened)) {}

  void openURL(const std::shared_ptr<platform::NSURL>& url) override;

 private:
  void ask(const platform::NSURL& url);
  void refuse(const platform::NSURL& url);
  void show(const std::shared_ptr<platform::UIViewController>& alert);

  TopPage _topPage;
  Opened _opened;
};

}  // namespace settings

#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/uikit/controllers/UIApplication.h"
#include "platform/uikit/controllers/UIViewController.h"

namespace settings {

// Asks before an address leads out of the application: an alert over the page says where it would
// go, and only "Open" hands it on. Web addresses (http and https, with a host) alone can be opened;
// of any other the alert says that it cannot.
// Threads: main.
class LinkOpener final : public platform::URLOpener {
 public:
  // Told of each address that the user lets out.
  using Opened = std::function<void(const std::string& url)>;

  // The page on top at the moment of the call; empty where there is none.
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

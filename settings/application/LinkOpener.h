#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/uikit/controllers/UIApplication.h"
#include "platform/uikit/controllers/UIViewController.h"

namespace settings {

class SettingsProcess;

// Asks before an address leads out of the application: an alert over the page says where it would
// go, and only "Open" hands it on. Web addresses (http and https, with a host) alone can be opened;
// of any other the alert says that it cannot. The process must outlive the opener's use.
// Threads: main.
class LinkOpener final : public platform::URLOpener {
 public:
  // Told of each address that the user lets out.
  using Opened = std::function<void(const std::string& url)>;

  LinkOpener(SettingsProcess& process, Opened opened)
      : _process(process), _opened(std::move(opened)) {}

  void openURL(const std::shared_ptr<platform::NSURL>& url) override;

 private:
  void ask(const platform::NSURL& url);
  void refuse(const platform::NSURL& url);
  void show(const std::shared_ptr<platform::UIViewController>& alert);

  SettingsProcess& _process;
  Opened _opened;
};

}  // namespace settings

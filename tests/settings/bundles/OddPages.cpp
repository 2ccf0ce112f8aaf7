// A bundle whose pages fail in different ways. Its Info.plist selects the page.

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/foundation/values/Exception.h"
#include "platform/preferences/BundleInterface.h"
#include "platform/preferences/PSListController.h"
#include "platform/uikit/controllers/UIViewController.h"

namespace {

// Not a page at all.
class NoPage : public platform::Object {
  PLATFORM_CLASS(NoPage)
};

class RefusingPage : public platform::UIViewController {
  PLATFORM_CLASS(RefusingPage)

 public:
  bool init() override { return false; }
};

class RaisingInitPage : public platform::UIViewController {
  PLATFORM_CLASS(RaisingInitPage)

 public:
  bool init() override { throw platform::Exception("TestException", "raised in init"); }
};

class RaisingPage : public platform::UIViewController {
  PLATFORM_CLASS(RaisingPage)

 public:
  void viewDidLoad() override { throw platform::Exception("TestException", "raised on purpose"); }
};

// Raises one second after it was shown.
class LateRaisingPage : public platform::UIViewController {
  PLATFORM_CLASS(LateRaisingPage)

 public:
  void viewDidLoad() override {
    platform::Process::current().service<platform::Scheduler>().mainAfter(
        1, [] { throw platform::Exception("TestException", "raised late"); });
  }
};

class PlainPage : public platform::UIViewController {
  PLATFORM_CLASS(PlainPage)
};

// Has rows "arm" and "raise". Once armed, the page raises when it is asked for its rows.
class RaisingListPage : public platform::PSListController {
  PLATFORM_CLASS(RaisingListPage)

 public:
  platform::PSSpecifiers specifiers() override {
    if (!keptSpecifiers())
      keepSpecifiers(platform::makeSpecifiers({button("arm"), button("raise")}));
    return keptSpecifiers();
  }
  bool shouldHighlightRowAtIndexPath(const std::shared_ptr<platform::UITableView>& table,
                                     platform::IndexPath path) override {
    if (_armed) raise();
    return PSListController::shouldHighlightRowAtIndexPath(table, path);
  }
  void arm() {
    _armed = true;
    noteChange();
  }
  void raise() { throw platform::Exception("TestException", "raised by the page"); }

 private:
  std::shared_ptr<platform::PSSpecifier> button(const char* name) {
    auto row = platform::PSSpecifier::preferenceSpecifierNamed(
        name, self<RaisingListPage>(), std::nullopt, std::nullopt, std::nullopt,
        platform::PSButtonCell, std::nullopt);
    row->setIdentifier(name);
    row->setButtonAction(name);
    return row;
  }

  bool _armed = false;
};

}  // namespace

int zentrova_bundle_register(platform::ClassRegistry* registry, unsigned /*interfaceVersion*/) {
  registry->add(platform::ClassBuilder<NoPage>("NSObject").build());
  registry->add(platform::ClassBuilder<RefusingPage>("UIViewController").build());
  registry->add(platform::ClassBuilder<RaisingPage>("UIViewController").build());
  registry->add(platform::ClassBuilder<LateRaisingPage>("UIViewController").build());
  registry->add(platform::ClassBuilder<PlainPage>("UIViewController").build());
  registry->add(platform::ClassBuilder<RaisingInitPage>("UIViewController").build());
  registry->add(platform::ClassBuilder<RaisingListPage>("PSListController")
                    .operation("arm", &RaisingListPage::arm)
                    .operation("raise", &RaisingListPage::raise)
                    .build());
  return platform::bundleRegistered;
}

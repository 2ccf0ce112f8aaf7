#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/values/Exception.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "tests/root/RootFixture.h"

namespace zentrova::tests {

// The application's first list, as far as the page uses it.
class HostList : public platform::PSListController {
  PLATFORM_CLASS(HostList)

 public:
  std::vector<std::shared_ptr<platform::PSSpecifier>> loaded;
  std::optional<platform::Exception> raised;

  void lazyLoad(const std::shared_ptr<platform::PSSpecifier>& row) {
    loaded.push_back(row);
    if (raised) throw platform::Exception(*raised);
  }
};

// The navigation controller around the page, like that of the application.
class HostNavigation : public platform::UINavigationController {
  PLATFORM_CLASS(HostNavigation)

 public:
  std::shared_ptr<platform::Object> list;
  const std::shared_ptr<platform::Object>& rootListController() const { return list; }
};

// The page in two nested navigation controllers.
class ChromeTest : public RootTest {
 protected:
  ChromeTest() {
    process.classes().add(platform::ClassBuilder<HostList>("PSListController")
                              .operation("lazyLoadSpecialBundleForSpecifier:", &HostList::lazyLoad)
                              .build());
    process.classes().add(platform::ClassBuilder<HostNavigation>("UINavigationController")
                              .key("_rootListController", &HostNavigation::rootListController)
                              .build());
  }
  void SetUp() override { writeRoot(); }

  void showNested() {
    page = makePage();
    inner = platform::make<HostNavigation>();
    inner->list = hostList;
    inner->pushViewController(page, false);
    outer = platform::make(&platform::UINavigationController::initWithRootViewController, inner);
    window = test_support::showInWindow(outer);
  }
  double outerOpacity() { return outer->navigationBar()->titleOpacity(); }
  double innerOpacity() { return inner->navigationBar()->titleOpacity(); }

  std::shared_ptr<HostList> hostList = platform::make<HostList>();
  std::shared_ptr<HostNavigation> inner;
  std::shared_ptr<platform::UINavigationController> outer;
};

}  // namespace zentrova::tests

#pragma once

#include "platform/preferences/PSListController.h"

namespace platform {

// The page behind a list choice: one row per valid value of the specifier that opened it, with a
// checkmark at the current value. A tap on another row sends its value to the specifier's setter;
// the page stays open. Threads: main.
class PSListItemsController : public PSListController {
  PLATFORM_CLASS(PSListItemsController)

 public:
  PSSpecifiers specifiers() override;
  std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(
      const std::shared_ptr<UITableView>& tableView, IndexPath indexPath) override;
  bool shouldHighlightRowAtIndexPath(const std::shared_ptr<UITableView>& tableView,
                                     IndexPath indexPath) override;
  void didSelectRowAtIndexPath(const std::shared_ptr<UITableView>& tableView,
                               IndexPath indexPath) override;

 private:
  std::optional<std::size_t> chosenIndex();
  void showTicks();

  Value _chosen;  // the last choice, for a specifier without a getter
};

}  // namespace platform
